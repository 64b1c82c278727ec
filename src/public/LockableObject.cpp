#include <Corvane/Rasterloom/LockableObject.h>
#include <Corvane/Rasterloom/RasterloomLibraryModule.h>

#include "ObjectLock.h"

namespace Corvane::Rasterloom {

ILockable::~ILockable() = default;

LockableObject::LockableObject() : m_hSemaphore(std::make_shared<ObjectLock>()) {
    RasterloomLibraryModule::_Start();
}

LockableObject::~LockableObject() {
    m_hSemaphore->Close();
}

void LockableObject::Lock() {
    if (m_bLockingEnabled) {
        const auto lock = m_hSemaphore;
        lock->Lock();
    }
}

void LockableObject::Unlock() noexcept {
    if (m_bLockingEnabled) {
        m_hSemaphore->Unlock();
    }
}

bool LockableObject::get_Locked() const noexcept {
    return m_hSemaphore->get_Locked();
}

std::int32_t LockableObject::get_Timeout() const noexcept {
    return m_hSemaphore->get_Timeout();
}

void LockableObject::set_Timeout(std::int32_t milliseconds) noexcept {
    m_hSemaphore->set_Timeout(milliseconds);
}

bool LockableObject::get__IsDisposed() const noexcept {
    return m_hSemaphore->get_IsDisposed();
}

void LockableObject::Dispose() {
    const auto lock = m_hSemaphore;
    lock->Dispose([this] { Lock(); }, [this] { Dispose(true); });
}

void LockableObject::Dispose(bool) {
    // The lock is closed by the frame around this, after all overrides, so that no waiter sees a half-disposed object.
}

void LockableObject::DisposeFinally() noexcept {
    m_hSemaphore->DisposeFinally([this] { Dispose(); }, [this] { Dispose(true); });
}

} // namespace Corvane::Rasterloom
