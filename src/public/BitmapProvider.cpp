#include <Corvane/Rasterloom/BitmapProvider.h>

#include "BitmapLink.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Transforms/BitmapTransform.h>

namespace Corvane::Rasterloom {

BitmapProvider::BitmapProvider(std::shared_ptr<BitmapLink> link) : m_pLink(std::move(link)) {}

Bitmap& BitmapProvider::get__Bitmap() const {
    Bitmap* const bitmap = m_pLink->Get();
    if (bitmap == nullptr || get__IsDisposed()) {
        throw Host::ObjectDisposedException("Bitmap");
    }
    return *bitmap;
}

std::int32_t BitmapProvider::get_Timeout() const noexcept {
    const Bitmap* const bitmap = m_pLink->Get();
    return bitmap != nullptr ? bitmap->get_Timeout() : LockableObject::get_Timeout();
}

void BitmapProvider::set_Timeout(std::int32_t milliseconds) noexcept {
    LockableObject::set_Timeout(milliseconds);
    if (Bitmap* const bitmap = m_pLink->Get()) {
        bitmap->set_Timeout(milliseconds);
    }
}

void BitmapProvider::Lock() {
    LockableObject::set_Timeout(get_Timeout());
    LockableObject::Lock();
}

Bitmap& BitmapProvider::ValidateRuntimeData() const {
    Bitmap& bitmap = get__Bitmap();
    if (bitmap.get_IsEmpty()) {
        throw BitmapEmptyException();
    }
    bitmap.set__Aborted(false);
    return bitmap;
}

void BitmapProvider::Apply(Transforms::BitmapTransform& transform) const {
    Bitmap& bitmap = get__Bitmap();
    transform.set_Unit(bitmap.get_Unit());
    transform.set_Timeout(bitmap.get_Timeout());
    const auto forward = transform.Progress.Subscribe(
        [&](ProgressEventArgs& args) { bitmap._OnProgress(&transform, args); });
    transform.ApplyTransform(bitmap);
}

} // namespace Corvane::Rasterloom
