#pragma once

#include <Corvane/Rasterloom/ILockable.h>

namespace Corvane::Rasterloom {

/// Holds the lock of an object for a scope, the way public members do around their bodies.
class ObjectGuard {
public:
    explicit ObjectGuard(ILockable& object) : m_pObject(&object) { object.Lock(); }
    ~ObjectGuard() { Unlock(); }
    ObjectGuard(const ObjectGuard&) = delete;
    ObjectGuard& operator=(const ObjectGuard&) = delete;

    /// Gives the lock back before the end of the scope.
    void Unlock() noexcept {
        if (m_pObject != nullptr) {
            m_pObject->Unlock();
            m_pObject = nullptr;
        }
    }
    /// Leaves the lock taken; someone else gives it back.
    void Release() noexcept { m_pObject = nullptr; }

private:
    ILockable* m_pObject;
};

} // namespace Corvane::Rasterloom
