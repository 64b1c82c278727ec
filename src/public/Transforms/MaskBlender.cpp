#include "Transforms/MaskBlender.h"

#include "colorconversion/ColorSpaceManager.h"

#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/Errors.h>

#include <cstring>
#include <vector>

namespace Corvane::Rasterloom::Transforms {

namespace engine = ImagingFramework;

namespace {

void CheckSameShape(const engine::BitmapData& result, const engine::BitmapData& target) {
    if (result.GetPixelFormat() != target.GetPixelFormat()) {
        throw Host::ArgumentException("Pixel formats of source bitmap and resulting bitmap are not the same.");
    }
    if (result.GetWidth() != target.GetWidth() || result.GetHeight() != target.GetHeight()) {
        throw Host::ArgumentException("Dimensions of source bitmap and resulting bitmap are not the same.");
    }
}

void CheckMask(const engine::BitmapData& mask, const engine::BitmapData& target) {
    if (engine::PixelFormatIsPacked16(target.GetPixelFormat())) {
        throw UnsupportedPixelFormatException();
    }
    if (mask.IsEmpty()) {
        throw BitmapEmptyException(std::string("mask"));
    }
    if (mask.GetWidth() != target.GetWidth() || mask.GetHeight() != target.GetHeight()) {
        throw Host::ArgumentException("Dimensions bitmap and mask bitmap are not the same.");
    }
    if (mask.GetPixelFormat() != engine::PixelFormat::Format8bppGrayScale) {
        throw Host::ArgumentException("Pixel format of mask bitmap has an unappropriate value.");
    }
}

/// One row of whole samples; `samples` of them belong to each mask byte.
template <class Sample>
void BlendRow(const std::uint8_t* pMask, const std::uint8_t* pResult, std::uint8_t* pTarget, std::uint32_t width,
              std::uint32_t samples) {
    const auto* result = reinterpret_cast<const Sample*>(pResult);
    auto* target = reinterpret_cast<Sample*>(pTarget);
    for (std::uint32_t x = 0; x < width; ++x) {
        const std::uint32_t m = pMask[x];
        for (std::uint32_t i = 0; i < samples; ++i, ++result, ++target) {
            *target = static_cast<Sample>(((255U - m) * *target + m * *result) / 255U);
        }
    }
}

void BlendWholeSamples(const engine::BitmapData& result, const engine::BitmapData& mask, engine::BitmapData& target) {
    const bool extended = engine::PixelFormatIsExtended(target.GetPixelFormat());
    // By the pixel's size: the unused fourth byte of 32-bit RGB is mixed like a sample.
    const std::uint32_t samples = engine::PixelFormatSize(target.GetPixelFormat()) / (extended ? 16 : 8);
    for (std::uint32_t y = 0; y < target.GetHeight(); ++y) {
        const auto blend = extended ? BlendRow<std::uint16_t> : BlendRow<std::uint8_t>;
        blend(mask.GetScanlineRef(y), result.GetScanlineRef(y), target.GetScanlineRef(y), target.GetWidth(), samples);
    }
}

/// Palette indices cannot be mixed: rows go through colours and back to the target's palette.
void BlendIndexed(const engine::BitmapData& result, const engine::BitmapData& mask, engine::BitmapData& target) {
    constexpr auto argb = engine::PixelFormat::Format32bppArgb;
    const std::uint32_t width = target.GetWidth();
    engine::ColorSpaceManager resultToColor;
    resultToColor.InitializePerScanlineHandling(width, result.GetPixelFormat(), result.GetColorMapRef(), nullptr, argb);
    engine::ColorSpaceManager targetToColor;
    targetToColor.InitializePerScanlineHandling(width, target.GetPixelFormat(), target.GetColorMapRef(), nullptr, argb);
    engine::ColorSpaceManager colorToTarget;
    colorToTarget.SetColorMapType(engine::ColorMapType::Custom);
    colorToTarget.SetCustomColorMap(*target.GetColorMapRef());
    colorToTarget.SetDitheringType(engine::DitheringType::None);
    colorToTarget.InitializePerScanlineHandling(width, argb, nullptr, nullptr, target.GetPixelFormat());
    std::vector<std::uint8_t> resultRow(std::size_t{width} * 4);
    std::vector<std::uint8_t> targetRow(std::size_t{width} * 4);
    for (std::uint32_t y = 0; y < target.GetHeight(); ++y) {
        resultToColor.TransformScanline(result.GetScanlineRef(y), resultRow.data());
        targetToColor.TransformScanline(target.GetScanlineRef(y), targetRow.data());
        BlendRow<std::uint8_t>(mask.GetScanlineRef(y), resultRow.data(), targetRow.data(), width, 4);
        colorToTarget.TransformScanline(targetRow.data(), target.GetScanlineRef(y));
    }
}

} // namespace

void MaskBlender::ReplaceRows(const engine::BitmapData& result, engine::BitmapData& target) {
    CheckSameShape(result, target);
    const std::uint32_t rowSize = target.GetRowSize();
    for (std::uint32_t y = 0; y < target.GetHeight(); ++y) {
        std::memcpy(target.GetScanlineRef(y), result.GetScanlineRef(y), rowSize);
    }
}

void MaskBlender::Blend(const engine::BitmapData& result, const engine::BitmapData& mask, engine::BitmapData& target) {
    CheckSameShape(result, target);
    CheckMask(mask, target);
    if (engine::PixelFormatIsIndexed(target.GetPixelFormat())) {
        BlendIndexed(result, mask, target);
    } else {
        BlendWholeSamples(result, mask, target);
    }
}

} // namespace Corvane::Rasterloom::Transforms
