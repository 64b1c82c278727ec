#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstdint>

namespace Corvane::Rasterloom {

/// An object with a lock that any thread may release.
class RASTERLOOM_API ILockable {
public:
    virtual ~ILockable();

    /// Waits until the lock is free and takes it. Fails with `ObjectLockedException` when this very thread holds it
    /// (the lock is not recursive) and with `TimeoutException` after `Timeout`. Returns at once on a disposed object.
    virtual void Lock() = 0;
    /// Gives the lock back, whichever thread took it; nothing when it is free.
    virtual void Unlock() noexcept = 0;
    /// True while any thread holds the lock. An object that was disposed stays locked.
    virtual bool get_Locked() const noexcept = 0;
    /// Milliseconds that `Lock` waits at most: -1 (the default) for ever, 0 not at all. Operations take it for the time
    /// that they may run.
    virtual std::int32_t get_Timeout() const noexcept = 0;
    virtual void set_Timeout(std::int32_t milliseconds) noexcept = 0;
};

} // namespace Corvane::Rasterloom
