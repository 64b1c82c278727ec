#include <Corvane/Rasterloom/BitmapData.h>

#include "BitmapLink.h"
#include "CallEngine.h"
#include "Common/BitmapData.h"
#include "ObjectGuard.h"
#include "PixelAccess.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include <algorithm>
#include <utility>

namespace Corvane::Rasterloom {

/// The fields of a view.
struct BitmapData::Impl {
    std::shared_ptr<BitmapLink> m_pLink;
    ImagingFramework::BitmapData m_InternalBitmapData;
    std::int32_t m_intLeft = 0;
    std::int32_t m_intTop = 0;
    /// False while the bitmap's lock is already held by whoever ends the view.
    bool m_bLockBitmap = true;
    /// The bitmap whose lock goes with this view's; null when none was taken.
    Bitmap* m_pLockedBitmap = nullptr;
};

BitmapData::BitmapData(std::shared_ptr<BitmapLink> link, const ImagingFramework::BitmapData& parent, std::int32_t left,
                       std::int32_t top, std::int32_t width, std::int32_t height)
    : m_pImpl(std::make_unique<Impl>()) {
    m_pImpl->m_pLink = std::move(link);
    m_pImpl->m_intLeft = left;
    m_pImpl->m_intTop = top;
    const std::int32_t right = left + std::min(width, static_cast<std::int32_t>(parent.GetWidth()) - left);
    const std::int32_t bottom = top + std::min(height, static_cast<std::int32_t>(parent.GetHeight()) - top);
    CallEngine([&] { m_pImpl->m_InternalBitmapData.AttachPartially(parent, {left, top, right, bottom}); });
}

BitmapData::~BitmapData() { DisposeFinally(); }

void BitmapData::Lock() {
    LockableObject::Lock();
    // A thread that waited while the view ended comes back without the lock, and must not take the bitmap's.
    if (get__IsDisposed() || !m_pImpl->m_bLockBitmap) {
        return;
    }
    Bitmap* const bitmap = m_pImpl->m_pLink->Get();
    if (bitmap == nullptr) {
        return;
    }
    try {
        bitmap->Lock();
    } catch (...) {
        LockableObject::Unlock();
        throw;
    }
    m_pImpl->m_pLockedBitmap = bitmap;
}

void BitmapData::Unlock() noexcept {
    if (Bitmap* const bitmap = std::exchange(m_pImpl->m_pLockedBitmap, nullptr)) {
        bitmap->Unlock();
    }
    LockableObject::Unlock();
}

void BitmapData::Dispose(bool disposing) {
    if (Bitmap* const bitmap = m_pImpl->m_pLink->Get()) {
        bitmap->_ForgetView();
    }
    m_pImpl->m_InternalBitmapData.Empty();
    // The view's own lock goes away with it; the bitmap's must not stay behind.
    if (Bitmap* const locked = std::exchange(m_pImpl->m_pLockedBitmap, nullptr)) {
        locked->Unlock();
    }
    LockableObject::Dispose(disposing);
}

void BitmapData::_DisposeWithoutBitmap() {
    m_pImpl->m_bLockBitmap = false;
    Dispose();
}

Bitmap& BitmapData::RequireBitmap() const {
    Bitmap* const bitmap = get__Bitmap();
    if (get__IsDisposed() || bitmap == nullptr) {
        throw Host::ObjectDisposedException("BitmapData");
    }
    return *bitmap;
}

Bitmap* BitmapData::get__Bitmap() const { return m_pImpl->m_pLink->Get(); }

ImagingFramework::BitmapData& BitmapData::get__InternalBitmapData() const {
    RequireBitmap();
    return m_pImpl->m_InternalBitmapData;
}

template <class Read> auto BitmapData::ReadRaster(Read read) {
    const ObjectGuard guard(*this);
    return read(get__InternalBitmapData());
}

std::int32_t BitmapData::get_Left() {
    return ReadRaster([this](const auto&) { return m_pImpl->m_intLeft; });
}

std::int32_t BitmapData::get_Top() {
    return ReadRaster([this](const auto&) { return m_pImpl->m_intTop; });
}

std::int32_t BitmapData::get_Width() {
    return ReadRaster([](const auto& raster) { return static_cast<std::int32_t>(raster.GetWidth()); });
}

std::int32_t BitmapData::get_Height() {
    return ReadRaster([](const auto& raster) { return static_cast<std::int32_t>(raster.GetHeight()); });
}

std::int32_t BitmapData::get_BitsPerPixel() {
    return ReadRaster(
        [](const auto& raster) { return static_cast<std::int32_t>(PixelFormatSize(raster.GetPixelFormat())); });
}

std::int64_t BitmapData::get_MemoryUsed() {
    return ReadRaster([](const auto& raster) { return std::int64_t{raster.GetStride()} * std::int64_t{raster.GetHeight()}; });
}

PixelFormat BitmapData::get_PixelFormat() {
    return ReadRaster([](const auto& raster) { return static_cast<PixelFormat>(raster.GetPixelFormat()); });
}

ColorSpace BitmapData::get_ColorSpace() {
    return ReadRaster([](const auto& raster) {
        return CallEngine([&] { return static_cast<ColorSpace>(PixelFormatColorSpace(raster.GetPixelFormat())); });
    });
}

std::int32_t BitmapData::get_Stride() {
    return ReadRaster([](const auto& raster) { return static_cast<std::int32_t>(raster.GetStride()); });
}

std::uint8_t* BitmapData::get_Scan0() {
    return ReadRaster([](const auto& raster) { return raster.GetPixelsRef(); });
}

Bitmap& BitmapData::get_Bitmap() {
    const ObjectGuard guard(*this);
    return RequireBitmap();
}

std::unique_ptr<Bitmap> BitmapData::GetEmptyMask() {
    return ReadRaster([](const auto& raster) {
        return std::make_unique<Bitmap>(static_cast<std::int32_t>(raster.GetWidth()),
                                        static_cast<std::int32_t>(raster.GetHeight()), PixelFormat::Format8bppGrayScale);
    });
}

Color BitmapData::GetPixel(std::int32_t x, std::int32_t y) {
    const ObjectGuard guard(*this);
    return PixelAccess(get__InternalBitmapData()).GetPixel(x, y);
}

void BitmapData::SetPixel(std::int32_t x, std::int32_t y, const Color& color) {
    const ObjectGuard guard(*this);
    PixelAccess(get__InternalBitmapData()).SetPixel(x, y, color);
}

PixelArray BitmapData::_Export() {
    return PixelAccess(get__InternalBitmapData()).Export(RequireBitmap());
}

PixelArray BitmapData::Export() {
    const ObjectGuard guard(*this);
    return _Export();
}

void BitmapData::_Import(const PixelArray& array) {
    PixelAccess(get__InternalBitmapData()).Import(array, RequireBitmap());
}

void BitmapData::Import(const PixelArray& array) {
    Bitmap& bitmap = RequireBitmap();
    bitmap._RaiseChangingEvent(BitmapChange::ImportData);
    {
        const ObjectGuard guard(*this);
        _Import(array);
    }
    bitmap._RaiseChangedEvent(BitmapChange::ImportData);
}

void BitmapData::PreserveScaleFactor(std::int32_t sourceWidth, std::int32_t sourceHeight,
                                     std::int32_t* destinationWidth, std::int32_t* destinationHeight) {
    Bitmap::PreserveScaleFactor(sourceWidth, sourceHeight, destinationWidth, destinationHeight);
}

} // namespace Corvane::Rasterloom
