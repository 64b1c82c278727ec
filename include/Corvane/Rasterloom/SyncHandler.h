#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/Host/Event.h>
#include <Corvane/Rasterloom/ISyncHandler.h>
#include <Corvane/Rasterloom/Thread.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <exception>
#include <memory>

namespace ImagingFramework {
class IInternalEventsHost;
}

namespace Corvane::Rasterloom {

class ObjectLock;

/// The base of operations (transforms, readers, writers): one body of work, run through a `Thread`, with a lock of its
/// own.
///
/// `Progress` goes from 0 to 200, whatever the operation counts. The events are those of `ISyncEvents`; while an
/// operation holds the object's lock, members that take it fail in handlers with `ObjectLockedException`, and `Abort`,
/// `Pause`, `Continue`, `Completed` and the timeout, which do not take it, may be called.
///
/// For those who derive: override `ThreadProc` and call the base's first, call `StartThread` to run it, and add the
/// last touches in `OnThreadStopping`, which also runs after a failure. Disposal is as in `LockableObject`:
/// `Dispose(bool)` with a `using SyncHandler::Dispose;` beside it, and `DisposeFinally()` first in the destructor of
/// every class that overrides `ThreadProc`, one of the `OnThread...` members or `Dispose(bool)`: it ends a run before
/// its overrides are gone.
class RASTERLOOM_API SyncHandler : public ISyncHandler {
public:
    ~SyncHandler() override;

    void Lock() override;
    void Unlock() noexcept override;
    bool get_Locked() const noexcept override;
    std::int32_t get_Timeout() const noexcept override;
    void set_Timeout(std::int32_t milliseconds) noexcept override;

    bool get_Completed() const noexcept override;
    ThreadPriority get_Priority() const noexcept override { return m_enPriority; }
    void set_Priority(ThreadPriority value) override;
    SynchronizationMode get_SynchronizationMode() const noexcept override { return m_enSynchronizationMode; }
    /// Fails with `Host::NotImplementedException` for all but `Sync`: the other modes are reached through `Thread`
    /// itself.
    void set_SynchronizationMode(SynchronizationMode value) override;
    bool get_ExceptionThrowEnabled() const noexcept override { return m_bThrowException; }
    void set_ExceptionThrowEnabled(bool value) noexcept override { m_bThrowException = value; }
    void Abort() override;
    void Pause() override;
    void Continue() override;
    void WaitForCompletion() override;

    /// Ends a run as the destructor of `Thread` does, then disposes as `LockableObject` does. Fails with
    /// `OperationNotCompletedException` in handlers and in the body.
    void Dispose();
    /// Whether `Dispose` was called; takes no lock.
    bool get_IsDisposed() const noexcept { return get__IsDisposed(); }
    bool get__IsDisposed() const noexcept;

    /// Internal: gives an engine operation the timeout and the counter of this object, and takes them away again. Fail
    /// with `Host::ArgumentNullException` for a null `host`.
    virtual void ExportEventsHostSettings(ImagingFramework::IInternalEventsHost* host);
    virtual void ResetEventsHostSettings(ImagingFramework::IInternalEventsHost* host);

protected:
    SyncHandler();

    /// Releases what the class holds, as in `LockableObject`.
    virtual void Dispose(bool disposing);
    /// As in `LockableObject`.
    void DisposeFinally() noexcept;

    /// Runs `ThreadProc` in the mode that is set. Fails as `Thread::Start` and, in the mode `Sync`, with the failure of
    /// the run unless `ExceptionThrowEnabled` is off.
    void StartThread();
    /// The body. Engine failures that leave it become public ones.
    virtual void ThreadProc();
    /// Called at the start of the body, to clear what the last run left.
    virtual void _ResetThreadRuntimeData() {}

    /// Raises `Progress`. This and the next seven raise the event of the same meaning; overrides call the base's.
    /// `exception` is null for success.
    virtual void OnThreadProgress(std::int32_t current, std::int32_t maximum);
    /// Raises `Aborted`.
    virtual void OnThreadAbort();
    /// Raises `Paused`.
    virtual void OnThreadPause();
    /// Raises `Continued`.
    virtual void OnThreadContinue();
    /// Raises `Starting`.
    virtual void OnThreadStarting();
    /// Raises `Started`.
    virtual void OnThreadStarted();
    /// Raises `Stopping`.
    virtual void OnThreadStopping(const std::exception_ptr& exception);
    /// Raises `Stopped`.
    virtual void OnThreadStopped(const std::exception_ptr& exception);

    /// For a body that counts its own steps, in place of an engine operation; see `Thread`. The timeout is the
    /// object's.
    void _ResetProgress(std::int32_t count);
    void _ReportProgress(std::int32_t step);

    /// What the body runs in.
    Thread& GetThread() noexcept { return *m_pThread; }

    /// One run may hold several steps of equal weight: how many, and the one under way, from 0.
    std::int32_t m_intOperationCount = 1;
    /// See `m_intOperationCount`.
    std::int32_t m_intCurrentOperationNumber = 0;

private:
    void OnThreadProgressHandler(const ProgressEventArgs& args);
    void FinishRun(const std::exception_ptr& exception);

    std::shared_ptr<ObjectLock> m_hSemaphore;
    std::atomic<bool> m_bThrowException{true};
    std::atomic<ThreadPriority> m_enPriority{ThreadPriority::Normal};
    std::atomic<SynchronizationMode> m_enSynchronizationMode{SynchronizationMode::Sync};
    std::unique_ptr<Thread> m_pThread;
    std::array<Host::Subscription, 8> m_subscriptions;
};

} // namespace Corvane::Rasterloom
