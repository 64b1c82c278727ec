#pragma once

#include "MemoryManagement/Memory.h"
#include "metadata/Frames/CLibraryGuard.h"

#include <png.h>

namespace ImagingFramework {

/// The memory of the PNG library is that of the rasters, and its lack is told as such. The library knows the guard by the
/// pointer that it was made with. A call that gets no memory goes on to give back what it has, so it is not left here.
struct PngMemory {
    static png_voidp Allocate(png_structp pPng, png_alloc_size_t size) noexcept {
        void* pBlock = nullptr;
        static_cast<CLibraryGuard*>(png_get_mem_ptr(pPng))->Try([&] { pBlock = AllocMemory(size); });
        return pBlock;
    }
    static void Free(png_structp, png_voidp pBlock) noexcept { FreeMemory(pBlock); }
};

} // namespace ImagingFramework
