#include <Corvane/Rasterloom/Transforms/PerChannelBitmapTransform.h>

#include "ObjectGuard.h"
#include "transforms/PerChannelTransform.h"

#include <algorithm>

namespace Corvane::Rasterloom::Transforms {

namespace engine = ImagingFramework;

PerChannelBitmapTransform::PerChannelBitmapTransform(BitmapChange change,
                                                     std::unique_ptr<engine::PerChannelTransform> transform)
    : MaskedBitmapTransform(change, std::move(transform)) {}

PerChannelBitmapTransform::PerChannelBitmapTransform(BitmapChange change,
                                                     std::unique_ptr<engine::PerChannelTransform> transform,
                                                     const std::vector<bool>& channels)
    : PerChannelBitmapTransform(change, std::move(transform)) {
    std::copy_n(channels.begin(), std::min(channels.size(), ChannelCount), m_channels.begin());
}

PerChannelBitmapTransform::~PerChannelBitmapTransform() { DisposeFinally(); }

std::vector<bool> PerChannelBitmapTransform::get_Channels() {
    const ObjectGuard guard(*this);
    return std::vector<bool>(m_channels.begin(), m_channels.end());
}

void PerChannelBitmapTransform::set_Channels(const std::vector<bool>& channels) {
    const ObjectGuard guard(*this);
    if (channels.size() != ChannelCount) {
        throw Host::ArgumentOutOfRangeException("channels", "The array should have 5 elements.");
    }
    std::ranges::copy(channels, m_channels.begin());
}

void PerChannelBitmapTransform::SelectAllChannels() {
    const ObjectGuard guard(*this);
    m_channels.fill(true);
}

void PerChannelBitmapTransform::DeselectAllChannels() {
    const ObjectGuard guard(*this);
    m_channels.fill(false);
}

bool PerChannelBitmapTransform::get_ApplyOnAlpha() {
    const ObjectGuard guard(*this);
    return m_bApplyOnAlpha;
}

void PerChannelBitmapTransform::set_ApplyOnAlpha(bool applyOnAlpha) {
    const ObjectGuard guard(*this);
    m_bApplyOnAlpha = applyOnAlpha;
}

void PerChannelBitmapTransform::ExportSettings() {
    engine::PerChannelItem& item = static_cast<engine::PerChannelTransform&>(get__Transform()).GetChannels();
    item.SelectChannels(m_channels.data(), ChannelCount);
    item.SetIsAlphaProcessed(m_bApplyOnAlpha);
}

} // namespace Corvane::Rasterloom::Transforms
