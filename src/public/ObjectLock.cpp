#include "ObjectLock.h"

#include <Corvane/Rasterloom/Exceptions.h>

#include <chrono>

namespace Corvane::Rasterloom {

std::int32_t CurrentThreadId() noexcept {
    static std::atomic<std::uint32_t> s_uintNext{0};
    thread_local const auto s_intId = static_cast<std::int32_t>(s_uintNext++ & 0x7FFFFFFFU);
    return s_intId;
}

void ObjectLock::Lock() {
    std::unique_lock guard(m_mutex);
    if (m_bClosed) {
        return;
    }
    if (m_intLockedThreadId == CurrentThreadId()) {
        throw ObjectLockedException();
    }
    const auto mayGo = [this] { return m_bFree || m_bClosed; };
    const std::int32_t timeout = m_intTimeout;
    if (timeout < 0) {
        m_changed.wait(guard, mayGo);
    } else if (!m_changed.wait_for(guard, std::chrono::milliseconds(timeout), mayGo)) {
        throw TimeoutException();
    }
    if (m_bClosed) {
        return;
    }
    m_bFree = false;
    m_intLockedThreadId = CurrentThreadId();
}

void ObjectLock::Unlock() noexcept {
    {
        const std::lock_guard guard(m_mutex);
        if (m_bClosed) {
            return;
        }
        m_intLockedThreadId = -1;
        m_bFree = true;
    }
    m_changed.notify_one();
}

void ObjectLock::Close() noexcept {
    {
        const std::lock_guard guard(m_mutex);
        m_bClosed = true;
    }
    m_changed.notify_all();
}

void ObjectLock::EndDispose() noexcept {
    // Before the lock is closed: who comes back from a wait without the lock must see that the object is gone.
    m_bDisposed = true;
    Close();
}

} // namespace Corvane::Rasterloom
