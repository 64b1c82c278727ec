#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/ILockable.h>
#include <Corvane/Rasterloom/ISyncEvents.h>
#include <Corvane/Rasterloom/SynchronizationMode.h>
#include <Corvane/Rasterloom/ThreadPriority.h>

namespace Corvane::Rasterloom {

/// An operation object: events, a lock, and control over the run.
class RASTERLOOM_API ISyncHandler : public ISyncEvents, public ILockable {
public:
    ~ISyncHandler() override;

    /// True when no run is under way.
    virtual bool get_Completed() const noexcept = 0;
    /// Of the worker. A value without a name fails with `Host::ArgumentException`.
    virtual ThreadPriority get_Priority() const noexcept = 0;
    virtual void set_Priority(ThreadPriority value) = 0;
    /// Where the operation runs; `Sync` at first.
    virtual SynchronizationMode get_SynchronizationMode() const noexcept = 0;
    virtual void set_SynchronizationMode(SynchronizationMode value) = 0;
    /// Whether the call that runs the operation fails with the failure of the run; true at first. The arguments of
    /// `Stopping` and `Stopped` tell the failure in either case.
    virtual bool get_ExceptionThrowEnabled() const noexcept = 0;
    virtual void set_ExceptionThrowEnabled(bool value) noexcept = 0;
    /// As in `Thread`.
    virtual void Abort() = 0;
    /// As in `Thread`.
    virtual void Pause() = 0;
    /// As in `Thread`.
    virtual void Continue() = 0;
    /// As in `Thread`.
    virtual void WaitForCompletion() = 0;

protected:
    ISyncHandler();
};

} // namespace Corvane::Rasterloom
