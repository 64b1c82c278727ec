#include "ThumbnailMaker.h"

#include "CallEngine.h"
#include "colorconversion/ColorSpaceManager.h"
#include "metadata/Frames/IFrameDecoder.h"
#include "transforms/ResizeTransform.h"

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

namespace {

/// What the source must become before it can be resampled: packed 16-bit pixels have no whole samples.
engine::PixelFormat ContinuousFormat(const engine::BitmapData& raster) {
    switch (raster.GetPixelFormat()) {
    case engine::PixelFormat::Format16bppRgb555:
    case engine::PixelFormat::Format16bppRgb565:
        return engine::PixelFormat::Format24bppRgb;
    case engine::PixelFormat::Format16bppArgb1555:
        return engine::PixelFormat::Format32bppArgb;
    default:
        break;
    }
    if (!engine::PixelFormatIsIndexed(raster.GetPixelFormat())) {
        return raster.GetPixelFormat();
    }
    const engine::ColorMap* const map = raster.GetColorMapRef();
    return map != nullptr && engine::PixelFormatHasAlpha(map->GetPixelFormat()) ? engine::PixelFormat::Format32bppArgb
                                                                              : engine::PixelFormat::Format24bppRgb;
}

std::unique_ptr<engine::BitmapData> Convert(const engine::BitmapData& source, engine::PixelFormat format) {
    std::unique_ptr<engine::BitmapData> result;
    engine::ColorSpaceManager().TransformBitmapData(source, format, result);
    return result;
}

std::unique_ptr<engine::BitmapData> Make(const engine::BitmapData& source, std::uint32_t width, std::uint32_t height,
                                         const Transforms::InterpolationMode* pInterpolationMode) {
    engine::IFrameDecoderImpl::CalculateThumbnailDimensions(source.GetWidth(), source.GetHeight(), width, height);
    std::unique_ptr<engine::BitmapData> expanded;
    if (const auto format = ContinuousFormat(source); format != source.GetPixelFormat()) {
        expanded = Convert(source, format);
    }
    engine::ResizeTransform resize;
    resize.SetWidth(width);
    resize.SetHeight(height);
    if (pInterpolationMode != nullptr) {
        resize.SetInterpolationMode(static_cast<engine::InterpolationMode>(*pInterpolationMode));
    }
    std::unique_ptr<engine::BitmapData> result;
    resize.ApplyTransform(expanded ? expanded.get() : &source, nullptr, result);
    return result;
}

} // namespace

std::unique_ptr<engine::BitmapData> MakeThumbnail(const engine::BitmapData& source, std::int32_t width,
                                                  std::int32_t height,
                                                  const Transforms::InterpolationMode* pInterpolationMode) {
    return CallEngine([&] {
        return Make(source, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height), pInterpolationMode);
    });
}

} // namespace Corvane::Rasterloom::Codecs
