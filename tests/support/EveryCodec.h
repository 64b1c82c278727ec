#pragma once

// What tests over all codecs share: a picture, its file in each format.

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include <cctype>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace Corvane::Rasterloom::Codecs {

/// A failure that the library does not know.
struct HostFailure : std::runtime_error {
    HostFailure() : std::runtime_error("the host's own failure") {}
};

inline constexpr std::int32_t NoiseWidth = 61;
inline constexpr std::int32_t NoiseHeight = 43;

/// Noise, so that no format packs it into nothing.
inline void FillWithNoise(Bitmap& bitmap) {
    bitmap.Create(NoiseWidth, NoiseHeight, PixelFormat::Format24bppRgb);
    std::uint32_t state = 1;
    for (std::int32_t y = 0; y < NoiseHeight; ++y) {
        for (std::int32_t x = 0; x < NoiseWidth; ++x) {
            state = state * 1664525 + 1013904223;
            bitmap.SetPixel(x, y, RgbColor(static_cast<std::int32_t>(state | 0xFF000000U)));
        }
    }
}

inline std::vector<std::uint8_t> SaveTo(std::int64_t format, Bitmap& bitmap) {
    const auto stream = std::make_shared<Host::MemoryStream>();
    bitmap.Save(stream, FormatManager::CreateEncoderOptions(format).get());
    return stream->GetBuffer();
}

/// Names the instances of a test over `FormatManager::SupportedMediaFormatsForSave()`.
inline std::string CodecName(const testing::TestParamInfo<std::int64_t>& info) {
    std::string name = FormatManager::GetFormatName(info.param);
    std::erase_if(name, [](unsigned char c) { return std::isalnum(c) == 0; });
    return name;
}

} // namespace Corvane::Rasterloom::Codecs
