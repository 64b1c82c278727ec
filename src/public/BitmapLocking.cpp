// The part of Bitmap that hands out views and touches single pixels.

#include "BitmapImpl.h"

#include "CallEngine.h"
#include "ObjectGuard.h"
#include "PixelAccess.h"

#include <Corvane/Rasterloom/Exceptions.h>

#include <algorithm>

namespace Corvane::Rasterloom {

namespace {

void CheckPosition(const char* name, std::int32_t position, std::int32_t size) {
    if (position < 0 || position >= size) {
        throw Host::ArgumentOutOfRangeException(name);
    }
}

void CheckSize(const char* name, std::int32_t size) {
    if (size <= 0) {
        throw Host::ArgumentOutOfRangeException(name);
    }
}

std::shared_ptr<BitmapData> LockUnits(Bitmap& bitmap, float left, float top, float width, float height) {
    return bitmap._LockBits(bitmap._HorizontalUnitsToPixels(left), bitmap._VerticalUnitsToPixels(top),
                            bitmap._HorizontalUnitsToPixels(width), bitmap._VerticalUnitsToPixels(height));
}

} // namespace

std::shared_ptr<BitmapData> Bitmap::_LockBits(std::int32_t left, std::int32_t top, std::int32_t width,
                                              std::int32_t height) {
    CheckNotDisposed();
    CheckBitsNotLocked();
    ThrowIfEmpty();
    const ImagingFramework::BitmapData& raster = *m_pImpl->m_pInternalBitmapData;
    CheckPosition("left", left, static_cast<std::int32_t>(raster.GetWidth()));
    CheckPosition("top", top, static_cast<std::int32_t>(raster.GetHeight()));
    CheckSize("width", width);
    CheckSize("height", height);
    std::shared_ptr<BitmapData> view(new BitmapData(m_pImpl->m_pLink, raster, left, top, width, height));
    m_pImpl->m_pLockedBitmapData = view;
    m_pImpl->m_bBitsLocked = true;
    return view;
}

std::shared_ptr<BitmapData> Bitmap::LockBits() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    const ImagingFramework::BitmapData& raster = *m_pImpl->m_pInternalBitmapData;
    return _LockBits(0, 0, static_cast<std::int32_t>(raster.GetWidth()), static_cast<std::int32_t>(raster.GetHeight()));
}

std::shared_ptr<BitmapData> Bitmap::LockBits(float left, float top, float width, float height) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return LockUnits(*this, left, top, width, height);
}

std::shared_ptr<BitmapData> Bitmap::LockBits(std::int32_t left, std::int32_t top, std::int32_t width,
                                             std::int32_t height) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    // Whole pixels need no detour through floats, which hold them exactly only up to 2^24.
    if (get__Unit() == Unit::Pixel) {
        return _LockBits(left, top, width, height);
    }
    return LockUnits(*this, static_cast<float>(left), static_cast<float>(top), static_cast<float>(width),
                     static_cast<float>(height));
}

std::shared_ptr<BitmapData> Bitmap::LockBits(const Host::Rectangle& rectangle) {
    return LockBits(rectangle.Left, rectangle.Top, rectangle.Width, rectangle.Height);
}

std::shared_ptr<BitmapData> Bitmap::LockBits(const Host::RectangleF& rectangle) {
    return LockBits(rectangle.Left, rectangle.Top, rectangle.Width, rectangle.Height);
}

void Bitmap::UnlockBits(const std::shared_ptr<BitmapData>& bitmapData) {
    {
        const ObjectGuard guard(*this);
        CheckNotDisposed();
        if (!m_pImpl->m_bBitsLocked) {
            return;
        }
        if (!bitmapData) {
            throw Host::ArgumentNullException("bitmapData");
        }
        if (m_pImpl->m_pLockedBitmapData.lock() != bitmapData) {
            throw Host::ArgumentException("The specified bitmap data has not been created from this bitmap.",
                                          "bitmapData");
        }
    }
    // Outside the guard: the view's lock comes first.
    bitmapData->Dispose();
}

void Bitmap::_UnlockBits() {
    if (const std::shared_ptr<BitmapData> view = m_pImpl->m_pLockedBitmapData.lock()) {
        view->_DisposeWithoutBitmap();
    }
}

void Bitmap::_ForgetView() noexcept {
    m_pImpl->m_pLockedBitmapData.reset();
    m_pImpl->m_bBitsLocked = false;
}

bool Bitmap::get_BitsLocked() { return m_pImpl->m_bBitsLocked; }

Color Bitmap::GetPixel(std::int32_t x, std::int32_t y) {
    const ObjectGuard guard(*this);
    ImagingFramework::BitmapData& raster = get__InternalBitmapData();
    ThrowIfEmpty();
    return PixelAccess(raster).GetPixel(x, y);
}

void Bitmap::SetPixel(std::int32_t x, std::int32_t y, const Color& color) {
    const ObjectGuard guard(*this);
    ImagingFramework::BitmapData& raster = get__InternalBitmapData();
    ThrowIfEmpty();
    PixelAccess(raster).SetPixel(x, y, color);
}

PixelArray Bitmap::Export() {
    const ObjectGuard guard(*this);
    ImagingFramework::BitmapData& raster = get__InternalBitmapData();
    ThrowIfEmpty();
    return PixelAccess(raster).Export(*this);
}

void Bitmap::Import(const PixelArray& array) {
    const ObjectGuard guard(*this);
    _Import(array);
}

void Bitmap::_Import(const PixelArray& array) {
    ImagingFramework::BitmapData& raster = get__InternalBitmapData();
    ThrowIfEmpty();
    PixelAccess(raster).Import(array, *this);
}

} // namespace Corvane::Rasterloom
