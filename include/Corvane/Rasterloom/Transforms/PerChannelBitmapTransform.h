#pragma once

#include <Corvane/Rasterloom/Transforms/MaskedBitmapTransform.h>

#include <array>
#include <vector>

namespace ImagingFramework {
class PerChannelTransform;
}

namespace Corvane::Rasterloom::Transforms {

/// The base of operations that work on some channels and keep the others. All colour channels are selected at first,
/// alpha is left alone.
class RASTERLOOM_API PerChannelBitmapTransform : public MaskedBitmapTransform {
public:
    /// The most channels that a format has.
    static constexpr std::size_t ChannelCount = 5;

    ~PerChannelBitmapTransform() override;

    /// One flag per channel, in memory order.
    std::vector<bool> get_Channels();
    /// Another number than 5 fails with `Host::ArgumentOutOfRangeException` ("channels").
    void set_Channels(const std::vector<bool>& channels);
    /// All colour channels.
    void SelectAllChannels();
    /// None: the operation leaves everything as it is.
    void DeselectAllChannels();
    /// Whether alpha counts among the channels that are worked on.
    bool get_ApplyOnAlpha();
    void set_ApplyOnAlpha(bool applyOnAlpha);

protected:
    PerChannelBitmapTransform(BitmapChange change, std::unique_ptr<ImagingFramework::PerChannelTransform> transform);
    /// Takes as many flags as fit; the others stay selected.
    PerChannelBitmapTransform(BitmapChange change, std::unique_ptr<ImagingFramework::PerChannelTransform> transform,
                              const std::vector<bool>& channels);

    void ExportSettings() override;

private:
    std::array<bool, ChannelCount> m_channels{true, true, true, true, true};
    bool m_bApplyOnAlpha = false;
};

} // namespace Corvane::Rasterloom::Transforms
