#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstdint>
#include <functional>
#include <memory>

namespace Corvane::Rasterloom::Host {

/// The message loop of one thread, as the mode `AsyncViaMessageLoop` needs it. A host with a user interface implements
/// it on its toolkit's loop and registers it on that loop's thread with `set_Current`.
class RASTERLOOM_API MessageLoop {
public:
    MessageLoop(const MessageLoop&) = delete;
    MessageLoop& operator=(const MessageLoop&) = delete;
    virtual ~MessageLoop();

    /// Runs `message` on the loop's thread in one of the next rounds. May be called from any thread.
    virtual void Post(std::function<void()> message) = 0;
    /// One round: runs the timers that are due and the messages that wait, on the calling thread, which is the loop's,
    /// and does not wait. Returns false once the loop was told to quit. A message may call this again.
    virtual bool Pump() = 0;
    /// Calls `tick` on the loop's thread every `milliseconds` until stopped; gives a number above 0. Called on the
    /// loop's thread.
    virtual std::uint64_t StartTimer(std::int32_t milliseconds, std::function<void()> tick) = 0;
    /// No call begins after this; unknown numbers are ignored. May be called from any thread and in the tick itself.
    virtual void StopTimer(std::uint64_t timer) noexcept = 0;

    /// The loop of the calling thread, null when it has none.
    static std::shared_ptr<MessageLoop> get_Current() noexcept;
    /// Registers a loop for the calling thread; null takes it away.
    static void set_Current(std::shared_ptr<MessageLoop> loop) noexcept;

protected:
    MessageLoop();
};

} // namespace Corvane::Rasterloom::Host
