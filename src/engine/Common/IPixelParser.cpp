#include "Common/IPixelParser.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ImagingFramework {

IPixelParserImpl::IPixelParserImpl(PixelFormat format, bool includeAlpha)
    : m_uintChannels(PixelFormatChannelCount(format)), m_bHasAlpha(PixelFormatHasAlpha(format)),
      m_uintAlphaIndex(m_uintChannels - 1), m_uintOpaque(PixelFormatIsExtended(format) ? 65535 : 255) {
    if (m_bHasAlpha && !includeAlpha) {
        --m_uintChannels;
    }
    IPixelParserImpl::ResetChannels();
}

IPerChannelPixelParserImpl::IPerChannelPixelParserImpl(PixelFormat format, bool includeAlpha,
                                                       std::span<const bool> selected)
    : IPixelParserImpl(format, includeAlpha) {
    const auto candidates = std::min<std::uint32_t>(m_uintChannels, static_cast<std::uint32_t>(selected.size()));
    m_uintChannels = static_cast<std::uint32_t>(std::count(selected.begin(), selected.begin() + candidates, true));
    std::uint32_t slot = m_uintChannels;
    for (std::uint32_t channel = 0; channel < candidates; ++channel) {
        if (selected[channel]) {
            m_indices[--slot] = channel;
        }
    }
    ResetChannels();
}

namespace {

/// The samples themselves, over one of the two walks.
template <class Sample, class Walk> class SampleParser final : public Walk {
public:
    using Walk::Walk;

    void SetPixel(std::uint8_t* pAddress) override {
        m_pSamples = reinterpret_cast<Sample*>(pAddress);
        this->ResetChannels();
    }
    std::uint32_t GetAlpha() const override {
        return this->m_bHasAlpha ? m_pSamples[this->m_uintAlphaIndex] : this->m_uintOpaque;
    }
    std::uint32_t GetChannel() const override { return m_pSamples[this->ChannelIndex()]; }

    std::uint32_t SetChannel(std::uint8_t value) override { return Store(this->ChannelIndex(), value); }
    std::uint32_t SetChannelWord(std::uint16_t value) override { return StoreClamped(this->ChannelIndex(), value); }
    std::uint32_t SetChannelInt(std::int32_t value) override { return StoreClamped(this->ChannelIndex(), value); }
    std::uint32_t SetChannelUInt(std::uint32_t value) override { return StoreClamped(this->ChannelIndex(), value); }
    std::uint32_t SetChannelInt64(std::int64_t value) override { return StoreClamped(this->ChannelIndex(), value); }
    std::uint32_t SetChannelUInt64(std::uint64_t value) override { return StoreClamped(this->ChannelIndex(), value); }

    std::uint32_t SetAlpha(std::uint8_t value) override { return StoreAlpha(value); }
    std::uint32_t SetAlphaWord(std::uint16_t value) override { return StoreAlpha(value); }
    std::uint32_t SetAlphaInt(std::int32_t value) override { return StoreAlpha(value); }
    std::uint32_t SetAlphaUInt(std::uint32_t value) override { return StoreAlpha(value); }
    std::uint32_t SetAlphaInt64(std::int64_t value) override { return StoreAlpha(value); }
    std::uint32_t SetAlphaUInt64(std::uint64_t value) override { return StoreAlpha(value); }

private:
    template <class Value> static Sample Clamp(Value value) {
        if (std::cmp_less(value, 0)) {
            return 0;
        }
        constexpr Sample maximum = std::numeric_limits<Sample>::max();
        return std::cmp_greater(value, maximum) ? maximum : static_cast<Sample>(value);
    }
    std::uint32_t Store(std::uint32_t index, Sample value) { return m_pSamples[index] = value; }
    template <class Value> std::uint32_t StoreClamped(std::uint32_t index, Value value) {
        return Store(index, Clamp(value));
    }
    template <class Value> std::uint32_t StoreAlpha(Value value) {
        return this->m_bHasAlpha ? StoreClamped(this->m_uintAlphaIndex, value) : this->m_uintOpaque;
    }

    Sample* m_pSamples = nullptr;
};

} // namespace

using PixelByteParser = SampleParser<std::uint8_t, IPixelParserImpl>;
using PixelWordParser = SampleParser<std::uint16_t, IPixelParserImpl>;
using PerChannelPixelByteParser = SampleParser<std::uint8_t, IPerChannelPixelParserImpl>;
using PerChannelPixelWordParser = SampleParser<std::uint16_t, IPerChannelPixelParserImpl>;

std::unique_ptr<IPixelParser> CreatePixelParser(PixelFormat format, bool includeAlpha, std::span<const bool> selected) {
    const bool extended = PixelFormatIsExtended(format);
    if (selected.empty()) {
        if (extended) {
            return std::make_unique<PixelWordParser>(format, includeAlpha);
        }
        return std::make_unique<PixelByteParser>(format, includeAlpha);
    }
    if (extended) {
        return std::make_unique<PerChannelPixelWordParser>(format, includeAlpha, selected);
    }
    return std::make_unique<PerChannelPixelByteParser>(format, includeAlpha, selected);
}

} // namespace ImagingFramework
