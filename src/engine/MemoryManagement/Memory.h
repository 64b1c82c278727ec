#pragma once

#include <cstddef>
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

/// Drops the cache of freed large blocks.
void TrimMemoryCache() noexcept;

struct MemoryDeleter {
    void operator()(void* pointer) const noexcept { FreeMemory(pointer); }
};

/// `size` bytes, shared-owned; zeroed, or with undefined contents.
std::shared_ptr<unsigned char> AllocSharedBytes(std::size_t size, bool zeroed);

} // namespace ImagingFramework
