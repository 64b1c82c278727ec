#pragma once

#include "Common/PixelFormat.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>

namespace ImagingFramework {

/// Reads and writes the channels of one pixel, one after the other. Setters return the value that was stored: `SetChannel`
/// and `SetAlpha` store their 8-bit argument as it is; the word setters store as they are in 16-bit samples and clamp to 255
/// in 8-bit ones; all others clamp to the range of the sample. Alpha setters do nothing in a format without alpha, and
/// `GetAlpha` gives the opaque value there.
class IPixelParser {
public:
    virtual ~IPixelParser() = default;
    /// Moves to the pixel at `pAddress` and to its first channel.
    virtual void SetPixel(std::uint8_t* pAddress) = 0;
    virtual void ResetChannels() = 0;
    virtual std::uint32_t GetAlpha() const = 0;
    virtual std::uint32_t GetChannel() const = 0;
    /// False, without moving, behind the last channel.
    virtual bool NextChannel() = 0;
    virtual std::uint32_t SetChannel(std::uint8_t value) = 0;
    virtual std::uint32_t SetChannelWord(std::uint16_t value) = 0;
    virtual std::uint32_t SetChannelInt(std::int32_t value) = 0;
    virtual std::uint32_t SetChannelUInt(std::uint32_t value) = 0;
    virtual std::uint32_t SetChannelInt64(std::int64_t value) = 0;
    virtual std::uint32_t SetChannelUInt64(std::uint64_t value) = 0;
    virtual std::uint32_t SetAlpha(std::uint8_t value) = 0;
    virtual std::uint32_t SetAlphaWord(std::uint16_t value) = 0;
    virtual std::uint32_t SetAlphaInt(std::int32_t value) = 0;
    virtual std::uint32_t SetAlphaUInt(std::uint32_t value) = 0;
    virtual std::uint32_t SetAlphaInt64(std::int64_t value) = 0;
    virtual std::uint32_t SetAlphaUInt64(std::uint64_t value) = 0;
    /// Channels that are walked.
    virtual std::uint32_t GetChannelCount() const = 0;
};

/// Walks all channels in memory order, alpha among them when asked for.
class IPixelParserImpl : public IPixelParser {
public:
    static constexpr std::uint32_t MaximumChannels = 5;

    IPixelParserImpl(PixelFormat format, bool includeAlpha);
    void ResetChannels() override { m_uintRemaining = m_uintChannels == 0 ? 0 : m_uintChannels - 1; }
    bool NextChannel() override {
        if (m_uintRemaining == 0) {
            return false;
        }
        --m_uintRemaining;
        return true;
    }
    std::uint32_t GetChannelCount() const override { return m_uintChannels; }

protected:
    std::uint32_t ChannelIndex() const noexcept { return m_uintChannels - 1 - m_uintRemaining; }

    std::uint32_t m_uintChannels;
    bool m_bHasAlpha;
    std::uint32_t m_uintAlphaIndex;
    std::uint32_t m_uintOpaque;
    std::uint32_t m_uintRemaining = 0;
};

/// Walks the selected channels in ascending order. The index array is filled from its end, so that the counter, which runs
/// down, meets the lowest channel first.
class IPerChannelPixelParserImpl : public IPixelParserImpl {
public:
    IPerChannelPixelParserImpl(PixelFormat format, bool includeAlpha, std::span<const bool> selected);

protected:
    std::uint32_t ChannelIndex() const noexcept { return m_indices[m_uintRemaining]; }

private:
    std::array<std::uint32_t, MaximumChannels> m_indices{};
};

/// The parser for a whole-channel format; `selected` picks channels, an empty one means all.
std::unique_ptr<IPixelParser> CreatePixelParser(PixelFormat format, bool includeAlpha,
                                                std::span<const bool> selected = {});

} // namespace ImagingFramework
