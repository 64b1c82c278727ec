#include "transforms/ResizeTransform.h"

#include "Common/EngineModule.h"
#include "transforms/FormatSets.h"
#include "transforms/RegionCopy.h"
#include "transforms/resize/Resamplers.h"

#include <limits>

namespace ImagingFramework {

namespace {

constexpr const char* ModeArgument = "InterpolationMode";
constexpr const char* UnsupportedMode = "Specified interpolation mode is not supported.";

/// What `ScaleToGray` writes.
PixelFormat PaletteFormat(const BitmapData& source) {
    const ColorMap* const map = source.GetColorMapRef();
    const PixelFormat format = map != nullptr && !map->IsEmpty() ? map->GetPixelFormat() : PixelFormat::FormatUnknown;
    if (format != PixelFormat::Format24bppRgb && format != PixelFormat::Format32bppArgb) {
        throw UnexpectedException();
    }
    return format;
}

} // namespace

void ResizeTransform::SetWidth(std::uint32_t width) {
    if (width == 0) {
        throw ArgumentOutOfRangeException("width");
    }
    m_uintNewWidth = width;
}

void ResizeTransform::SetHeight(std::uint32_t height) {
    if (height == 0) {
        throw ArgumentOutOfRangeException("height");
    }
    m_uintNewHeight = height;
}

void ResizeTransform::SetInterpolationMode(InterpolationMode mode) {
    if (mode > InterpolationMode::ScaleToGray) {
        throw ArgumentOutOfRangeException(ModeArgument);
    }
    m_enInterpolationMode = mode;
}

void ResizeTransform::SetCropRectangle(const RegionRect& rectangle) {
    m_pOwnedCropRectangle = std::make_unique<const RegionRect>(rectangle);
    m_pCropRectangle = m_pOwnedCropRectangle.get();
}

void ResizeTransform::SetCropRectangleRef(const RegionRect* pRectangle) {
    m_pOwnedCropRectangle.reset();
    m_pCropRectangle = pRectangle;
}

bool ResizeTransform::IsFormatAccepted(PixelFormat format) const { return IsAnyFormat(format); }

void ResizeTransform::AttachToBitmaps(const BitmapData* pSource, const RegionRect* pRegion,
                                      std::unique_ptr<BitmapData>& destinationSlot) {
    RequireWholeImage(pSource, pRegion, "source rectangle");
    Transform::AttachToBitmaps(pSource, pRegion, destinationSlot);
}

void ResizeTransform::CheckMode(InterpolationMode mode) const {
    if (mode < InterpolationMode::NearestNeighbour || mode > InterpolationMode::ScaleToGray) {
        throw ArgumentException(ModeArgument, UnsupportedMode);
    }
}

RegionRect ResizeTransform::CheckedOutput(InterpolationMode mode) const {
    constexpr std::uint32_t limit = std::numeric_limits<std::int32_t>::max();
    if (m_uintNewWidth == 0 || m_uintNewHeight == 0) {
        throw ArgumentOutOfRangeException(m_uintNewWidth == 0 ? "width" : "height");
    }
    if (m_uintNewWidth > limit || m_uintNewHeight > limit) {
        throw OverflowException();
    }
    const auto width = static_cast<std::int32_t>(m_uintNewWidth);
    const auto height = static_cast<std::int32_t>(m_uintNewHeight);
    const RegionRect whole{0, 0, width - 1, height - 1};
    const RegionRect output = m_pCropRectangle != nullptr ? *m_pCropRectangle : whole;
    const bool isWhole = output.Left == whole.Left && output.Top == whole.Top && output.Right == whole.Right &&
                         output.Bottom == whole.Bottom;
    if (mode == InterpolationMode::Trilinear && !isWhole) {
        throw ArgumentException(ModeArgument, "ResizeAndCrop not supports trilinear interpolation mode.");
    }
    if (mode == InterpolationMode::ScaleToGray && !PixelFormatIsIndexed(m_enSourceFormat)) {
        throw ArgumentException(ModeArgument,
                                "Specified interpolation mode is not supported for the image's pixel format.");
    }
    if (output.Left < 0 || output.Top < 0 || output.Right >= width || output.Bottom >= height ||
        output.Left > output.Right || output.Top > output.Bottom) {
        throw ArgumentOutOfRangeException("CropRectangle",
                                          "Coordinates of all points of crop rect must be inside source image.");
    }
    return output;
}

void ResizeTransform::CheckModeOfFormat(InterpolationMode mode) const {
    const bool nearest = mode == InterpolationMode::NearestNeighbour;
    if (PixelFormatIsIndexed(m_enSourceFormat)) {
        if (!nearest && mode != InterpolationMode::ScaleToGray) {
            throw ArgumentException(ModeArgument, UnsupportedMode);
        }
        return;
    }
    if (PixelFormatSize(m_enSourceFormat) % 8 != 0) {
        throw UnsupportedPixelFormatException();
    }
    if (PixelFormatIsPacked16(m_enSourceFormat) && !nearest) {
        throw ArgumentException(ModeArgument, UnsupportedMode);
    }
}

void ResizeTransform::ApplyTransformInternal() {
    CheckBitmaps();
    const InterpolationMode mode = ValidateInterpolationMode(m_enInterpolationMode, m_enSourceFormat, true, true);
    CheckMode(mode);
    const RegionRect output = CheckedOutput(mode);
    // A source of the new size is copied before the format is compared with the mode, so that an indexed one stays indexed
    // whatever was asked for.
    if (m_uintNewWidth == m_pSource->GetWidth() && m_uintNewHeight == m_pSource->GetHeight()) {
        CopySource(output);
        return;
    }
    CheckModeOfFormat(mode);
    Resample(mode, output);
}

void ResizeTransform::CopySource(const RegionRect& output) {
    const auto width = static_cast<std::uint32_t>(output.Right - output.Left + 1);
    const auto height = static_cast<std::uint32_t>(output.Bottom - output.Top + 1);
    InitializeDestination(true, width, height, m_enSourceFormat);
    PrepareProgress(1);
    CopyRegion(*m_pSource, static_cast<std::uint32_t>(output.Left), static_cast<std::uint32_t>(output.Top),
               *m_pDestination);
    UpdateEvents(1);
}

std::uint32_t ResizeTransform::ThreadCount() const {
    if (GetOmpSupport() == 0) {
        return 1;
    }
    return m_uintProcessorCount != 0 ? m_uintProcessorCount : static_cast<std::uint32_t>(GetProcessorCount());
}

void ResizeTransform::Resample(InterpolationMode mode, const RegionRect& output) {
    const auto width = static_cast<std::uint32_t>(output.Right - output.Left + 1);
    const auto height = static_cast<std::uint32_t>(output.Bottom - output.Top + 1);
    if (mode == InterpolationMode::Anisotropic9) {
        CheckAnisotropicHeight(height);
    }
    const PixelFormat format = mode == InterpolationMode::ScaleToGray ? PaletteFormat(*m_pSource) : m_enSourceFormat;
    InitializeDestination(true, width, height, format);
    RowTeam team(*this, [this](std::uint64_t steps) { PrepareProgress(steps); }, ThreadCount());
    const ResizeJob job{*m_pSource,
                        *m_pDestination,
                        m_uintNewWidth,
                        m_uintNewHeight,
                        static_cast<std::uint32_t>(output.Left),
                        static_cast<std::uint32_t>(output.Top),
                        mode,
                        team};
    switch (mode) {
    case InterpolationMode::NearestNeighbour:
        return ResampleNearest(job);
    case InterpolationMode::Bilinear:
        return ResampleBilinear(job);
    case InterpolationMode::Trilinear:
        return ResampleTrilinear(job);
    case InterpolationMode::Anisotropic4:
    case InterpolationMode::Anisotropic9:
        return ResampleAnisotropic(job);
    case InterpolationMode::Lanczos3Filter:
        return ResampleLanczos(job);
    case InterpolationMode::ScaleToGray:
        return DoIndexedScaleToGray(job);
    default:
        return ResampleWithContributors(job);
    }
}

} // namespace ImagingFramework
