#pragma once

#include <cstdint>

namespace ImagingFramework {

/// Prepares the engine; must run before anything else of it does. Only the first call of a process does the work, so a
/// later one leaves the switches below as they are. Thread-safe.
void Initialize();

/// Whether loops that have a row-parallel variant may use it: 1 or 0, 0 at start. Both variants give the same results.
std::int32_t GetOmpSupport() noexcept;
/// Any value but 0 stands for 1.
void SetOmpSupport(std::int32_t value) noexcept;

/// Whether LZW compression may be read and written: 1 or 0.
std::int32_t GetLzwSupport() noexcept;
void SetLzwSupport(std::int32_t value) noexcept;

/// Number of processors that this process may use, as read by `Initialize`; 1 before it.
std::int32_t GetProcessorCount() noexcept;

} // namespace ImagingFramework
