#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace ImagingFramework {

/// Allocates `size` bytes, aligned for vectors (64 bytes). Blocks of 1 MiB and more are aligned to 2 MiB, ask the system
/// for huge pages, and may come from a small cache of blocks that were freed before. The contents are undefined.
/// Fails with `MemoryException`. Free with `FreeMemory`. Thread-safe.
void* AllocMemory(std::size_t size);

/// The same, with all bytes zero.
void* AllocZeroedMemory(std::size_t size);

/// Gives a block back; null is ignored. Thread-safe.
void FreeMemory(void* pointer) noexcept;

/// Lets the allocation of this number from now on fail, counted over all threads from 1, and no other; 0 lets none fail.
/// What tests of exhausted memory need. Returns how many allocations the last such order still waited for: 0 when it has
/// been carried out.
std::int64_t FailAllocation(std::int64_t number) noexcept;

/// Drops the cache of freed large blocks.
void TrimMemoryCache() noexcept;

struct MemoryDeleter {
    void operator()(void* pointer) const noexcept { FreeMemory(pointer); }
};

/// `size` bytes, shared-owned; zeroed, or with undefined contents.
std::shared_ptr<unsigned char> AllocSharedBytes(std::size_t size, bool zeroed);

} // namespace ImagingFramework
