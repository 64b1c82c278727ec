#include <Corvane/Rasterloom/PixelFormatUtils.h>

#include "CallEngine.h"
#include "Common/PixelFormat.h"
#include "EnumTransforms.h"
#include "Validator.h"

#include <algorithm>
#include <array>

namespace Corvane::Rasterloom {

namespace {

/// Checks the format and asks the engine.
template <class Query>
auto Ask(PixelFormat format, Query query) {
    Validator::ValidateEnum("format", format);
    return CallEngine([&] { return query(TransformPixelFormat(format)); });
}

constexpr std::uint32_t GdiMask = 0x003FFFFF;

constexpr std::uint32_t ToGdi(PixelFormat format) {
    return static_cast<std::uint32_t>(format) & GdiMask;
}

constexpr std::array GdiFormats = {
    PixelFormat::Format1bppIndexed,    PixelFormat::Format4bppIndexed, PixelFormat::Format8bppIndexed,
    PixelFormat::Format16bppGrayScale, PixelFormat::Format16bppRgb555, PixelFormat::Format16bppRgb565,
    PixelFormat::Format16bppArgb1555,  PixelFormat::Format24bppRgb,    PixelFormat::Format32bppRgb,
    PixelFormat::Format32bppArgb,      PixelFormat::Format48bppRgb,    PixelFormat::Format64bppArgb,
};

} // namespace

std::int32_t PixelFormatUtils::BitsPerPixel(PixelFormat format) {
    return static_cast<std::int32_t>(Ask(format, [](auto f) { return ImagingFramework::PixelFormatSize(f); }));
}

bool PixelFormatUtils::HasAlpha(PixelFormat format) {
    return Ask(format, [](auto f) { return ImagingFramework::PixelFormatHasAlpha(f); });
}

bool PixelFormatUtils::IsRgb(PixelFormat format) {
    return Ask(format, [](auto f) { return ImagingFramework::PixelFormatIsRgb(f); });
}

bool PixelFormatUtils::IsCmyk(PixelFormat format) {
    return Ask(format, [](auto f) { return ImagingFramework::PixelFormatIsCmyk(f); });
}

bool PixelFormatUtils::IsGrayScale(PixelFormat format) {
    return Ask(format, [](auto f) { return ImagingFramework::PixelFormatIsGrayscale(f); });
}

bool PixelFormatUtils::IsIndexed(PixelFormat format) {
    return Ask(format, [](auto f) { return ImagingFramework::PixelFormatIsIndexed(f); });
}

bool PixelFormatUtils::IsExtended(PixelFormat format) {
    return Ask(format, [](auto f) { return ImagingFramework::PixelFormatIsExtended(f); });
}

ColorSpace PixelFormatUtils::ColorSpace(PixelFormat format) {
    return TransformColorSpace(Ask(format, [](auto f) { return ImagingFramework::PixelFormatColorSpace(f); }));
}

std::int32_t PixelFormatUtils::ChannelCount(PixelFormat format) {
    return static_cast<std::int32_t>(Ask(format, [](auto f) { return ImagingFramework::PixelFormatChannelCount(f); }));
}

std::int32_t PixelFormatUtils::ChannelCountWithoutAlpha(PixelFormat format) {
    return static_cast<std::int32_t>(
        Ask(format, [](auto f) { return ImagingFramework::PixelFormatColorChannelCount(f); }));
}

std::int32_t PixelFormatUtils::AlphaChannelIndex(PixelFormat format) {
    if (!HasAlpha(format)) {
        throw Host::ArgumentException("The pixel format has no alpha channel.", "format");
    }
    return static_cast<std::int32_t>(
        Ask(format, [](auto f) { return ImagingFramework::PixelFormatAlphaChannelIndex(f); }));
}

std::uint32_t TransformPixelFormatGdi(PixelFormat format) {
    if (std::find(GdiFormats.begin(), GdiFormats.end(), format) == GdiFormats.end()) {
        throw UnsupportedPixelFormatException();
    }
    return ToGdi(format);
}

PixelFormat TransformPixelFormatGdi(std::uint32_t gdiPixelFormat) {
    const auto* const found = std::find_if(GdiFormats.begin(), GdiFormats.end(),
                                           [&](PixelFormat format) { return ToGdi(format) == gdiPixelFormat; });
    if (found == GdiFormats.end()) {
        throw UnsupportedPixelFormatException();
    }
    return *found;
}

} // namespace Corvane::Rasterloom
