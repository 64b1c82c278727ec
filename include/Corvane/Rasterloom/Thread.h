#pragma once

#include <Corvane/Rasterloom/ActivityStatus.h>
#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/ISyncEvents.h>
#include <Corvane/Rasterloom/SynchronizationMode.h>
#include <Corvane/Rasterloom/ThreadPriority.h>

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>

namespace Corvane::Rasterloom {

class InternalEvents;
class ThreadMachine;

/// Runs a body of work once per `Start`: on the caller's thread, on a worker with the events on that worker, or on a
/// worker with the events on the thread of a message loop. All members may be called from any thread unless they say
/// otherwise.
class RASTERLOOM_API Thread : public ISyncEvents {
public:
    /// The body; none must be given before the first start.
    explicit Thread(std::function<void()> threadStart = {});
    /// A body under way is told to abort and waited for, also when it is paused. In the mode `AsyncViaMessageLoop` the
    /// events of its end are raised here.
    ~Thread() override;

    /// Runs the body, in the mode `Sync` to its end. Failures of the body stay in `get_Exception`.
    ///
    /// Fails with `Exception` when there is no body, with `OperationNotCompletedException` during a run, with
    /// `MessageLoopNotPresentedException` in the mode `AsyncViaMessageLoop` on a thread without a loop, with what a
    /// handler of `Starting` or, in the mode `Sync`, of `Stopped` throws.
    void Start();
    /// Holds the worker at its next step. Fails with `Exception` in the mode `Async` on the worker, and in the mode
    /// `AsyncViaMessageLoop` on a thread without a loop.
    void Pause();
    /// Lets a held worker go on. Fails with `Exception` in the mode `AsyncViaMessageLoop` on a thread without a loop.
    void Continue();
    /// Asks the body to stop at its next step, with `AbortedException`; a paused one goes on to do so. Then waits as
    /// `WaitForCompletion` does. With no run under way the next one ends before it begins.
    void Abort();
    /// Waits for the end of the run, the handlers of `Stopped` included. On a thread with a message loop the loop is
    /// pumped meanwhile. Nothing in the mode `Sync`, where `Start` returns at the end; nothing in the body and in
    /// handlers, where the wait would never end.
    void WaitForCompletion();
    /// Aborts and waits as the destructor does; every later `Start` fails with `Host::ObjectDisposedException`. Fails
    /// with `OperationNotCompletedException` in the body and in handlers.
    void Dispose();

    /// `Sync` at first.
    SynchronizationMode get_SynchronizationMode() const noexcept;
    /// Fails with `OperationNotCompletedException` during a run and with `Host::ArgumentException` for no mode.
    void set_SynchronizationMode(SynchronizationMode value);
    /// What the worker is doing.
    ActivityStatus get_ActivityStatus() const noexcept;
    /// True when no run is under way.
    bool get_Completed() const noexcept;
    /// The failure of the last run, or null. One of a handler goes before one of the body. A body that throws what is
    /// no `std::exception` counts as a success.
    std::exception_ptr get_Exception() const;
    /// The body, for the next run.
    std::function<void()> get_ThreadStart() const;
    void set_ThreadStart(std::function<void()> value);
    /// Of the workers of the coming runs. Fails with `Host::ArgumentException` for no priority.
    ThreadPriority get_Priority() const noexcept;
    void set_Priority(ThreadPriority value);
    /// Milliseconds between two rounds of events in the mode `AsyncViaMessageLoop`: 50 at first, at least 10.
    std::int32_t get_PollingInterval() const noexcept;
    void set_PollingInterval(std::int32_t milliseconds) noexcept;

    /// For a body that counts its own steps: declares `count` more of them, and the milliseconds that they may take (0
    /// and below mean no limit). Only in the body.
    void _ResetProgress(std::int32_t count, std::int32_t timeout = -1);
    /// Steps done. Fails with `AbortedException` and `TimeoutException`; waits while the run is paused. Only in the
    /// body.
    void _ReportProgress(std::int32_t step);

    /// Internal: the counter that the engine reports to, owned by this object and kept beyond the run until
    /// `ReturnEvents`.
    InternalEvents* GetEvents();
    /// Internal: ends what `GetEvents` has begun.
    void ReturnEvents();

private:
    std::shared_ptr<ThreadMachine> m_pMachine;
};

} // namespace Corvane::Rasterloom
