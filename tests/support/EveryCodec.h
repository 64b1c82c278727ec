#pragma once

// What tests over all codecs share: a picture, its file in each format, streams that fail.

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
#include <utility>
#include <vector>

namespace Corvane::Rasterloom::Codecs {

/// A failure that the library does not know.
struct HostFailure : std::runtime_error {
    HostFailure() : std::runtime_error("the host's own failure") {}
};

/// A memory stream whose reads or writes fail from a byte on.
class FailingStream : public Host::MemoryStream {
public:
    static constexpr std::int64_t NoLimit = std::int64_t{1} << 40;

    explicit FailingStream(std::vector<std::uint8_t> bytes, std::int64_t readLimit = NoLimit,
                           std::int64_t writeLimit = NoLimit)
        : MemoryStream(std::move(bytes)), m_readLimit(readLimit), m_writeLimit(writeLimit) {}

    std::size_t Read(void* buffer, std::size_t size) override {
        Check(size, m_readLimit);
        return MemoryStream::Read(buffer, size);
    }
    void Write(const void* buffer, std::size_t size) override {
        Check(size, m_writeLimit);
        MemoryStream::Write(buffer, size);
    }

private:
    void Check(std::size_t size, std::int64_t limit) {
        if (get_Position() + static_cast<std::int64_t>(size) > limit) {
            throw HostFailure();
        }
    }

    std::int64_t m_readLimit;
    std::int64_t m_writeLimit;
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

inline std::vector<std::uint8_t> SaveTo(std::int64_t format, Bitmap& bitmap,
                                        std::int64_t writeLimit = FailingStream::NoLimit) {
    const auto stream =
        std::make_shared<FailingStream>(std::vector<std::uint8_t>{}, FailingStream::NoLimit, writeLimit);
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
