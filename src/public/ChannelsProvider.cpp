#include <Corvane/Rasterloom/ChannelsProvider.h>

#include "CallEngine.h"
#include "Common/BitmapData.h"
#include "ObjectGuard.h"
#include "TwoObjectGuard.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/PixelFormatUtils.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>

#include <cstring>

namespace Corvane::Rasterloom {

namespace engine = ImagingFramework;

namespace {

/// The number of a channel, with the one of the alpha channel for -1.
std::int32_t TranslateChannelIndex(std::int32_t channelIndex, engine::PixelFormat format) {
    return engine::TranslateColorChannel(static_cast<engine::ColorChannel>(channelIndex), format);
}

/// Checked against the bitmap's channels.
std::uint32_t RequireChannel(std::int32_t channelIndex, engine::PixelFormat format) {
    if (!engine::PixelFormatIsWholeChannel(format)) {
        throw UnsupportedPixelFormatException("The pixel format doesn't support channels manipulations.");
    }
    const auto count = static_cast<std::int32_t>(engine::PixelFormatChannelCount(format));
    const std::int32_t channel = channelIndex == -1 ? TranslateChannelIndex(-1, format) : channelIndex;
    if (channel < 0 || channel >= count) {
        throw Host::ArgumentOutOfRangeException("channelIndex",
                                                "The bitmap doesn't contain channel with the specified index.");
    }
    return static_cast<std::uint32_t>(channel);
}

engine::PixelFormat ChannelFormat(engine::PixelFormat format) {
    return engine::PixelFormatIsExtended(format) ? engine::PixelFormat::Format16bppGrayScale
                                                 : engine::PixelFormat::Format8bppGrayScale;
}

/// Copies samples of `SampleSize` bytes from one raster to another of the same size; a step is the bytes of a pixel.
template <std::size_t SampleSize>
void CopyRow(const std::uint8_t* source, std::size_t sourceStep, std::uint8_t* destination, std::size_t destinationStep,
             std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        std::memcpy(destination + i * destinationStep, source + i * sourceStep, SampleSize);
    }
}

/// One channel of `source` to one of `destination`; both have the same size and depth.
void CopyChannel(const engine::BitmapData& source, std::uint32_t sourceChannel, engine::BitmapData& destination,
                 std::uint32_t destinationChannel) {
    const bool isExtended = engine::PixelFormatIsExtended(source.GetPixelFormat());
    const std::size_t sampleSize = isExtended ? 2 : 1;
    const std::size_t sourceStep = engine::PixelFormatSize(source.GetPixelFormat()) / 8;
    const std::size_t destinationStep = engine::PixelFormatSize(destination.GetPixelFormat()) / 8;
    const auto copy = isExtended ? CopyRow<2> : CopyRow<1>;
    for (std::uint32_t y = 0; y < source.GetHeight(); ++y) {
        copy(source.GetScanlineRef(y) + sourceChannel * sampleSize, sourceStep,
             destination.GetScanlineRef(y) + destinationChannel * sampleSize, destinationStep, source.GetWidth());
    }
}

} // namespace

ChannelsProvider::ChannelsProvider(std::shared_ptr<BitmapLink> link) : BitmapProvider(std::move(link)) {}

ChannelsProvider::~ChannelsProvider() = default;

std::int32_t ChannelsProvider::get_Count() {
    const ObjectGuard guard(*this);
    return PixelFormatUtils::ChannelCount(ValidateRuntimeData().get_PixelFormat());
}

std::int32_t ChannelsProvider::get_AlphaChannelIndex() {
    const ObjectGuard guard(*this);
    const PixelFormat format = ValidateRuntimeData().get_PixelFormat();
    return PixelFormatUtils::HasAlpha(format) ? PixelFormatUtils::AlphaChannelIndex(format) : -1;
}

std::unique_ptr<Bitmap> ChannelsProvider::get_Channel(std::int32_t channelIndex) {
    const ObjectGuard guard(*this);
    Bitmap& bitmap = ValidateRuntimeData();
    const ObjectGuard bitmapGuard(bitmap);
    const engine::BitmapData& raster = bitmap.get__InternalBitmapData();
    return CallEngine([&] {
        const std::uint32_t channel = RequireChannel(channelIndex, raster.GetPixelFormat());
        auto gray = std::make_unique<engine::BitmapData>(raster.GetWidth(), raster.GetHeight(),
                                                         ChannelFormat(raster.GetPixelFormat()));
        gray->SetHorizontalResolution(raster.GetHorizontalResolution());
        gray->SetVerticalResolution(raster.GetVerticalResolution());
        CopyChannel(raster, channel, *gray, 0);
        return std::make_unique<Bitmap>(std::move(gray));
    });
}

void ChannelsProvider::set_Channel(std::int32_t channelIndex, Bitmap* channel) {
    const ObjectGuard guard(*this);
    if (channel == nullptr) {
        throw Host::ArgumentNullException("channel");
    }
    Bitmap& bitmap = ValidateRuntimeData();
    if (channel->get_IsEmpty()) {
        throw BitmapEmptyException("channel");
    }
    bitmap._RaiseChangingEvent(BitmapChange::ReplaceChannel);
    {
        const TwoObjectGuard both(bitmap, *channel);
        engine::BitmapData& raster = bitmap.get__InternalBitmapData();
        const engine::BitmapData& gray = channel->get__InternalBitmapData();
        CallEngine([&] {
            const std::uint32_t index = RequireChannel(channelIndex, raster.GetPixelFormat());
            if (gray.GetPixelFormat() != ChannelFormat(raster.GetPixelFormat())) {
                throw UnsupportedPixelFormatException();
            }
            if (gray.GetWidth() != raster.GetWidth() || gray.GetHeight() != raster.GetHeight()) {
                throw Host::ArgumentException("The channel should have the size of the bitmap.", "channel");
            }
            CopyChannel(gray, 0, raster, index);
        });
    }
    bitmap._RaiseChangedEvent(BitmapChange::ReplaceChannel);
}

void ChannelsProvider::DiscardAlpha() {
    const ObjectGuard guard(*this);
    const PixelFormat format = ValidateRuntimeData().get_PixelFormat();
    if (!PixelFormatUtils::HasAlpha(format)) {
        throw Exception("Bitmap already hasn't alpha.");
    }
    const auto plain = engine::PixelFormatDiscardAlpha(static_cast<engine::PixelFormat>(format));
    Transforms::PixelFormatConverter converter(static_cast<PixelFormat>(plain));
    Apply(converter);
}

} // namespace Corvane::Rasterloom
