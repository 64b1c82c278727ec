#include <Corvane/Rasterloom/Transforms/Resize.h>

#include "CallEngine.h"
#include "Common/BitmapData.h"
#include "Common/Numeric.h"
#include "EngineRegion.h"
#include "ObjectGuard.h"
#include "Validator.h"
#include "transforms/ResizeTransform.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>

#include <algorithm>

namespace Corvane::Rasterloom::Transforms {

namespace engine = ImagingFramework;

namespace {

void RequireOutArguments(const std::int32_t* destWidth, const std::int32_t* destHeight) {
    if (destWidth == nullptr) {
        throw Host::ArgumentNullException("destWidth");
    }
    if (destHeight == nullptr) {
        throw Host::ArgumentNullException("destHeight");
    }
}

engine::ResizeTransform& ToResize(engine::Transform& transform) {
    return static_cast<engine::ResizeTransform&>(transform);
}

/// The side that follows from the other one in the proportions of the source; at least 1.
std::int32_t FollowingSide(std::int32_t sourceSide, std::int32_t sourceOther, std::int32_t other) {
    const auto widened = [](std::int32_t size) { return static_cast<double>(static_cast<float>(size)); };
    return std::max(1, engine::TruncateToInt32(widened(sourceSide) * widened(other) / widened(sourceOther)));
}

/// A side that is not wanted follows the other; both are those of the source where none is wanted.
void CompleteSize(std::int32_t srcWidth, std::int32_t srcHeight, std::int32_t& width, std::int32_t& height) {
    if (width <= 0 && height <= 0) {
        width = srcWidth;
        height = srcHeight;
    } else if (width <= 0) {
        width = FollowingSide(srcWidth, srcHeight, height);
    } else if (height <= 0) {
        height = FollowingSide(srcHeight, srcWidth, width);
    }
}

} // namespace

Resize::Resize() : BitmapTransform(BitmapChange::Resize, std::make_unique<engine::ResizeTransform>()) {}

Resize::Resize(float width, float height) : Resize() {
    set__Width(width);
    set__Height(height);
}

Resize::Resize(float width, float height, InterpolationMode interpolationMode) : Resize(width, height) {
    set__InterpolationMode(interpolationMode);
}

Resize::Resize(float width, float height, Transforms::ResizeMode resizeMode) : Resize(width, height) {
    set__ResizeMode(resizeMode);
}

Resize::Resize(float width, float height, InterpolationMode interpolationMode, Transforms::ResizeMode resizeMode)
    : Resize(width, height, interpolationMode) {
    set__ResizeMode(resizeMode);
}

Resize::~Resize() { DisposeFinally(); }

void Resize::set__Width(float width) {
    if (!(width >= 0.0F)) {
        throw Host::ArgumentOutOfRangeException("width", "New bitmap width should be non-negative.");
    }
    m_fWidth = width;
}

void Resize::set__Height(float height) {
    if (!(height >= 0.0F)) {
        throw Host::ArgumentOutOfRangeException("height", "New bitmap height should be non-negative.");
    }
    m_fHeight = height;
}

void Resize::set__WidthInPixels(std::int32_t width) { set__Width(_HorizontalPixelsToUnits(width)); }

void Resize::set__HeightInPixels(std::int32_t height) { set__Height(_VerticalPixelsToUnits(height)); }

void Resize::set__CropRectangleInPixels(const Host::Rectangle& cropRectangle) {
    m_cropRectangle = _PixelsToUnits(cropRectangle);
}

void Resize::set__ResizeMode(Transforms::ResizeMode resizeMode) {
    Validator::ValidateEnum("resizeMode", resizeMode);
    m_enResizeMode = resizeMode;
}

void Resize::set__InterpolationMode(InterpolationMode interpolationMode) {
    Validator::ValidateEnum("interpolationMode", interpolationMode);
    m_enInterpolationMode = interpolationMode;
}

float Resize::get_Width() {
    const ObjectGuard guard(*this);
    return m_fWidth;
}

void Resize::set_Width(float width) {
    const ObjectGuard guard(*this);
    set__Width(width);
}

float Resize::get_Height() {
    const ObjectGuard guard(*this);
    return m_fHeight;
}

void Resize::set_Height(float height) {
    const ObjectGuard guard(*this);
    set__Height(height);
}

std::int32_t Resize::get_WidthInPixels() {
    const ObjectGuard guard(*this);
    return _HorizontalUnitsToPixels(m_fWidth);
}

void Resize::set_WidthInPixels(std::int32_t width) {
    const ObjectGuard guard(*this);
    set__WidthInPixels(width);
}

std::int32_t Resize::get_HeightInPixels() {
    const ObjectGuard guard(*this);
    return _VerticalUnitsToPixels(m_fHeight);
}

void Resize::set_HeightInPixels(std::int32_t height) {
    const ObjectGuard guard(*this);
    set__HeightInPixels(height);
}

ResizeMode Resize::get_ResizeMode() {
    const ObjectGuard guard(*this);
    return m_enResizeMode;
}

void Resize::set_ResizeMode(Transforms::ResizeMode resizeMode) {
    const ObjectGuard guard(*this);
    set__ResizeMode(resizeMode);
}

InterpolationMode Resize::get_InterpolationMode() {
    const ObjectGuard guard(*this);
    return m_enInterpolationMode;
}

void Resize::set_InterpolationMode(Transforms::InterpolationMode interpolationMode) {
    const ObjectGuard guard(*this);
    set__InterpolationMode(interpolationMode);
}

bool Resize::get_CropEnabled() {
    const ObjectGuard guard(*this);
    return m_bCropEnabled;
}

void Resize::set_CropEnabled(bool cropEnabled) {
    const ObjectGuard guard(*this);
    m_bCropEnabled = cropEnabled;
}

Host::RectangleF Resize::get_CropRectangle() {
    const ObjectGuard guard(*this);
    return m_cropRectangle;
}

void Resize::set_CropRectangle(const Host::RectangleF& cropRectangle) {
    const ObjectGuard guard(*this);
    m_cropRectangle = cropRectangle;
}

Host::Rectangle Resize::get_CropRectangleInPixels() {
    const ObjectGuard guard(*this);
    return _UnitsToPixels(m_cropRectangle);
}

void Resize::set_CropRectangleInPixels(const Host::Rectangle& cropRectangle) {
    const ObjectGuard guard(*this);
    set__CropRectangleInPixels(cropRectangle);
}

void Resize::CalculateProportionalDimensions(Bitmap& srcBitmap, std::int32_t* destWidth, std::int32_t* destHeight,
                                             Transforms::ResizeMode mode) {
    ThrowIfEmpty(srcBitmap, "srcBitmap");
    CalculateProportionalDimensions(srcBitmap.get_Width(), srcBitmap.get_Height(), destWidth, destHeight, mode);
}

void Resize::CalculateProportionalDimensions(std::int32_t srcWidth, std::int32_t srcHeight, std::int32_t* destWidth,
                                             std::int32_t* destHeight, Transforms::ResizeMode mode) {
    if (srcWidth <= 0) {
        throw Host::ArgumentOutOfRangeException("srcWidth");
    }
    if (srcHeight <= 0) {
        throw Host::ArgumentOutOfRangeException("srcHeight");
    }
    RequireOutArguments(destWidth, destHeight);
    Validator::ValidateEnum("mode", mode);
    if (mode == ResizeMode::Resize) {
        CompleteSize(srcWidth, srcHeight, *destWidth, *destHeight);
        return;
    }
    if (*destWidth <= 0) {
        throw Host::ArgumentOutOfRangeException("destWidth");
    }
    if (*destHeight <= 0) {
        throw Host::ArgumentOutOfRangeException("destHeight");
    }
    if (mode == ResizeMode::Shrink && srcWidth <= *destWidth && srcHeight <= *destHeight) {
        *destWidth = srcWidth;
        *destHeight = srcHeight;
        return;
    }
    const double source = static_cast<double>(srcWidth) / srcHeight;
    const double box = static_cast<double>(*destWidth) / *destHeight;
    if (source > box) {
        *destHeight = std::max(1, engine::TruncateToInt32(*destWidth / source));
    } else {
        *destWidth = std::max(1, engine::TruncateToInt32(*destHeight * source));
    }
}

void Resize::ComputeTargetSize(std::int32_t& width, std::int32_t& height) {
    width = _HorizontalUnitsToPixels(m_fWidth);
    height = _VerticalUnitsToPixels(m_fHeight);
    if (width <= 0 && height <= 0) {
        throw Host::ArgumentOutOfRangeException(
            "width", "One of the new width or height should have positive value.");
    }
    const engine::BitmapData& source = get__Run().m_pSrcBitmapData->get__InternalBitmapData();
    const auto sourceWidth = static_cast<std::int32_t>(source.GetWidth());
    const auto sourceHeight = static_cast<std::int32_t>(source.GetHeight());
    CalculateProportionalDimensions(sourceWidth, sourceHeight, &width, &height, ResizeMode::Resize);
    if (m_enResizeMode != ResizeMode::Resize) {
        CalculateProportionalDimensions(sourceWidth, sourceHeight, &width, &height, m_enResizeMode);
    }
}

void Resize::ExportCrop() {
    engine::ResizeTransform& transform = ToResize(get__Transform());
    if (!m_bCropEnabled) {
        transform.SetCropRectangleRef(nullptr);
        return;
    }
    transform.SetCropRectangle(EngineRegion(_UnitsToPixels(m_cropRectangle)));
}

void Resize::ExportSettings() {
    std::int32_t width = 0;
    std::int32_t height = 0;
    ComputeTargetSize(width, height);
    CallEngine([&] {
        engine::ResizeTransform& transform = ToResize(get__Transform());
        transform.SetWidth(static_cast<std::uint32_t>(width));
        transform.SetHeight(static_cast<std::uint32_t>(height));
        transform.SetInterpolationMode(static_cast<engine::InterpolationMode>(m_enInterpolationMode));
        ExportCrop();
    });
}

} // namespace Corvane::Rasterloom::Transforms
