#include "transforms/Transform.h"

#include <algorithm>
#include <limits>
#include <new>

namespace ImagingFramework {

void Transform::ApplyTransform(const BitmapData* pSource, const RegionRect* pRegion,
                               std::unique_ptr<BitmapData>& destinationSlot) {
    Reset();
    if (pSource == nullptr) {
        throw ArgumentNullPointerException("source bitmap data");
    }
    if (pSource == destinationSlot.get()) {
        throw UnexpectedException(
            "Inplace effects are not supported. Source and destination bitmaps cannot be the same.");
    }
    if (!IsFormatAccepted(pSource->GetPixelFormat())) {
        throw UnsupportedPixelFormatException();
    }
    if (pSource->GetWidth() == 0) {
        throw ArgumentException("source bitmap data", "Source width cannot be zero");
    }
    if (pSource->GetHeight() == 0) {
        throw ArgumentException("source bitmap data", "Source height cannot be zero");
    }
    try {
        AttachToBitmaps(pSource, pRegion, destinationSlot);
        ApplyTransformInternal();
    } catch (const Exception&) {
        DetachOnFailure();
        throw;
    } catch (const std::bad_alloc&) {
        DetachOnFailure();
        throw MemoryException();
    } catch (...) {
        DetachOnFailure();
        throw UnexpectedException();
    }
    // The slot is the caller's variable and may be gone before the next run.
    m_pDestinationSlot = nullptr;
}

void Transform::Reset() {
    m_enSourceFormat = PixelFormat::FormatUnknown;
    m_uintRegionHeight = 0;
    m_uintRegionWidth = 0;
    m_pSource = nullptr;
    m_pDestination = nullptr;
    m_pDestinationSlot = nullptr;
    m_bDestinationOwned = true;
}

void Transform::AttachToBitmaps(const BitmapData* pSource, const RegionRect* pRegion,
                                std::unique_ptr<BitmapData>& destinationSlot) {
    const std::int64_t sourceWidth = pSource->GetWidth();
    const std::int64_t sourceHeight = pSource->GetHeight();
    if (pRegion != nullptr) {
        m_region = *pRegion;
    } else {
        // Lines of 2^31 pixels and more have no inclusive 32-bit corners.
        if (std::max(sourceWidth, sourceHeight) > std::numeric_limits<std::int32_t>::max()) {
            throw OverflowException();
        }
        m_region = {0, 0, static_cast<std::int32_t>(sourceWidth - 1), static_cast<std::int32_t>(sourceHeight - 1)};
    }
    m_pSource = pSource;
    m_enSourceFormat = pSource->GetPixelFormat();
    m_uintRegionWidth = static_cast<std::uint32_t>(m_region.Right) - static_cast<std::uint32_t>(m_region.Left) + 1U;
    m_uintRegionHeight = static_cast<std::uint32_t>(m_region.Bottom) - static_cast<std::uint32_t>(m_region.Top) + 1U;
    if (m_region.Left < 0 || m_region.Right >= sourceWidth || m_region.Top < 0 || m_region.Bottom >= sourceHeight) {
        throw ArgumentOutOfRangeException("source rectangle",
                                          "Coordinates of all points of the rectangle must be inside source image.");
    }
    if (m_region.Left > m_region.Right) {
        throw ArgumentException(
            "source rectangle",
            "Incorrect rectangle has been specified. Left coordinate cannot be greater than right.");
    }
    if (m_region.Top > m_region.Bottom) {
        throw ArgumentException(
            "source rectangle",
            "Incorrect rectangle has been specified. Top coordinate cannot be greater than bottom.");
    }
    if (destinationSlot != nullptr) {
        m_bDestinationOwned = false;
    } else {
        destinationSlot = std::make_unique<BitmapData>();
        m_pDestinationSlot = &destinationSlot;
    }
    m_pDestination = destinationSlot.get();
    m_pDestination->Empty();
}

void Transform::DetachOnFailure() {
    if (m_bDestinationOwned && m_pDestinationSlot != nullptr) {
        m_pDestinationSlot->reset();
        m_pDestination = nullptr;
    }
    m_pDestinationSlot = nullptr;
}

void Transform::InitializeDestination(bool useExplicit, std::uint32_t width, std::uint32_t height,
                                      PixelFormat format) {
    if (!useExplicit) {
        width = m_uintRegionWidth;
        height = m_uintRegionHeight;
        format = m_enSourceFormat;
    }
    if (WritesEveryPixel()) {
        m_pDestination->CreateUncleared(width, height, format);
    } else {
        m_pDestination->Create(width, height, format);
    }
    m_pDestination->SetHorizontalResolution(m_pSource->GetHorizontalResolution());
    m_pDestination->SetVerticalResolution(m_pSource->GetVerticalResolution());
    if (format == m_enSourceFormat) {
        if (m_pSource->GetColorMapRef() != nullptr) {
            m_pDestination->SetColorMap(*m_pSource->GetColorMapRef());
        }
        m_pDestination->SetProfileFile(m_pSource->GetProfileFile());
    }
}

void Transform::CheckBitmaps() const {
    if (m_pSource == nullptr || m_pSource->IsEmpty() || m_pDestination == nullptr) {
        throw NotInitializedException("BitmapData");
    }
    if (m_uintRegionWidth == 0 || m_uintRegionHeight == 0) {
        throw UnexpectedException();
    }
}

void Transform::PrepareProgress(std::uint64_t steps) {
    if (m_pEvents == nullptr) {
        return;
    }
    if (!m_bProgressTotalEnabled) {
        m_uintStartTick = GetTickCount(); // a timeout still counts from here, not from some earlier run
        return;
    }
    constexpr std::uint64_t limit = std::numeric_limits<std::int32_t>::max();
    ResetProgress(static_cast<std::int32_t>(std::min(steps, limit)));
}

void Transform::RequireWholeImage(const BitmapData* pSource, const RegionRect* pRegion, const char* argument) {
    if (pRegion == nullptr) {
        return;
    }
    const bool whole = pRegion->Left == 0 && pRegion->Top == 0 &&
                       std::int64_t{pRegion->Right} + 1 == pSource->GetWidth() &&
                       std::int64_t{pRegion->Bottom} + 1 == pSource->GetHeight();
    if (!whole) {
        throw ArgumentException(argument, "Argument must be NULL or equal to image's dimensions ");
    }
}

InterpolationMode Transform::ValidateInterpolationMode(InterpolationMode mode, PixelFormat format, bool preferSinc,
                                                       bool preferAnisotropic) {
    switch (mode) {
    case InterpolationMode::LowQuality:
    case InterpolationMode::MediumQuality:
    case InterpolationMode::HighQuality:
        break;
    default:
        return mode;
    }
    if (PixelFormatIsPacked16(format) || mode == InterpolationMode::LowQuality) {
        return InterpolationMode::NearestNeighbour;
    }
    if (PixelFormatIsIndexed(format)) {
        return InterpolationMode::ScaleToGray;
    }
    if (mode == InterpolationMode::MediumQuality) {
        return InterpolationMode::Bilinear;
    }
    if (mode == InterpolationMode::HighQuality) {
        return preferSinc          ? InterpolationMode::Lanczos3Filter
               : preferAnisotropic ? InterpolationMode::Anisotropic9
                                   : InterpolationMode::Bilinear;
    }
    throw UnexpectedException("Failed to validate interpolation enInterpolationMode.");
}

Transform::PixelBytes Transform::FitColorToFormat(const ColorRecord& color, PixelFormat format) {
    if (PixelFormatIsIndexed(format) || PixelFormatSize(format) == 0 || PixelFormatSize(format) % 8 != 0) {
        throw UnsupportedPixelFormatException();
    }
    PixelBytes pixel{};
    const bool extended = PixelFormatIsExtended(format);
    for (std::size_t i = 0; i < color.size(); ++i) {
        const auto low = static_cast<std::uint8_t>(color[i] & 0xFF);
        const auto high = static_cast<std::uint8_t>(color[i] >> 8);
        if (extended) {
            pixel[2 * i] = low;
            pixel[2 * i + 1] = high;
        } else {
            pixel[i] = high;
        }
    }
    return pixel;
}

} // namespace ImagingFramework
