#include "ThreadMachine.h"

#include "CallEngine.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <utility>

// What a run tells: status changes, progress, and how both reach the thread of the events.

namespace Corvane::Rasterloom {

namespace {

constexpr std::int32_t UserProgressMaximum = 200;
/// How often in a run via a message loop the worker waits for the loop.
constexpr std::int32_t ProgressCheckPoints = 5;
constexpr std::chrono::milliseconds PumpPeriod(10);

} // namespace

// --- Status

void ThreadMachine::ChangeActivityStatus(ActivityStatus status) {
    const Guard guard(m_hSynchronizer);
    if (m_enActivityStatus == status) {
        return;
    }
    m_enActivityStatus = status;
    m_bActivityStatusChanged = true;
    if (status == ActivityStatus::ThreadRequestedToStart) {
        RunTimer();
        return;
    }
    if (status == ActivityStatus::ThreadStarted) {
        m_pThreadException = nullptr;
        m_pEventHandlerException = nullptr;
        m_pLastProgressValues.reset();
    }
    if (!IsViaLoop()) {
        TimerEventProcessor();
        return;
    }
    m_hChangedStatusSynchronizer.Reset();
    if (status == ActivityStatus::ThreadPaused || status == ActivityStatus::ThreadContinued) {
        TimerEventProcessor();
    } else {
        WakeLoop();
    }
}

/// Tells a change that the loop has not come to yet, before the next one takes its place.
void ThreadMachine::ProcessPendingStatus() {
    if (IsViaLoop() && m_bActivityStatusChanged && m_enActivityStatus != ActivityStatus::ThreadRequestedToStart) {
        TimerEventProcessor();
    }
}

void ThreadMachine::TimerEventProcessor() {
    const Guard guard(m_hSynchronizer);
    if (IsStatusPending(ActivityStatus::ThreadStarted)) {
        m_bActivityStatusChanged = false;
        Fire(&ISyncEvents::Started, EventArgs());
    }
    const ActivityStatus status = m_enActivityStatus;
    if (m_bRunning && !m_bAborted && !m_bPaused && status != ActivityStatus::ThreadRequestedToStart &&
        status != ActivityStatus::ThreadPaused && !IsStatusPending(ActivityStatus::ThreadContinued)) {
        UpdateProgress();
    }
    // The status anew: a handler may have changed it, and has then told the change itself.
    if (m_bActivityStatusChanged) {
        m_bActivityStatusChanged = false;
        switch (m_enActivityStatus.load()) {
        case ActivityStatus::ThreadStopped:
            m_bHasThread = false;
            Fire(&ISyncEvents::Stopping, ErrorEventArgs(get_Exception()));
            EndRun();
            return;
        case ActivityStatus::ThreadPaused:
            Fire(&ISyncEvents::Paused, EventArgs());
            break;
        case ActivityStatus::ThreadContinued:
            Fire(&ISyncEvents::Continued, EventArgs());
            break;
        default:
            break;
        }
    }
    if (IsViaLoop()) {
        m_hChangedStatusSynchronizer.Set();
    }
}

void ThreadMachine::EndRun() {
    const std::uint64_t run = m_uintRun;
    // That of the run: from here on a handler may set the mode of the next one.
    const SynchronizationMode mode = m_enSyncronizationMode;
    m_bRunning = false;
    m_hRunningEvent.Set();
    if (m_bAborted) {
        Fire(&ISyncEvents::Aborted, EventArgs());
        m_bAborted = false;
    }
    struct Finish {
        ThreadMachine& Machine;
        std::uint64_t Run;
        ~Finish() {
            if (Machine.m_uintRun != Run) {
                return; // a handler of `Stopped` has begun the next run, which now owns all of this
            }
            Machine.m_intHandlerThreadId = -1;
            if (!Machine.m_bUserCreatedEvents) {
                Machine.ReturnEventsInternal();
            }
            Machine.m_hChangedStatusSynchronizer.Set();
            Machine.StopTimer();
        }
    } const finish{*this, run};
    FireStoppedEvent(mode);
}

// --- Events

template <class Args>
bool ThreadMachine::Fire(Host::Event<Args> ISyncEvents::*pEvent, Args args) noexcept {
    if (m_pOwner == nullptr) {
        return true;
    }
    try {
        (m_pOwner->*pEvent).Raise(args);
    } catch (const std::exception&) {
        m_pEventHandlerException = std::current_exception();
        return false;
    } catch (...) {
        // Dropped on purpose, like the same from a body.
    }
    return true;
}

void ThreadMachine::FireStoppedEvent(SynchronizationMode mode) {
    if (!Fire(&ISyncEvents::Stopped, ErrorEventArgs(get_Exception())) && mode == SynchronizationMode::Sync) {
        // The one failure of a handler that has a caller to go to.
        std::rethrow_exception(m_pEventHandlerException);
    }
}

// --- Progress

void ThreadMachine::UpdateProgress() {
    const Guard guard(m_hSynchronizer);
    if (!m_pInternalEvents || get_Exception()) {
        return;
    }
    bool sent = false;
    if (!m_pLastProgressValues) {
        SendProgress(0, UserProgressMaximum);
        sent = true;
    }
    if (IsStatusPending(ActivityStatus::ThreadStopped)) {
        if (m_pLastProgressValues->get_Current() < UserProgressMaximum && !get_Exception()) {
            SendProgress(UserProgressMaximum, UserProgressMaximum);
        }
        return;
    }
    if (!sent && m_pInternalEvents->ResetProgressChanged()) {
        std::int32_t current = 0;
        m_pInternalEvents->GetProgressCurValue(&current);
        if (m_pLastProgressValues->get_Current() < current) {
            SendProgress(std::clamp(current, 0, UserProgressMaximum), UserProgressMaximum);
        }
    }
}

void ThreadMachine::SendProgress(std::int32_t current, std::int32_t maximum) {
    m_pLastProgressValues.emplace(current, maximum);
    Fire(&ISyncEvents::Progress, ProgressEventArgs(current, maximum));
}

void ThreadMachine::ProgressHandler(InternalEvents& events) {
    static_cast<ThreadMachine*>(events.GetUserValueRef())->OnEngineProgress(events);
}

void ThreadMachine::OnEngineProgress(InternalEvents& events) {
    if (get_Exception()) {
        const Guard guard(m_hSynchronizer);
        RequestAbort(); // a handler has failed
    } else if (m_bAborted) {
        // Asked for before the work began: its `ResetProgress` has cleared the flag, so here it is again.
        events.Abort();
    }
    if (!IsViaLoop()) {
        if (m_enActivityStatus != ActivityStatus::ThreadPaused) {
            UpdateProgress();
        }
        return;
    }
    std::int32_t current = 0;
    events.GetProgressCurValue(&current);
    if (current >= m_intNextProgressCheckPoint) {
        // The worker stops here until the loop has caught up, so that it cannot run far ahead of what the user sees.
        m_hChangedStatusSynchronizer.Reset();
        m_intNextProgressCheckPoint += UserProgressMaximum / ProgressCheckPoints;
        WakeLoop();
    }
    WaitForLoop();
}

// --- The counter

void ThreadMachine::GetEventsInternal() {
    if (m_pInternalEvents) {
        return;
    }
    try {
        m_pInternalEvents = std::make_unique<InternalEvents>(&ThreadMachine::ProgressHandler, this);
    } catch (const std::bad_alloc&) {
        throw UnexpectedException("Unable to commit memory.");
    }
    m_pInternalEvents->SetUserProgressMinValue(0);
    m_pInternalEvents->SetUserProgressMaxValue(UserProgressMaximum);
    m_pInternalEvents->SetProgressUserMode(ImagingFramework::EventsTrue);
}

void ThreadMachine::ReturnEventsInternal() noexcept {
    m_eventsHost.SetEvents(nullptr);
    m_pInternalEvents.reset();
}

InternalEvents* ThreadMachine::GetEvents() {
    const Guard guard(m_hSynchronizer);
    GetEventsInternal();
    m_bUserCreatedEvents = true;
    return m_pInternalEvents.get();
}

void ThreadMachine::ReturnEvents() {
    const Guard guard(m_hSynchronizer);
    m_bUserCreatedEvents = false;
    if (!m_bRunning && !m_bStarting) { // else the run still reports to them, and its end returns them
        ReturnEventsInternal();
    }
}

void ThreadMachine::ResetProgress(std::int32_t count, std::int32_t timeout) {
    {
        const Guard guard(m_hSynchronizer);
        m_eventsHost.SetTimeout(timeout);
        m_eventsHost.SetEvents(m_pInternalEvents.get());
    }
    CallEngine([&] { m_eventsHost.ResetProgress(count); });
}

void ThreadMachine::ReportProgress(std::int32_t step) {
    CallEngine([&] { m_eventsHost.UpdateEvents(step); });
}

// --- The message loop

void ThreadMachine::RequireMessageLoop() const {
    if (IsViaLoop() && !Host::MessageLoop::get_Current()) {
        throw MessageLoopNotPresentedException();
    }
}

void ThreadMachine::RunTimer() {
    if (!IsViaLoop()) {
        return;
    }
    m_uintTimer = m_pLoop->StartTimer(m_intPollingInterval, [weak = weak_from_this()] {
        if (const auto self = weak.lock(); self && self->IsViaLoop()) {
            self->TimerEventProcessor();
        }
    });
}

void ThreadMachine::StopTimer() noexcept {
    const std::uint64_t timer = m_uintTimer.exchange(0);
    if (timer != 0) {
        m_pLoop->StopTimer(timer);
    }
}

/// Lets the loop come round at once; without this it would at the next tick.
void ThreadMachine::WakeLoop() noexcept {
    try {
        m_pLoop->Post([weak = weak_from_this()] {
            if (const auto self = weak.lock(); self && self->IsViaLoop()) {
                self->TimerEventProcessor();
            }
        });
    } catch (...) {
        // The tick does the same, later.
    }
}

void ThreadMachine::WaitForLoop() {
    if (m_bClosing) {
        // Who disposes has opened the gate once and does not come again; this thread may have closed it since.
        m_hChangedStatusSynchronizer.Set();
    }
    m_hChangedStatusSynchronizer.Wait();
}

void ThreadMachine::PumpUntilEnd(Host::MessageLoop& loop) {
    bool ownLoop = false;
    {
        const Guard guard(m_hSynchronizer);
        ownLoop = m_pLoop.get() == &loop;
    }
    while (!m_hRunningEvent.IsSet()) {
        if (!loop.Pump() && ownLoop) {
            // The loop is at its end and tells nothing any more, but the worker still waits for it.
            TimerEventProcessor();
        }
        m_hRunningEvent.WaitFor(PumpPeriod);
    }
}

} // namespace Corvane::Rasterloom
