#pragma once

#include "Common/BitmapData.h"
#include "Common/IPixelFormatSupport.h"
#include "Common/InternalEvents.h"
#include "Common/InterpolationMode.h"

#include <array>
#include <cstdint>
#include <memory>

namespace ImagingFramework {

/// The base of all image operations: checks the source, attaches source and destination, runs the body, and cleans up when
/// it fails. A derived class brings the body, the set of formats and its parameters, which outlive a run. Nothing is ever
/// converted: a format that is not accepted fails. The source is only read. One object serves one thread at a time.
class Transform : public IInternalEventsHostImpl, public IPixelFormatSupportImpl {
public:
    /// A colour of up to five 16-bit channels in memory order.
    using ColorRecord = std::array<std::uint16_t, 5>;
    /// The bytes of one pixel of any whole-byte format.
    using PixelBytes = std::array<std::uint8_t, 10>;

    /// Runs over `pRegion` of `pSource`, inclusive corners in pixels, the whole of it when null.
    ///
    /// An empty slot receives a new raster, and stays empty when the run fails. A raster that the slot holds already is
    /// reused as the destination: it is emptied first, and stays in the slot whatever happens.
    ///
    /// Fails with `ArgumentNullPointerException` ("source bitmap data"), `UnexpectedException` when source and destination
    /// are one, `UnsupportedPixelFormatException`, `ArgumentException` for a source without pixels,
    /// `ArgumentOutOfRangeException` and `ArgumentException` ("source rectangle") for a bad region, `AbortedException`,
    /// `TimeOutException`, and what the body raises; what is not an engine exception becomes `UnexpectedException`.
    void ApplyTransform(const BitmapData* pSource, const RegionRect* pRegion,
                        std::unique_ptr<BitmapData>& destinationSlot);

    /// Switched off for a helper inside another transform, so that its rows do not enlarge the total.
    void SetProgressTotalEnabled(bool enabled) noexcept { m_bProgressTotalEnabled = enabled; }

    /// Resolves the three quality levels by the format; other modes come back as they are.
    static InterpolationMode ValidateInterpolationMode(InterpolationMode mode, PixelFormat format, bool preferSinc,
                                                       bool preferAnisotropic);
    /// The pixel of `format` for a colour: the high bytes for 8-bit channels, the values as they are for 16-bit ones. Fails
    /// with `UnsupportedPixelFormatException` for indexed formats and those that are not of whole bytes.
    static PixelBytes FitColorToFormat(const ColorRecord& color, PixelFormat format);

protected:
    virtual void ApplyTransformInternal() = 0;
    virtual void Reset();
    virtual void AttachToBitmaps(const BitmapData* pSource, const RegionRect* pRegion,
                                 std::unique_ptr<BitmapData>& destinationSlot);
    virtual void DetachOnFailure();
    /// Gives the destination its pixels: of the explicit size and format, or of the region's size and the source's
    /// format; zeroed unless `WritesEveryPixel`. Resolutions come from the source, palette and profile as well when the
    /// formats are equal.
    virtual void InitializeDestination(bool useExplicit, std::uint32_t width, std::uint32_t height, PixelFormat format);
    /// True where the body writes every pixel of the destination, so that nothing need be zeroed first.
    virtual bool WritesEveryPixel() const { return false; }

    /// `NotInitializedException` without a source or a destination, `UnexpectedException` for an empty region.
    void CheckBitmaps() const;
    /// Announces steps, unless nobody listens or the total is switched off. Counts beyond 31 bits are cut.
    void PrepareProgress(std::uint64_t steps);
    /// For transforms that work on whole images only: fails with `ArgumentException` unless the region is null or covers
    /// the source.
    static void RequireWholeImage(const BitmapData* pSource, const RegionRect* pRegion, const char* argument);

    PixelFormat m_enSourceFormat = PixelFormat::FormatUnknown;
    std::uint32_t m_uintRegionHeight = 0;
    std::uint32_t m_uintRegionWidth = 0;
    const BitmapData* m_pSource = nullptr; ///< not owned
    BitmapData* m_pDestination = nullptr;
    /// Where the raster that this run created stands; null when the caller supplied the destination.
    std::unique_ptr<BitmapData>* m_pDestinationSlot = nullptr;
    bool m_bDestinationOwned = true;
    bool m_bProgressTotalEnabled = true;
    RegionRect m_region;
};

} // namespace ImagingFramework
