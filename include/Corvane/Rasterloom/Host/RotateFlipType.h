#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Host {

/// The eight ways to lay a picture down: a turn clockwise, then a flip. Eight results have sixteen names.
enum class RotateFlipType : std::uint32_t {
    RotateNoneFlipNone = 0,
    Rotate90FlipNone = 1,
    Rotate180FlipNone = 2,
    Rotate270FlipNone = 3,
    RotateNoneFlipX = 4, ///< left and right change places
    Rotate90FlipX = 5,   ///< rows become columns
    Rotate180FlipX = 6,
    Rotate270FlipX = 7, ///< rows become columns, along the other diagonal
    RotateNoneFlipY = Rotate180FlipX, ///< top and bottom change places
    Rotate90FlipY = Rotate270FlipX,
    Rotate180FlipY = RotateNoneFlipX,
    Rotate270FlipY = Rotate90FlipX,
    RotateNoneFlipXY = Rotate180FlipNone,
    Rotate90FlipXY = Rotate270FlipNone,
    Rotate180FlipXY = RotateNoneFlipNone,
    Rotate270FlipXY = Rotate90FlipNone,
};

} // namespace Corvane::Rasterloom::Host
