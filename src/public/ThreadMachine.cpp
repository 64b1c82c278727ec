#include "ThreadMachine.h"

#include "CallEngine.h"
#include "ThreadRank.h"
#include "Validator.h"

#include <algorithm>
#include <system_error>
#include <utility>

// Start and end of a run, and control over it. The events are in ThreadMachineEvents.cpp.

namespace Corvane::Rasterloom {

namespace {

constexpr std::int32_t MinPollingInterval = 10;

} // namespace

bool ThreadMachine::IsOnStackHere() const noexcept {
    return m_intHandlerThreadId == CurrentThreadId() || m_hSynchronizer.IsHeldHere();
}

// --- Start

void ThreadMachine::Start() {
    {
        const Guard guard(m_hSynchronizer);
        PrepareStart();
        if (m_enSyncronizationMode != SynchronizationMode::Sync) {
            StartWorker();
            return;
        }
    }
    // Without the mutex, so that other threads can abort while this one works.
    EntryPoint();
}

void ThreadMachine::PrepareStart() {
    if (m_bDisposed) {
        throw Host::ObjectDisposedException("Thread");
    }
    if (!m_pThreadStart) {
        throw Exception("Start method is not selected.");
    }
    if (m_bRunning || m_bStarting) {
        throw OperationNotCompletedException();
    }
    RequireMessageLoop();
    m_intNextProgressCheckPoint = 0;
    m_pLastProgressValues.reset();
    m_pThreadException = nullptr;
    m_pEventHandlerException = nullptr;
    GetEventsInternal();
    // A counter that the host has kept may still hold the abort request or the pause of its last run.
    m_pInternalEvents->ResetProgress();
    m_pInternalEvents->SetPause(0);
    RaiseStarting();
    StopTimer(); // a start in a handler of `Stopped` finds the timer of the last run
    m_pLoop = Host::MessageLoop::get_Current();
    try {
        ChangeActivityStatus(ActivityStatus::ThreadRequestedToStart);
    } catch (...) {
        CancelStart(); // no timer to be had
        throw;
    }
    m_pLastProgressValues.reset();
    ++m_uintRun;
    m_bPaused = false;
    m_bRunning = true;
    m_hRunningEvent.Reset();
    m_hChangedStatusSynchronizer.Set();
}

void ThreadMachine::RaiseStarting() {
    m_bStarting = true;
    try {
        if (m_pOwner != nullptr) {
            m_pOwner->Starting.Raise(EventArgs());
        }
        RequireMessageLoop(); // a handler may have changed the mode
    } catch (...) {
        m_bStarting = false;
        if (!m_bUserCreatedEvents) {
            ReturnEventsInternal();
        }
        throw;
    }
    m_bStarting = false;
}

void ThreadMachine::StartWorker() {
    JoinWorkers();
    m_bHasThread = true;
    try {
        m_pThread = std::thread([self = shared_from_this()]() noexcept {
            SetThreadRank(self->m_enThreadPriority);
            self->EntryPoint();
        });
    } catch (const std::system_error& error) {
        CancelStart();
        throw UnexpectedException(std::string("Unable to create a thread. ") + error.what(), std::current_exception());
    } catch (...) {
        CancelStart();
        throw;
    }
}

void ThreadMachine::CancelStart() noexcept {
    m_bHasThread = false;
    m_bActivityStatusChanged = false;
    m_enActivityStatus = ActivityStatus::ThreadStopped;
    m_bRunning = false;
    m_hRunningEvent.Set();
    StopTimer();
    if (!m_bUserCreatedEvents) {
        ReturnEventsInternal();
    }
}

/// Those that are joined here have ended their run, so they only return; the mutex may be held.
void ThreadMachine::JoinWorkers() {
    if (m_pThread.joinable()) {
        m_retiredThreads.push_back(std::move(m_pThread));
    }
    const auto here = std::this_thread::get_id();
    std::erase_if(m_retiredThreads, [here](std::thread& thread) {
        if (thread.get_id() == here) {
            return false;
        }
        thread.join();
        return true;
    });
}

// --- Run

void ThreadMachine::EntryPoint() {
    try {
        RunBody();
    } catch (const std::exception&) {
        const Guard guard(m_hSynchronizer);
        m_pThreadException = std::current_exception();
    } catch (...) {
        // Not an exception of any standard kind: it counts as a success, on purpose.
    }
    ChangeActivityStatus(ActivityStatus::ThreadStopped);
}

void ThreadMachine::RunBody() {
    if (m_bAborted) {
        throw AbortedException();
    }
    m_intHandlerThreadId = CurrentThreadId();
    ChangeActivityStatus(ActivityStatus::ThreadStarted);
    if (IsViaLoop()) {
        // `Started` is told before the body begins, in this mode too.
        WaitForLoop();
        if (m_bClosing) {
            throw AbortedException();
        }
    }
    get_ThreadStart()();
}

// --- Control

void ThreadMachine::Pause() {
    if (m_enSyncronizationMode == SynchronizationMode::Async && m_intHandlerThreadId == CurrentThreadId()) {
        throw Exception("It is not allowed to call Pause method from multi-threaded event handlers.");
    }
    if (IsViaLoop() && !Host::MessageLoop::get_Current()) {
        throw Exception("It is not allowed to call Pause method from non-message loop thread.");
    }
    const Guard guard(m_hSynchronizer);
    ProcessPendingStatus();
    if (m_pInternalEvents) {
        m_pInternalEvents->SetPause(ImagingFramework::EventsTrue);
    }
    if (m_bHasThread && !m_bPaused) {
        m_bPaused = true;
        ChangeActivityStatus(ActivityStatus::ThreadPaused);
    }
}

void ThreadMachine::Continue() {
    if (IsViaLoop() && !Host::MessageLoop::get_Current()) {
        throw Exception("It is not allowed to call Continue method from non-message loop thread.");
    }
    const Guard guard(m_hSynchronizer);
    ProcessPendingStatus();
    if (m_pInternalEvents) {
        m_pInternalEvents->SetPause(0);
    }
    if (m_bHasThread && m_bPaused) {
        m_bPaused = false;
        ChangeActivityStatus(ActivityStatus::ThreadContinued);
    }
}

void ThreadMachine::Abort() {
    {
        const Guard guard(m_hSynchronizer);
        RequestAbort();
    }
    WaitForCompletion();
}

void ThreadMachine::RequestAbort() {
    m_bAborted = true;
    if (m_bRunning && m_pInternalEvents) {
        m_pInternalEvents->Abort();
        // A paused worker must go on in order to stop, or whoever waits for it would wait for ever.
        m_pInternalEvents->SetPause(0);
    }
}

void ThreadMachine::WaitForCompletion() {
    if (m_enSyncronizationMode == SynchronizationMode::Sync || IsOnStackHere()) {
        return;
    }
    if (const auto loop = Host::MessageLoop::get_Current(); loop && IsViaLoop() && m_uintTimer != 0) {
        PumpUntilEnd(*loop);
    } else {
        m_hRunningEvent.Wait();
    }
    const Guard guard(m_hSynchronizer); // the handlers of the end run until this is free
}

// --- Disposal

void ThreadMachine::Dispose() {
    if (IsOnStackHere()) {
        throw OperationNotCompletedException();
    }
    {
        const Guard guard(m_hSynchronizer);
        if (std::exchange(m_bDisposed, true)) {
            return;
        }
        if (m_bRunning) {
            RequestAbort();
        }
        m_bClosing = true;
        m_hChangedStatusSynchronizer.Set();
    }
    WaitForEnd();
    const Guard guard(m_hSynchronizer);
    ReturnEventsInternal();
}

void ThreadMachine::WaitForEnd() noexcept {
    // No start comes any more, so the threads can be taken out and joined without the mutex, which their handlers need.
    if (m_pThread.joinable()) {
        m_pThread.join();
    }
    for (std::thread& thread : m_retiredThreads) {
        thread.join();
    }
    m_retiredThreads.clear();
    {
        const Guard guard(m_hSynchronizer);
        ProcessPendingStatus(); // the loop has not told the end, and will not any more
        StopTimer();
    }
    m_hRunningEvent.Wait(); // a run on the stack of another thread
    const Guard guard(m_hSynchronizer);
}

void ThreadMachine::Detach() noexcept {
    if (!IsOnStackHere()) {
        try {
            Dispose();
        } catch (...) {
            // Handlers' failures are stored, so what comes here is a system that is out of resources.
        }
        const Guard guard(m_hSynchronizer);
        m_pOwner = nullptr;
        return;
    }
    const Guard guard(m_hSynchronizer);
    m_bDisposed = true;
    if (m_bRunning) {
        RequestAbort();
    }
    m_bClosing = true;
    m_hChangedStatusSynchronizer.Set();
    StopTimer();
    m_pOwner = nullptr;
    // The worker holds this object, and touches nothing else after this.
    if (m_pThread.joinable()) {
        m_pThread.detach();
    }
    for (std::thread& thread : m_retiredThreads) {
        thread.detach();
    }
}

// --- Properties

void ThreadMachine::set_SynchronizationMode(SynchronizationMode value) {
    const Guard guard(m_hSynchronizer);
    if (m_bRunning) {
        throw OperationNotCompletedException();
    }
    Validator::ValidateEnum("value", value);
    m_enSyncronizationMode = value;
}

std::exception_ptr ThreadMachine::get_Exception() const {
    const Guard guard(m_hSynchronizer);
    return m_pEventHandlerException ? m_pEventHandlerException : m_pThreadException;
}

std::function<void()> ThreadMachine::get_ThreadStart() const {
    const Guard guard(m_hSynchronizer);
    return m_pThreadStart;
}

void ThreadMachine::set_ThreadStart(std::function<void()> value) {
    const Guard guard(m_hSynchronizer);
    m_pThreadStart = std::move(value);
}

void ThreadMachine::set_Priority(ThreadPriority value) {
    Validator::ValidateEnum("value", value);
    m_enThreadPriority = value;
}

void ThreadMachine::set_PollingInterval(std::int32_t milliseconds) noexcept {
    m_intPollingInterval = std::max(milliseconds, MinPollingInterval);
}

} // namespace Corvane::Rasterloom
