#pragma once

#include <Corvane/Rasterloom/Host/MessageLoop.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

namespace Corvane::Rasterloom::Host {

/// A message loop for hosts that have none: messages in the order of posting, and timers.
class RASTERLOOM_API SimpleMessageLoop final : public MessageLoop {
public:
    SimpleMessageLoop();
    ~SimpleMessageLoop() override;

    void Post(std::function<void()> message) override;
    bool Pump() override;
    std::uint64_t StartTimer(std::int32_t milliseconds, std::function<void()> tick) override;
    void StopTimer(std::uint64_t timer) noexcept override;

    /// Pumps on the calling thread until `Quit`; what a message throws leaves it. Messages that wait at the quit stay
    /// for the next run.
    void Run();
    /// Ends the run that is under way or, if none is, the next one. May be called from any thread.
    void Quit() noexcept;

private:
    using Clock = std::chrono::steady_clock;
    struct Timer {
        std::chrono::milliseconds Interval;
        Clock::time_point Due;
        std::shared_ptr<const std::function<void()>> Tick;
    };

    void RunDueTimers();
    void RunMessages();
    Clock::time_point NextDue() const;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::function<void()>> m_messages;
    std::map<std::uint64_t, Timer> m_timers;
    std::uint64_t m_uintLastTimer = 0;
    bool m_bQuit = false;
};

} // namespace Corvane::Rasterloom::Host
