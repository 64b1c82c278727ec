#include <Corvane/Rasterloom/RasterloomLibraryModule.h>
#include <Corvane/Rasterloom/SyncHandler.h>

#include "CallEngine.h"
#include "ErrorHandling/Exceptions.h"
#include "InternalEvents.h"
#include "ObjectLock.h"
#include "Validator.h"

#include <algorithm>
#include <string>

namespace Corvane::Rasterloom {

namespace {

constexpr std::int32_t ProgressMaximum = 200;

ImagingFramework::IInternalEventsHost& Require(ImagingFramework::IInternalEventsHost* host) {
    if (host == nullptr) {
        throw Host::ArgumentNullException("host");
    }
    return *host;
}

} // namespace

ISyncHandler::ISyncHandler() = default;
ISyncHandler::~ISyncHandler() = default;

SyncHandler::SyncHandler() : m_hSemaphore(std::make_shared<ObjectLock>()) {
    RasterloomLibraryModule::_Start();
    m_pThread = std::make_unique<Thread>([this] { CallEngine([this] { ThreadProc(); }); });
    m_subscriptions = {
        m_pThread->Progress.Subscribe([this](ProgressEventArgs& args) { OnThreadProgressHandler(args); }),
        m_pThread->Aborted.Subscribe([this](EventArgs&) { OnThreadAbort(); }),
        m_pThread->Paused.Subscribe([this](EventArgs&) { OnThreadPause(); }),
        m_pThread->Continued.Subscribe([this](EventArgs&) { OnThreadContinue(); }),
        m_pThread->Starting.Subscribe([this](EventArgs&) { OnThreadStarting(); }),
        m_pThread->Started.Subscribe([this](EventArgs&) { OnThreadStarted(); }),
        m_pThread->Stopping.Subscribe([this](ErrorEventArgs& args) { OnThreadStopping(args.get_Exception()); }),
        m_pThread->Stopped.Subscribe([this](ErrorEventArgs& args) { OnThreadStopped(args.get_Exception()); }),
    };
}

SyncHandler::~SyncHandler() {
    m_pThread.reset();
    m_hSemaphore->Close();
}

// --- Lock and disposal

void SyncHandler::Lock() {
    const auto lock = m_hSemaphore;
    lock->Lock();
}

void SyncHandler::Unlock() noexcept {
    m_hSemaphore->Unlock();
}

bool SyncHandler::get_Locked() const noexcept {
    return m_hSemaphore->get_Locked();
}

std::int32_t SyncHandler::get_Timeout() const noexcept {
    return m_hSemaphore->get_Timeout();
}

void SyncHandler::set_Timeout(std::int32_t milliseconds) noexcept {
    m_hSemaphore->set_Timeout(milliseconds);
}

bool SyncHandler::get__IsDisposed() const noexcept {
    return m_hSemaphore->get_IsDisposed();
}

void SyncHandler::Dispose() {
    const auto lock = m_hSemaphore;
    // The run ends first: it holds the lock, and gives it back in its last event.
    const auto endRunAndLock = [this] {
        m_pThread->Dispose();
        Lock();
    };
    lock->Dispose(endRunAndLock, [this] { Dispose(true); });
}

void SyncHandler::Dispose(bool) {
    // The lock is closed by the frame around this, after all overrides.
}

void SyncHandler::DisposeFinally() noexcept {
    m_hSemaphore->DisposeFinally([this] { Dispose(); }, [this] { Dispose(true); });
}

// --- Control

bool SyncHandler::get_Completed() const noexcept {
    return m_pThread->get_Completed();
}

void SyncHandler::set_Priority(ThreadPriority value) {
    Validator::ValidateEnum("value", value);
    m_enPriority = value;
}

void SyncHandler::set_SynchronizationMode(SynchronizationMode value) {
    if (value != SynchronizationMode::Sync) {
        throw Host::NotImplementedException("Please, contact " + std::string(ImagingFramework::SupportAddress) +
                                            " if you are using async mode.");
    }
    m_enSynchronizationMode = value;
}

void SyncHandler::Abort() {
    m_pThread->Abort();
}

void SyncHandler::Pause() {
    m_pThread->Pause();
}

void SyncHandler::Continue() {
    m_pThread->Continue();
}

void SyncHandler::WaitForCompletion() {
    m_pThread->WaitForCompletion();
}

// --- Run

void SyncHandler::StartThread() {
    m_pThread->Start();
}

void SyncHandler::ThreadProc() {
    _ResetThreadRuntimeData();
}

void SyncHandler::ExportEventsHostSettings(ImagingFramework::IInternalEventsHost* host) {
    ImagingFramework::IInternalEventsHost& target = Require(host);
    target.SetTimeout(get_Timeout());
    target.SetEvents(m_pThread->GetEvents());
}

void SyncHandler::ResetEventsHostSettings(ImagingFramework::IInternalEventsHost* host) {
    ImagingFramework::IInternalEventsHost& target = Require(host);
    target.SetTimeout(-1);
    target.SetEvents(nullptr);
}

void SyncHandler::_ResetProgress(std::int32_t count) {
    m_pThread->_ResetProgress(count, get_Timeout());
}

void SyncHandler::_ReportProgress(std::int32_t step) {
    m_pThread->_ReportProgress(step);
}

// --- Events

void SyncHandler::OnThreadProgressHandler(const ProgressEventArgs& args) {
    // (current / maximum + number) x 200 / count, rounded up; in integers, so that exact shares stay exact.
    const std::int64_t maximum = std::max(args.get_Maximum(), 1);
    const std::int64_t done = args.get_Current() + maximum * m_intCurrentOperationNumber;
    const std::int64_t all = maximum * std::max(m_intOperationCount, 1);
    const std::int64_t value = (std::clamp<std::int64_t>(done, 0, all) * ProgressMaximum + all - 1) / all;
    OnThreadProgress(static_cast<std::int32_t>(value), ProgressMaximum);
}

void SyncHandler::OnThreadProgress(std::int32_t current, std::int32_t maximum) {
    Progress.Raise(ProgressEventArgs(current, maximum));
}

void SyncHandler::OnThreadAbort() {
    Aborted.Raise(EventArgs());
}

void SyncHandler::OnThreadPause() {
    Paused.Raise(EventArgs());
}

void SyncHandler::OnThreadContinue() {
    Continued.Raise(EventArgs());
}

void SyncHandler::OnThreadStarting() {
    Starting.Raise(EventArgs());
    m_pThread->set_SynchronizationMode(m_enSynchronizationMode);
    m_pThread->set_Priority(m_enPriority);
}

void SyncHandler::OnThreadStarted() {
    Started.Raise(EventArgs());
}

void SyncHandler::OnThreadStopping(const std::exception_ptr& exception) {
    Stopping.Raise(ErrorEventArgs(exception));
}

void SyncHandler::OnThreadStopped(const std::exception_ptr& exception) {
    try {
        Stopped.Raise(ErrorEventArgs(exception));
    } catch (...) {
        FinishRun(exception); // the failure of the run goes before that of the handler
        throw;
    }
    FinishRun(exception);
}

void SyncHandler::FinishRun(const std::exception_ptr& exception) {
    m_pThread->ReturnEvents();
    if (m_bThrowException && exception && m_pThread->get_SynchronizationMode() == SynchronizationMode::Sync) {
        std::rethrow_exception(exception);
    }
}

} // namespace Corvane::Rasterloom
