#pragma once

// What tests over all codecs share: a picture, its file in each format, streams that fail.

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include <algorithm>
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

/// A memory stream that fails at a byte, after moving those before it, or at a call.
class FailingStream : public Host::MemoryStream {
public:
    static constexpr std::int64_t NoLimit = std::int64_t{1} << 40;

    explicit FailingStream(std::vector<std::uint8_t> bytes, std::int64_t readLimit = NoLimit,
                           std::int64_t writeLimit = NoLimit, std::int64_t callLimit = NoLimit)
        : MemoryStream(std::move(bytes)), m_readLimit(readLimit), m_writeLimit(writeLimit), m_callLimit(callLimit) {}

    std::size_t Read(void* buffer, std::size_t size) override {
        CountCall();
        const std::int64_t left = m_readLimit - get_Position();
        if (left <= 0) {
            throw HostFailure();
        }
        return MemoryStream::Read(buffer, std::min(size, static_cast<std::size_t>(left)));
    }
    void Write(const void* buffer, std::size_t size) override {
        CountCall();
        if (get_Position() + static_cast<std::int64_t>(size) > m_writeLimit) {
            throw HostFailure();
        }
        MemoryStream::Write(buffer, size);
    }
    std::int64_t Seek(std::int64_t offset, Host::SeekOrigin origin) override {
        CountCall();
        return MemoryStream::Seek(offset, origin);
    }
    std::int64_t get_Calls() const { return m_calls; }

private:
    void CountCall() {
        if (m_calls++ >= m_callLimit) {
            throw HostFailure();
        }
    }

    std::int64_t m_readLimit;
    std::int64_t m_writeLimit;
    std::int64_t m_callLimit;
    std::int64_t m_calls = 0;
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

/// The name of a format as the name of a test.
inline std::string NameOf(std::int64_t format) {
    std::string name = FormatManager::GetFormatName(format);
    std::erase_if(name, [](unsigned char c) { return std::isalnum(c) == 0; });
    return name;
}

/// Names the instances of a test over `FormatManager::SupportedMediaFormatsForSave()`.
inline std::string CodecName(const testing::TestParamInfo<std::int64_t>& info) { return NameOf(info.param); }

} // namespace Corvane::Rasterloom::Codecs
