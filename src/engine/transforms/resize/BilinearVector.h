#pragma once

#include "transforms/resize/BilinearRows.h"

#include <cstddef>
#include <cstdint>

namespace ImagingFramework {

/// `BlendRows` of 8-bit samples in vectors; equal results.
void BlendByteRows(const std::uint8_t* top, const std::uint8_t* bottom, std::uint8_t* row, std::size_t samples,
                   std::uint32_t weight);

/// `BlendColumns` of pixels of 1, 3 or 4 8-bit samples in vectors; equal results. `rowBytes` is what may be read of `source`.
void BlendByteColumns(const std::uint8_t* source, std::size_t rowBytes, std::uint8_t* row, const BilinearColumns& columns,
                      int samples);

/// `BlendRows` of 16-bit samples in vectors; equal results.
void BlendWordRows(const std::uint16_t* top, const std::uint16_t* bottom, std::uint16_t* row, std::size_t samples,
                   std::uint32_t weight);

/// `BlendColumns` of pixels of 1, 3 or 4 16-bit samples in vectors; equal results. `rowSamples` is what may be read of
/// `source`.
void BlendWordColumns(const std::uint16_t* source, std::size_t rowSamples, std::uint16_t* row,
                      const BilinearColumns& columns, int samples);

/// `BlendColumnsWithAlpha` and `BlendRowsWithAlpha` of pixels of 4 8-bit samples in vectors; equal results.
/// `rowBytes` is what may be read of `source`.
void BlendAlphaByteColumns(const std::uint8_t* source, std::size_t rowBytes, std::uint8_t* row,
                           const BilinearColumns& columns);
void BlendAlphaByteRows(const std::uint8_t* top, const std::uint8_t* bottom, std::uint8_t* row, std::size_t pixels,
                        std::uint32_t weight);

/// The groups that `BlendByteColumns` uses for rows of `rowBytes` bytes of one sample per pixel.
ByteGroups CreateByteGroups(const BilinearColumns& columns, std::size_t rowBytes);

} // namespace ImagingFramework
