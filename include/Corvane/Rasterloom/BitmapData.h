#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/LockableObject.h>
#include <Corvane/Rasterloom/PixelArray.h>
#include <Corvane/Rasterloom/PixelFormat.h>

#include <cstdint>
#include <memory>

namespace ImagingFramework {
class BitmapData;
}

namespace Corvane::Rasterloom {

class Bitmap;
class BitmapLink;

/// A view on a part of a bitmap's raster, made by `Bitmap::LockBits`: writing through it writes the bitmap. As long as
/// it lives, the bitmap's raster cannot be used otherwise. `Bitmap::UnlockBits`, `Dispose` and destruction end it
/// alike; so does the death of the bitmap. The view's memory stays valid until it is disposed.
///
/// Members lock the view and then the bitmap. After the end they fail with `Host::ObjectDisposedException`
/// ("BitmapData").
class RASTERLOOM_API BitmapData final : public LockableObject {
public:
    ~BitmapData() override;

    /// Position of the view in the bitmap, in pixels.
    std::int32_t get_Left();
    std::int32_t get_Top();
    /// Size in pixels.
    std::int32_t get_Width();
    std::int32_t get_Height();
    /// Bits of one pixel.
    std::int32_t get_BitsPerPixel();
    /// stride x height
    std::int64_t get_MemoryUsed();
    /// That of the bitmap.
    PixelFormat get_PixelFormat();
    /// The colour space of the pixel format.
    ColorSpace get_ColorSpace();
    /// Bytes from one scanline to the next: that of the bitmap, so more than a row of the view may need.
    std::int32_t get_Stride();
    /// The first scanline, top row first. Valid as long as the view.
    std::uint8_t* get_Scan0();
    /// The bitmap that the view shows.
    Bitmap& get_Bitmap();
    /// A black `Format8bppGrayScale` bitmap of the view's size.
    std::unique_ptr<Bitmap> GetEmptyMask();

    /// Positions outside fail with `Host::ArgumentOutOfRangeException` ("x", "y"), the packed 16-bit formats with
    /// `UnsupportedPixelFormatException`, an indexed raster without a palette with `Host::ArgumentException`
    /// ("bitmap").
    Color GetPixel(std::int32_t x, std::int32_t y);
    /// The colour is converted to the bitmap's colour space or to its nearest palette entry; alpha is dropped in a
    /// format without alpha. "No colour" fails with `Host::ArgumentNullException` ("color").
    void SetPixel(std::int32_t x, std::int32_t y, const Color& color);
    /// Raw samples `[x, y, channel]`, 0 to 255 or to 65535 in extended formats. Packed formats fail with
    /// `UnsupportedPixelFormatException`. Progress, `Abort` and `Timeout` of the bitmap work between rows.
    PixelArray Export();
    /// The same way back; the bitmap raises `Changing` and `Changed` with `ImportData`. An array of another shape fails
    /// with `Host::ArgumentException` ("array").
    void Import(const PixelArray& array);

    /// As `Bitmap::PreserveScaleFactor`.
    static void PreserveScaleFactor(std::int32_t sourceWidth, std::int32_t sourceHeight, std::int32_t* destinationWidth,
                                    std::int32_t* destinationHeight);

    /// Locks the view and then its bitmap.
    void Lock() override;
    void Unlock() noexcept override;

    /// @name Lock-free bodies and the seam to transforms
    /// @{
    void _LockWithoutBitmap() { LockableObject::Lock(); }
    void _UnlockWithoutBitmap() { LockableObject::Unlock(); }
    PixelArray _Export();
    void _Import(const PixelArray& array);
    /// Ends the view for a caller who holds the bitmap's lock.
    void _DisposeWithoutBitmap();
    /// `Dispose` for the destructor of the bitmap: goes on without a lock that cannot be had.
    void _DisposeQuietly() noexcept { DisposeFinally(); }
    /// The bitmap, null when it is gone.
    Bitmap* get__Bitmap() const;
    ImagingFramework::BitmapData& get__InternalBitmapData() const;
    /// @}

    using LockableObject::Dispose;

protected:
    void Dispose(bool disposing) override;

private:
    friend class Bitmap;
    struct Impl;

    BitmapData(std::shared_ptr<BitmapLink> link, const ImagingFramework::BitmapData& parent, std::int32_t left,
               std::int32_t top, std::int32_t width, std::int32_t height);

    /// The bitmap; fails with the disposed-object error when the view or the bitmap is at its end.
    Bitmap& RequireBitmap() const;
    template <class Read> auto ReadRaster(Read read);

    std::unique_ptr<Impl> m_pImpl;
};

} // namespace Corvane::Rasterloom
