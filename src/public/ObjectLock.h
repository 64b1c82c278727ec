#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace Corvane::Rasterloom {

/// A number of the calling thread, 0 or above, unique among all threads that are alive.
std::int32_t CurrentThreadId() noexcept;

/// The lock of an object: a binary semaphore with a time limit that any thread may release, and the once-only disposal.
/// Kept by shared pointer, so that a thread that waits here while the object dies wakes up on memory that still exists.
class ObjectLock {
public:
    /// Fails with `ObjectLockedException` and `TimeoutException`. Returns without the lock once it is closed.
    void Lock();
    void Unlock() noexcept;
    bool get_Locked() const noexcept { return m_intLockedThreadId > -1; }
    std::int32_t get_Timeout() const noexcept { return m_intTimeout; }
    void set_Timeout(std::int32_t milliseconds) noexcept { m_intTimeout = milliseconds; }
    /// From now on `Lock` and `Unlock` do nothing; who waits comes back.
    void Close() noexcept;

    bool get_IsDisposed() const noexcept { return m_bDisposed; }
    /// True for the first caller alone, who must call `EndDispose`.
    bool BeginDispose() noexcept { return !m_bDisposing.exchange(true); }
    void EndDispose() noexcept;

    /// Runs `lock`, then once and for all `body`; the object counts as disposed whatever they throw in `body`.
    template <class LockStep, class Body>
    void Dispose(LockStep&& lock, Body&& body) {
        if (m_bDisposing) {
            return;
        }
        lock();
        RunBody(body);
    }
    /// For destructors: `dispose`, and where it failed before it ran the body, the body alone.
    template <class DisposeStep, class Body>
    void DisposeFinally(DisposeStep&& dispose, Body&& body) noexcept {
        try {
            dispose();
            return;
        } catch (...) {
            // The lock cannot be had, or the body has failed; both are dealt with below.
        }
        try {
            RunBody(body);
        } catch (...) {
            // A destructor has nobody to tell.
        }
    }

private:
    template <class Body>
    void RunBody(Body& body) {
        if (!BeginDispose()) {
            return;
        }
        struct End {
            ObjectLock& Owner;
            ~End() { Owner.EndDispose(); }
        } const end{*this};
        body();
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_bFree = true;
    bool m_bClosed = false;
    std::atomic<std::int32_t> m_intLockedThreadId{-1};
    std::atomic<std::int32_t> m_intTimeout{-1};
    std::atomic<bool> m_bDisposing{false};
    std::atomic<bool> m_bDisposed{false};
};

} // namespace Corvane::Rasterloom
