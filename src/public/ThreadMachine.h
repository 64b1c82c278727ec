#pragma once

#include "InternalEvents.h"
#include "ManualResetEvent.h"
#include "ObjectLock.h"

#include <Corvane/Rasterloom/ActivityStatus.h>
#include <Corvane/Rasterloom/Host/MessageLoop.h>
#include <Corvane/Rasterloom/ISyncEvents.h>
#include <Corvane/Rasterloom/SynchronizationMode.h>
#include <Corvane/Rasterloom/ThreadPriority.h>

#include <atomic>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace Corvane::Rasterloom {

/// A recursive mutex that knows whether the calling thread holds it.
class ReentrantMutex {
public:
    void lock() {
        m_mutex.lock();
        m_intOwner = CurrentThreadId();
        ++m_intDepth;
    }
    void unlock() {
        if (--m_intDepth == 0) {
            m_intOwner = -1;
        }
        m_mutex.unlock();
    }
    bool IsHeldHere() const noexcept { return m_intOwner == CurrentThreadId(); }

private:
    std::recursive_mutex m_mutex;
    std::atomic<std::int32_t> m_intOwner{-1};
    int m_intDepth = 0;
};

/// The state machine behind `Thread`. It is kept alive by its worker as well as by its `Thread`, so that neither
/// touches freed memory whatever dies first.
///
/// All state is guarded by `m_hSynchronizer`, which is held while handlers run and never while the body runs. What is
/// read without it is atomic.
class ThreadMachine : public std::enable_shared_from_this<ThreadMachine> {
public:
    ThreadMachine(ISyncEvents& owner, std::function<void()> body) : m_pOwner(&owner), m_pThreadStart(std::move(body)) {}

    void Start();
    void Pause();
    void Continue();
    void Abort();
    void WaitForCompletion();
    /// Aborts a run and waits for it. Fails with `OperationNotCompletedException` in the body and in handlers.
    void Dispose();
    /// The same for the destructor of the owner, whose events are not touched after this. In the body and in handlers
    /// it does not wait; the worker then ends on its own.
    void Detach() noexcept;

    void ResetProgress(std::int32_t count, std::int32_t timeout);
    void ReportProgress(std::int32_t step);
    InternalEvents* GetEvents();
    void ReturnEvents();

    SynchronizationMode get_SynchronizationMode() const noexcept { return m_enSyncronizationMode; }
    void set_SynchronizationMode(SynchronizationMode value);
    ActivityStatus get_ActivityStatus() const noexcept { return m_enActivityStatus; }
    bool get_Completed() const noexcept { return !m_bRunning; }
    std::exception_ptr get_Exception() const;
    std::function<void()> get_ThreadStart() const;
    void set_ThreadStart(std::function<void()> value);
    ThreadPriority get_Priority() const noexcept { return m_enThreadPriority; }
    void set_Priority(ThreadPriority value);
    std::int32_t get_PollingInterval() const noexcept { return m_intPollingInterval; }
    void set_PollingInterval(std::int32_t milliseconds) noexcept;

private:
    using Guard = std::lock_guard<ReentrantMutex>;

    bool IsViaLoop() const noexcept { return m_enSyncronizationMode == SynchronizationMode::AsyncViaMessageLoop; }
    bool IsOnStackHere() const noexcept;
    bool IsStatusPending(ActivityStatus status) const noexcept {
        return m_bActivityStatusChanged && m_enActivityStatus == status;
    }

    // Start and end of a run
    void PrepareStart();
    void RaiseStarting();
    void StartWorker();
    void CancelStart() noexcept;
    void JoinWorkers();
    void EntryPoint();
    void RunBody();
    void RequestAbort();
    void WaitForEnd() noexcept;

    // Status and events
    void ChangeActivityStatus(ActivityStatus status);
    void TimerEventProcessor();
    void ProcessPendingStatus();
    void EndRun();
    void UpdateProgress();
    void SendProgress(std::int32_t current, std::int32_t maximum);
    /// False when a handler failed; its failure is stored.
    template <class Args>
    bool Fire(Host::Event<Args> ISyncEvents::*pEvent, Args args) noexcept;
    /// `mode` is that of the run; in `Sync` a handler's failure is raised.
    void FireStoppedEvent(SynchronizationMode mode);

    // The counter of the engine
    void GetEventsInternal();
    void ReturnEventsInternal() noexcept;
    static void ProgressHandler(InternalEvents& events);
    void OnEngineProgress(InternalEvents& events);

    // The message loop
    void RequireMessageLoop() const;
    void RunTimer();
    void StopTimer() noexcept;
    void WakeLoop() noexcept;
    void WaitForLoop();
    void PumpUntilEnd(Host::MessageLoop& loop);

    mutable ReentrantMutex m_hSynchronizer;
    ISyncEvents* m_pOwner;
    std::function<void()> m_pThreadStart;
    std::atomic<ActivityStatus> m_enActivityStatus{ActivityStatus::ThreadStopped};
    std::atomic<SynchronizationMode> m_enSyncronizationMode{SynchronizationMode::Sync};
    std::atomic<ThreadPriority> m_enThreadPriority{ThreadPriority::Normal};
    std::atomic<bool> m_bRunning{false};
    std::atomic<bool> m_bAborted{false};
    bool m_bPaused = false;
    bool m_bStarting = false;
    bool m_bActivityStatusChanged = false;
    bool m_bUserCreatedEvents = false;
    /// A worker exists whose end has not been told yet.
    bool m_bHasThread = false;
    bool m_bDisposed = false;
    /// The owner waits for the worker, so nobody may wait for the loop any more.
    std::atomic<bool> m_bClosing{false};
    std::atomic<std::int32_t> m_intPollingInterval{50};
    std::atomic<std::int32_t> m_intHandlerThreadId{-1};
    /// Counts the runs, by which the end of one knows whether a handler has begun the next.
    std::uint64_t m_uintRun = 0;

    std::thread m_pThread;
    /// Workers that started the next run themselves, and so could not be waited for then.
    std::vector<std::thread> m_retiredThreads;
    std::unique_ptr<InternalEvents> m_pInternalEvents;
    InternalEventsHost m_eventsHost;
    std::exception_ptr m_pThreadException;
    std::exception_ptr m_pEventHandlerException;
    std::optional<ProgressEventArgs> m_pLastProgressValues;

    ManualResetEvent m_hRunningEvent; ///< closed while a run is under way
    /// Holds the worker back until the loop has told what is pending.
    ManualResetEvent m_hChangedStatusSynchronizer;
    std::shared_ptr<Host::MessageLoop> m_pLoop;
    std::atomic<std::uint64_t> m_uintTimer{0};
    std::int32_t m_intNextProgressCheckPoint = 0; ///< of the worker alone
};

} // namespace Corvane::Rasterloom
