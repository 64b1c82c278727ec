#include <Corvane/Rasterloom/RasterloomLibraryModule.h>
#include <Corvane/Rasterloom/Thread.h>

#include "ThreadMachine.h"

#include <utility>

namespace Corvane::Rasterloom {

ISyncEvents::ISyncEvents() = default;
ISyncEvents::~ISyncEvents() = default;

Thread::Thread(std::function<void()> threadStart)
    : m_pMachine(std::make_shared<ThreadMachine>(*this, std::move(threadStart))) {
    RasterloomLibraryModule::_Start();
}

Thread::~Thread() {
    m_pMachine->Detach();
}

// The calls that raise events hold the machine, since a handler may destroy this object.

void Thread::Start() {
    const auto machine = m_pMachine;
    machine->Start();
}

void Thread::Pause() {
    const auto machine = m_pMachine;
    machine->Pause();
}

void Thread::Continue() {
    const auto machine = m_pMachine;
    machine->Continue();
}

void Thread::Abort() {
    const auto machine = m_pMachine;
    machine->Abort();
}

void Thread::WaitForCompletion() {
    const auto machine = m_pMachine;
    machine->WaitForCompletion();
}

void Thread::Dispose() {
    m_pMachine->Dispose();
}

SynchronizationMode Thread::get_SynchronizationMode() const noexcept {
    return m_pMachine->get_SynchronizationMode();
}

void Thread::set_SynchronizationMode(SynchronizationMode value) {
    m_pMachine->set_SynchronizationMode(value);
}

ActivityStatus Thread::get_ActivityStatus() const noexcept {
    return m_pMachine->get_ActivityStatus();
}

bool Thread::get_Completed() const noexcept {
    return m_pMachine->get_Completed();
}

std::exception_ptr Thread::get_Exception() const {
    return m_pMachine->get_Exception();
}

std::function<void()> Thread::get_ThreadStart() const {
    return m_pMachine->get_ThreadStart();
}

void Thread::set_ThreadStart(std::function<void()> value) {
    m_pMachine->set_ThreadStart(std::move(value));
}

ThreadPriority Thread::get_Priority() const noexcept {
    return m_pMachine->get_Priority();
}

void Thread::set_Priority(ThreadPriority value) {
    m_pMachine->set_Priority(value);
}

std::int32_t Thread::get_PollingInterval() const noexcept {
    return m_pMachine->get_PollingInterval();
}

void Thread::set_PollingInterval(std::int32_t milliseconds) noexcept {
    m_pMachine->set_PollingInterval(milliseconds);
}

void Thread::_ResetProgress(std::int32_t count, std::int32_t timeout) {
    m_pMachine->ResetProgress(count, timeout);
}

void Thread::_ReportProgress(std::int32_t step) {
    m_pMachine->ReportProgress(step);
}

InternalEvents* Thread::GetEvents() {
    return m_pMachine->GetEvents();
}

void Thread::ReturnEvents() {
    m_pMachine->ReturnEvents();
}

} // namespace Corvane::Rasterloom
