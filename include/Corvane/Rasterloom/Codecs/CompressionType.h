#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Codecs {

/// How the pixels of a frame are packed in its file.
enum class CompressionType : std::uint32_t {
    Unknown = 0,
    None = 1,
    Rle = 2,
    Jpeg = 3,
    Zip = 4,
    CcittRle = 5,
    Ccitt3 = 6,
    Ccitt4 = 7,
    Lzw = 8,
    WaveletLossy = 9,
    WaveletLossless = 10,
};

} // namespace Corvane::Rasterloom::Codecs
