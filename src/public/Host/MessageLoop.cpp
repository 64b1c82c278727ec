#include <Corvane/Rasterloom/Host/MessageLoop.h>
#include <Corvane/Rasterloom/Host/SimpleMessageLoop.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace Corvane::Rasterloom::Host {

namespace {

std::shared_ptr<MessageLoop>& CurrentLoop() noexcept {
    thread_local std::shared_ptr<MessageLoop> s_pLoop;
    return s_pLoop;
}

} // namespace

MessageLoop::MessageLoop() = default;
MessageLoop::~MessageLoop() = default;

std::shared_ptr<MessageLoop> MessageLoop::get_Current() noexcept {
    return CurrentLoop();
}

void MessageLoop::set_Current(std::shared_ptr<MessageLoop> loop) noexcept {
    CurrentLoop() = std::move(loop);
}

// --- SimpleMessageLoop

SimpleMessageLoop::SimpleMessageLoop() = default;
SimpleMessageLoop::~SimpleMessageLoop() = default;

void SimpleMessageLoop::Post(std::function<void()> message) {
    {
        const std::lock_guard guard(m_mutex);
        m_messages.push_back(std::move(message));
    }
    m_changed.notify_all();
}

bool SimpleMessageLoop::Pump() {
    RunDueTimers();
    RunMessages();
    const std::lock_guard guard(m_mutex);
    return !m_bQuit;
}

void SimpleMessageLoop::RunDueTimers() {
    std::vector<std::uint64_t> due;
    {
        const std::lock_guard guard(m_mutex);
        const auto now = Clock::now();
        for (auto& [id, timer] : m_timers) {
            if (timer.Due <= now) {
                timer.Due = now + timer.Interval;
                due.push_back(id);
            }
        }
    }
    for (const std::uint64_t id : due) {
        std::shared_ptr<const std::function<void()>> tick;
        {
            // A tick before this one may have stopped it.
            const std::lock_guard guard(m_mutex);
            if (const auto found = m_timers.find(id); found != m_timers.end()) {
                tick = found->second.Tick;
            }
        }
        if (tick) {
            (*tick)();
        }
    }
}

void SimpleMessageLoop::RunMessages() {
    // Those that wait now and no more: a message that posts itself again must not hold the round.
    std::size_t count = 0;
    {
        const std::lock_guard guard(m_mutex);
        count = m_messages.size();
    }
    for (; count > 0; --count) {
        std::function<void()> message;
        {
            const std::lock_guard guard(m_mutex);
            if (m_messages.empty() || m_bQuit) {
                return;
            }
            message = std::move(m_messages.front());
            m_messages.pop_front();
        }
        message();
    }
}

std::uint64_t SimpleMessageLoop::StartTimer(std::int32_t milliseconds, std::function<void()> tick) {
    const std::chrono::milliseconds interval(std::max(milliseconds, 1));
    auto shared = std::make_shared<const std::function<void()>>(std::move(tick));
    std::uint64_t id = 0;
    {
        const std::lock_guard guard(m_mutex);
        id = ++m_uintLastTimer;
        m_timers.emplace(id, Timer{interval, Clock::now() + interval, std::move(shared)});
    }
    m_changed.notify_all();
    return id;
}

void SimpleMessageLoop::StopTimer(std::uint64_t timer) noexcept {
    std::map<std::uint64_t, Timer>::node_type stopped; // dies outside the lock
    const std::lock_guard guard(m_mutex);
    stopped = m_timers.extract(timer);
}

SimpleMessageLoop::Clock::time_point SimpleMessageLoop::NextDue() const {
    auto next = Clock::now() + std::chrono::hours(1);
    for (const auto& [id, timer] : m_timers) {
        next = std::min(next, timer.Due);
    }
    return next;
}

void SimpleMessageLoop::Run() {
    while (Pump()) {
        std::unique_lock guard(m_mutex);
        while (!m_bQuit && m_messages.empty() && NextDue() > Clock::now()) {
            m_changed.wait_until(guard, NextDue());
        }
    }
    const std::lock_guard guard(m_mutex);
    m_bQuit = false;
}

void SimpleMessageLoop::Quit() noexcept {
    {
        const std::lock_guard guard(m_mutex);
        m_bQuit = true;
    }
    m_changed.notify_all();
}

} // namespace Corvane::Rasterloom::Host
