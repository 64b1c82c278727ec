#pragma once

#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/ILockable.h>

#include <functional>

namespace Corvane::Rasterloom {

/// Holds the locks of two objects, taken by address, so that two threads that name them in different orders cannot wait
/// for each other. The same object twice fails with `ObjectLockedException`.
class TwoObjectGuard {
public:
    TwoObjectGuard(ILockable& a, ILockable& b)
        : m_first(std::less<>()(&a, &b) ? a : b), m_second(std::less<>()(&a, &b) ? b : a) {
        if (&a == &b) {
            throw ObjectLockedException();
        }
        m_first.Lock();
        try {
            m_second.Lock();
        } catch (...) {
            m_first.Unlock();
            throw;
        }
    }
    ~TwoObjectGuard() {
        m_second.Unlock();
        m_first.Unlock();
    }
    TwoObjectGuard(const TwoObjectGuard&) = delete;
    TwoObjectGuard& operator=(const TwoObjectGuard&) = delete;

private:
    ILockable& m_first;
    ILockable& m_second;
};

} // namespace Corvane::Rasterloom
