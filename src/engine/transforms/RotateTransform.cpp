#include "transforms/RotateTransform.h"

#include "transforms/FormatSets.h"
#include "transforms/TransformHelpers.h"
#include "transforms/geometry/Rotation.h"

#include <numbers>

namespace ImagingFramework {

namespace {

constexpr const char* ModeArgument = "InterpolationMode";

} // namespace

void RotateTransform::SetInterpolationMode(InterpolationMode mode) {
    if (mode > InterpolationMode::Bilinear) {
        throw ArgumentException(ModeArgument, "Specified interpolation mode is not supported.");
    }
    m_enInterpolationMode = mode;
}

bool RotateTransform::IsFormatAccepted(PixelFormat format) const { return IsWholeFormat(format); }

void RotateTransform::AttachToBitmaps(const BitmapData* pSource, const RegionRect* pRegion,
                                      std::unique_ptr<BitmapData>& destinationSlot) {
    RequireWholeImage(pSource, pRegion, "source rectangle");
    Transform::AttachToBitmaps(pSource, pRegion, destinationSlot);
}

void RotateTransform::ApplyTransformInternal() {
    CheckBitmaps();
    const InterpolationMode mode = ValidateInterpolationMode(m_enInterpolationMode, m_enSourceFormat, false, false);
    if (mode != InterpolationMode::NearestNeighbour && mode != InterpolationMode::Bilinear) {
        throw ArgumentException(ModeArgument, "specified interpolation mode is not supported");
    }
    const RotationMap map(m_pSource->GetWidth(), m_pSource->GetHeight(),
                          NormalizeDegrees(m_angle) * -std::numbers::pi / 180.0);
    InitializeDestination(true, map.NewWidth(), map.NewHeight(), m_enSourceFormat);
    PrepareProgress(map.NewHeight());
    const PixelBytes background = FitColorToFormat(m_backgroundColor, m_enSourceFormat);
    Rotation rotation(*m_pSource, *m_pDestination, map, background.data(), mode == InterpolationMode::Bilinear);
    for (std::uint32_t y = 0; y < map.NewHeight();) {
        const std::uint32_t end = rotation.NextBand(y);
        rotation.FillRows(y, end);
        for (; y < end; ++y) {
            UpdateEvents(1);
        }
    }
}

} // namespace ImagingFramework
