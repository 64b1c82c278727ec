#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/ILockable.h>

#include <atomic>
#include <cstdint>
#include <memory>

namespace Corvane::Rasterloom {

class ObjectLock;

/// The base of objects with state: a lock with a time limit, and a `Dispose` at a moment that the host chooses.
///
/// For those who derive: do the work of disposal in `Dispose(bool)`, calling the base's at the end on every path, and
/// write `using LockableObject::Dispose;` beside it, or the public form is hidden. A destructor of this base could not
/// reach that override any more, so each class that overrides `Dispose(bool)` calls `DisposeFinally()` first in its own
/// destructor.
class RASTERLOOM_API LockableObject : public ILockable {
public:
    LockableObject(const LockableObject&) = delete;
    LockableObject& operator=(const LockableObject&) = delete;
    ~LockableObject() override;

    void Lock() override;
    void Unlock() noexcept override;
    bool get_Locked() const noexcept override;
    std::int32_t get_Timeout() const noexcept override;
    void set_Timeout(std::int32_t milliseconds) noexcept override;

    /// False turns `Lock` and `Unlock` into nothing, for a host that sees to it itself that one thread at a time comes
    /// in. True at first. To be set while nobody holds the lock.
    bool get_LockingEnabled() const noexcept { return m_bLockingEnabled; }
    void set_LockingEnabled(bool value) noexcept { m_bLockingEnabled = value; }

    /// Releases what the object holds; a second call does nothing. Waits for the lock and fails as `Lock` does. Threads
    /// that wait for the lock meanwhile come back without it; their calls then fail with
    /// `Host::ObjectDisposedException`, and so do all later ones.
    void Dispose();
    /// Neither this nor the body takes the lock.
    bool get_IsDisposed() const noexcept { return get__IsDisposed(); }
    bool get__IsDisposed() const noexcept;

protected:
    LockableObject();

    /// Releases what the class holds. `disposing` tells that other public objects may still be touched.
    virtual void Dispose(bool disposing);
    /// `Dispose` for destructors: a failure is swallowed, and when the lock cannot be had (this thread holds it, or the
    /// time is out) disposal goes on without it.
    void DisposeFinally() noexcept;

private:
    std::shared_ptr<ObjectLock> m_hSemaphore;
    std::atomic<bool> m_bLockingEnabled{true};
};

} // namespace Corvane::Rasterloom
