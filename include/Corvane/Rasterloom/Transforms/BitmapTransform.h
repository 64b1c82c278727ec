#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/BitmapChange.h>
#include <Corvane/Rasterloom/Host/Geometry.h>
#include <Corvane/Rasterloom/PixelFormat.h>
#include <Corvane/Rasterloom/UnitConverterHandler.h>

#include <memory>
#include <vector>

namespace ImagingFramework {
class BitmapData;
class IInternalEventsHost;
class IPixelFormatSupport;
class Transform;
struct RegionRect;
} // namespace ImagingFramework

namespace Corvane::Rasterloom {
class Bitmap;
class BitmapData;
} // namespace Corvane::Rasterloom

namespace Corvane::Rasterloom::Transforms {

/// The base of all operations on a bitmap. An object keeps its parameters and may be applied again and again; it holds
/// its own lock from the call of `ApplyTransform` to the end of the work, and the locks of the bitmaps as well.
///
/// No operation converts pixels: a format that it does not take fails with `UnsupportedPixelFormatException`. The
/// result is made apart, so any failure leaves the bitmaps as they were. `Progress` runs from 0 to 200.
class RASTERLOOM_API BitmapTransform : public UnitConverterHandler {
public:
    ~BitmapTransform() override;

    /// In place. An empty bitmap fails with `BitmapEmptyException` ("bitmap"). The bitmap raises `Changing` before and
    /// `Changed` after; a handler of `Changed` sees the new raster.
    void ApplyTransform(Bitmap& bitmap);
    /// From one bitmap to another, whose raster is replaced and which raises the events. The same bitmap twice fails
    /// with `ObjectLockedException`, an empty source with `BitmapEmptyException` ("source").
    void ApplyTransform(Bitmap& source, Bitmap& destination);
    /// From a view, which stays the caller's.
    void ApplyTransform(BitmapData& sourceData, Bitmap& destination);

    /// The formats that the operation takes, in the order of the format table. `Format40bppAcmyk` is never listed.
    std::vector<PixelFormat> get_SupportedPixelFormats();
    /// Whether the operation takes a format.
    bool IsPixelFormatSupported(PixelFormat format);

protected:
    BitmapTransform(BitmapChange change, std::unique_ptr<ImagingFramework::Transform> transform);

    /// The part of the source to work on, in pixels; a width or a height of 0 means the whole.
    virtual Host::Rectangle OnTransforming();
    /// True when the result was used up; else it is attached when the work ends.
    virtual bool SetDestinationData(std::unique_ptr<ImagingFramework::BitmapData>& destBitmapData);
    /// Sets what is passed on anew for each run.
    virtual void ExportSettings() {}

    /// @name The engine's side, by default the transform given to the constructor
    /// @{
    virtual ImagingFramework::IInternalEventsHost& _GetEngineEventsHost();
    virtual const ImagingFramework::IPixelFormatSupport& _GetEngineFormatSupport() const;
    virtual void _RunEngine(const ImagingFramework::BitmapData& source, const ImagingFramework::RegionRect* pRegion,
                            std::unique_ptr<ImagingFramework::BitmapData>& destination);
    /// @}

    ImagingFramework::Transform& get__Transform() const;
    /// Null fails with `Host::ArgumentNullException` ("transform").
    void set__Transform(std::unique_ptr<ImagingFramework::Transform> transform);

    void ThreadProc() override;
    void OnThreadStopping(const std::exception_ptr& exception) override;
    /// Resolutions of the bitmap being worked on, 72 when there is none. Setting fails with
    /// `Host::NotSupportedException`.
    float GetHorizontalResolution() override;
    void SetHorizontalResolution(float value) override;
    float GetVerticalResolution() override;
    void SetVerticalResolution(float value) override;
    /// From the current `Unit` and to it, with these resolutions; fail as `UnitConverter` does.
    Host::Rectangle _UnitsToPixels(const Host::RectangleF& rectangle);
    Host::RectangleF _PixelsToUnits(const Host::Rectangle& rectangle);
    /// Fails with `Host::ObjectDisposedException`.
    void CheckNotDisposed() const;

    /// What a run works on, from the locks to the end.
    struct Run {
        /// The bitmap that was locked for this run; null when the source is the caller's view.
        Bitmap* m_pSrcBitmap = nullptr;
        /// The view that was made for this run; null when the source is the caller's.
        std::shared_ptr<BitmapData> m_pOwnView;
        /// What is read.
        BitmapData* m_pSrcBitmapData = nullptr;
        /// What gets the result; null in place.
        Bitmap* m_pDestBitmap = nullptr;
        /// Null without one.
        Bitmap* m_pMask = nullptr;
        /// The result goes into the source, through the mask where there is one.
        bool m_bApplyMasked = false;
        /// The result.
        std::unique_ptr<ImagingFramework::BitmapData> m_pInternalBitmapDataToAttach;
    };

    /// Locks the transform, raises `Changing`, locks what the run works on and starts the work. Everything that was
    /// taken is given back when something fails first.
    void Start(Bitmap* source, BitmapData* sourceData, Bitmap* destination, Bitmap* mask = nullptr,
               bool applyMasked = false);
    Run& get__Run() const noexcept;
    /// The bitmap that changes: the destination, else the bitmap of the source.
    Bitmap* ChangedBitmap() const;
    /// Fails with `BitmapEmptyException`, with the name of the parameter.
    static void ThrowIfEmpty(Bitmap& bitmap, const char* name);

private:
    Bitmap* SourceBitmap() const;
    void TakeLocks();
    void ReleaseLocks(bool attach);

    struct Impl;
    std::unique_ptr<Impl> m_pImpl;
};

} // namespace Corvane::Rasterloom::Transforms
