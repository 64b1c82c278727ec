#pragma once

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapProvider.h>
#include <Corvane/Rasterloom/PixelFormat.h>

#include <cstdint>
#include <memory>

namespace Corvane::Rasterloom {

/// The channels of a bitmap: `bitmap.get_Channels()->get_Channel(0)`. Channels are numbered by their place in a pixel
/// (blue, green, red, alpha; black, yellow, magenta, cyan, alpha; gray, alpha), and -1, the value of
/// `ColorChannel::Alpha`, stands for the alpha channel.
///
/// Members fail with `BitmapEmptyException` on an empty bitmap.
class RASTERLOOM_API ChannelsProvider final : public BitmapProvider {
public:
    explicit ChannelsProvider(std::shared_ptr<BitmapLink> link);
    ~ChannelsProvider() override;

    /// Number of channels, alpha included.
    std::int32_t get_Count();
    /// The number of the alpha channel; -1 without one.
    std::int32_t get_AlphaChannelIndex();
    /// A channel as a gray bitmap of its own, `Format16bppGrayScale` in extended formats and `Format8bppGrayScale` in the
    /// others. Fails with `Host::ArgumentOutOfRangeException` ("channelIndex") for a channel that the bitmap does not
    /// have and with `UnsupportedPixelFormatException` where channels are no whole samples.
    std::unique_ptr<Bitmap> get_Channel(std::int32_t channelIndex);
    std::unique_ptr<Bitmap> get_Channel(ColorChannel channel) { return get_Channel(static_cast<std::int32_t>(channel)); }
    /// Replaces a channel by a gray bitmap of that format and of the bitmap's size; `Changing` and `Changed` tell
    /// `ReplaceChannel`. Null fails with `Host::ArgumentNullException` ("channel"), an empty bitmap with
    /// `BitmapEmptyException` ("channel"), another format with `UnsupportedPixelFormatException`, another size with
    /// `Host::ArgumentException` ("channel"), else as `get_Channel`.
    void set_Channel(std::int32_t channelIndex, Bitmap* channel);
    void set_Channel(ColorChannel index, Bitmap* channel) { set_Channel(static_cast<std::int32_t>(index), channel); }
    /// Converts to the format without alpha; `Changing` and `Changed` tell `ColorSpace`. Fails with `Exception` on a
    /// bitmap without alpha.
    void DiscardAlpha();
};

} // namespace Corvane::Rasterloom
