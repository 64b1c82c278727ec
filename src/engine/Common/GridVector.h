#pragma once

#include <cstddef>
#include <cstdint>

namespace ImagingFramework {

class GridColorMapper;

/// Loops over a grid that are written with vectors. They answer as `GridColorMapper::Find` does in sequence.
namespace GridVector {

/// The indices of `count` pixels of `Format32bppArgb`, for a grid of byte indices. False, with nothing done, where the
/// processor has no vectors.
bool MapPixels(GridColorMapper& grid, const std::uint8_t* pPixels, std::size_t count, std::uint8_t* pIndices);

} // namespace GridVector

} // namespace ImagingFramework
