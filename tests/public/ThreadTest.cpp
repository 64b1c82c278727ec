#include <Corvane/Rasterloom/Thread.h>

#include <Corvane/Rasterloom/EnumNames.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/SimpleMessageLoop.h>

#include "Throws.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace Corvane::Rasterloom {
namespace {

using Texts = std::vector<std::string>;

std::string MessageOf(const std::exception_ptr& failure) {
    if (!failure) {
        return "";
    }
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& exception) {
        return exception.what();
    }
}

/// Registers a loop for this thread while it lives.
class LoopScope {
public:
    LoopScope() { Host::MessageLoop::set_Current(Loop); }
    ~LoopScope() { Host::MessageLoop::set_Current(nullptr); }
    const std::shared_ptr<Host::SimpleMessageLoop> Loop = std::make_shared<Host::SimpleMessageLoop>();
};

/// Writes down what a thread tells, in order, and runs an action at one of the texts.
class Recorder {
public:
    explicit Recorder(Thread& thread) {
        const auto plain = [&](Host::Event<EventArgs>& event, const char* name) {
            m_tokens.push_back(event.Subscribe([this, name](EventArgs&) { Add(name); }));
        };
        plain(thread.Starting, "Starting");
        plain(thread.Started, "Started");
        plain(thread.Paused, "Paused");
        plain(thread.Continued, "Continued");
        plain(thread.Aborted, "Aborted");
        m_tokens.push_back(thread.Stopping.Subscribe([this](ErrorEventArgs& args) { AddEnd("Stopping", args); }));
        m_tokens.push_back(thread.Stopped.Subscribe([this](ErrorEventArgs& args) { AddEnd("Stopped", args); }));
        m_tokens.push_back(thread.Progress.Subscribe([this](ProgressEventArgs& args) {
            EXPECT_EQ(args.get_Maximum(), 200);
            Add("Progress " + std::to_string(args.get_Current()));
        }));
    }

    Texts Take() {
        const std::lock_guard guard(m_mutex);
        return std::exchange(m_texts, {});
    }
    Texts TakeWithoutProgress() {
        Texts texts = Take();
        std::erase_if(texts, [](const std::string& text) { return text.starts_with("Progress"); });
        return texts;
    }
    std::thread::id LastThread() {
        const std::lock_guard guard(m_mutex);
        return m_last;
    }

    void On(std::string text, std::function<void()> action) {
        m_when = std::move(text);
        m_action = std::move(action);
    }
    void FailOn(std::string text, const char* message) {
        On(std::move(text), [message] { throw std::runtime_error(message); });
    }

private:
    void AddEnd(const std::string& name, const ErrorEventArgs& args) {
        const std::string message = MessageOf(args.get_Exception());
        Add(message.empty() ? name : name + ": " + message);
    }
    void Add(const std::string& text) {
        {
            const std::lock_guard guard(m_mutex);
            m_texts.push_back(text);
            m_last = std::this_thread::get_id();
        }
        if (m_action && text == m_when) {
            m_action();
        }
    }

    std::mutex m_mutex;
    Texts m_texts;
    std::thread::id m_last;
    std::string m_when;
    std::function<void()> m_action;
    std::vector<Host::Subscription> m_tokens;
};

void Steps(Thread& thread, int count) {
    thread._ResetProgress(count);
    for (int i = 0; i < count; ++i) {
        thread._ReportProgress(1);
    }
}

/// Steps until it is stopped; tells each.
void StepsWithoutEnd(Thread& thread, const std::function<void()>& tell) {
    thread._ResetProgress(1'000'000'000);
    for (;;) {
        tell();
        thread._ReportProgress(1);
    }
}

/// A gate between a test and a body.
class Gate {
public:
    void Open() { m_bOpen = true; }
    bool IsOpen() const { return m_bOpen; }
    void Wait() const {
        while (!m_bOpen) {
            std::this_thread::yield();
        }
    }

private:
    std::atomic<bool> m_bOpen{false};
};

class ThreadingModes : public ::testing::TestWithParam<SynchronizationMode> {
protected:
    /// A thread in the mode of the test whose events are recorded.
    struct Machine {
        explicit Machine(SynchronizationMode mode) { Subject.set_SynchronizationMode(mode); }
        Thread Subject;
        Recorder Events{Subject};
        Texts Run(std::function<void()> body) {
            Subject.set_ThreadStart(std::move(body));
            Subject.Start();
            Subject.WaitForCompletion();
            return Events.Take();
        }
    };

    LoopScope m_loop;
    Machine m_machine{GetParam()};
    Thread& m_thread = m_machine.Subject;
};

INSTANTIATE_TEST_SUITE_P(All, ThreadingModes,
                         ::testing::Values(SynchronizationMode::Sync, SynchronizationMode::Async,
                                           SynchronizationMode::AsyncViaMessageLoop),
                         [](const auto& info) { return std::string(ToString(info.param)); });

TEST_P(ThreadingModes, EventsComeInOrderAndOnTheirThreadInEveryRun) {
    const auto here = std::this_thread::get_id();
    const bool viaLoop = GetParam() == SynchronizationMode::AsyncViaMessageLoop;
    for (const int steps : {0, 4, 4}) {
        EXPECT_EQ(m_thread.get_ActivityStatus(), ActivityStatus::ThreadStopped);
        const Texts texts = m_machine.Run([&] {
            EXPECT_EQ(std::this_thread::get_id() == here, GetParam() == SynchronizationMode::Sync);
            EXPECT_EQ(m_thread.get_ActivityStatus(), ActivityStatus::ThreadStarted);
            EXPECT_FALSE(m_thread.get_Completed());
            EXPECT_THROW(m_thread.set_SynchronizationMode(SynchronizationMode::Sync), OperationNotCompletedException);
            EXPECT_THROW(m_thread.Start(), OperationNotCompletedException);
            Steps(m_thread, steps);
        });
        EXPECT_TRUE(m_thread.get_Completed());
        EXPECT_EQ(m_machine.Events.LastThread() == here, GetParam() != SynchronizationMode::Async);
        Texts expected{"Starting", "Started", "Progress 0"};
        for (const char* const progress : {"Progress 50", "Progress 100", "Progress 150"}) {
            // A loop may miss some of what rises.
            if (steps != 0 && (!viaLoop || std::ranges::count(texts, progress) != 0)) {
                expected.emplace_back(progress);
            }
        }
        expected.insert(expected.end(), {"Progress 200", "Stopping", "Stopped"});
        EXPECT_EQ(texts, expected);
    }
}

TEST_P(ThreadingModes, AbortInAHandlerTakesEffectAtTheNextStep) {
    // In `Started` as well: what the body's own reset of the counter clears must not be lost.
    for (const std::string where : {"Started", "Progress 0"}) {
        int steps = 0;
        m_machine.Events.On(where, [&] { m_thread.Abort(); });
        m_thread.set_ThreadStart([&] { StepsWithoutEnd(m_thread, [&] { ++steps; }); });
        m_thread.Start();
        m_thread.WaitForCompletion();
        EXPECT_EQ(steps, 1) << where; // the one that failed
        EXPECT_EQ(m_machine.Events.TakeWithoutProgress(),
                  (Texts{"Starting", "Started", "Stopping: Operation is aborted.", "Aborted",
                         "Stopped: Operation is aborted."}));
        EXPECT_EQ(MessageOf(m_thread.get_Exception()), "Operation is aborted.");
    }
    m_machine.Events.On("", nullptr);
    EXPECT_EQ(m_machine.Run([] {}).back(), "Stopped");
    EXPECT_EQ(m_thread.get_Exception(), nullptr);
}

TEST_P(ThreadingModes, AbortBeforeTheStartEndsTheNextRunAtOnce) {
    m_thread.Abort();
    bool ran = false;
    const Texts aborted{"Starting", "Stopping: Operation is aborted.", "Aborted", "Stopped: Operation is aborted."};
    EXPECT_EQ(m_machine.Run([&] { ran = true; }), aborted);
    EXPECT_FALSE(ran);
    EXPECT_EQ(m_machine.Run([&] { ran = true; }).size(), 6U);
    EXPECT_TRUE(ran);
}

TEST_P(ThreadingModes, FailuresOfBodyAndHandlers) {
    EXPECT_EQ(m_machine.Run([] { throw std::runtime_error("body"); }),
              (Texts{"Starting", "Started", "Progress 0", "Stopping: body", "Stopped: body"}));
    EXPECT_EQ(MessageOf(m_thread.get_Exception()), "body");

    // What is no std::exception is dropped.
    EXPECT_EQ(m_machine.Run([] { throw 5; }).back(), "Stopped");

    // A handler's failure stops the work at its next step, and goes before the body's.
    m_machine.Events.FailOn("Started", "handler");
    EXPECT_EQ(m_machine.Run([this] { Steps(m_thread, 10); }),
              (Texts{"Starting", "Started", "Stopping: handler", "Aborted", "Stopped: handler"}));

    // One in `Starting` is the caller's, and leaves the machine at rest.
    m_machine.Events.FailOn("Starting", "not now");
    EXPECT_EQ(ThrownText<std::runtime_error>([this] { m_thread.Start(); }), "not now");
    EXPECT_TRUE(m_thread.get_Completed());

    // One in `Stopped` has a caller in the mode Sync alone, even if it sets the mode of the next run.
    m_machine.Events.Take();
    const bool sync = GetParam() == SynchronizationMode::Sync;
    m_machine.Events.On("Stopped", [this, sync] {
        m_thread.set_SynchronizationMode(sync ? SynchronizationMode::Async : SynchronizationMode::Sync);
        throw std::runtime_error("at the end");
    });
    if (sync) {
        EXPECT_EQ(ThrownText<std::runtime_error>([this] { m_machine.Run([] {}); }), "at the end");
    } else {
        EXPECT_NO_THROW(m_machine.Run([] {}));
    }
    EXPECT_EQ(MessageOf(m_thread.get_Exception()), "at the end");
    EXPECT_TRUE(m_thread.get_Completed());
}

TEST_P(ThreadingModes, AHandlerOfStoppedMayStartTheNextRun) {
    std::atomic<int> runs = 0;
    Gate done;
    m_machine.Events.On("Stopped", [&] {
        if (runs < 3) {
            m_thread.Start();
        } else {
            done.Open();
        }
    });
    m_thread.set_ThreadStart([&] {
        ++runs;
        Steps(m_thread, 3);
    });
    m_thread.Start();
    for (int i = 0; i < 3; ++i) {
        m_thread.WaitForCompletion();
    }
    done.Wait();
    m_thread.WaitForCompletion();
    EXPECT_EQ(runs, 3);
    EXPECT_EQ(m_machine.Events.Take().size() % 3, 0U);
    EXPECT_TRUE(m_thread.get_Completed());
}

TEST_P(ThreadingModes, AbortFromAnotherThread) {
    Gate running;
    std::thread aborter([&] {
        running.Wait();
        m_thread.Abort();
        if (GetParam() != SynchronizationMode::Sync) {
            EXPECT_TRUE(m_thread.get_Completed()); // it has waited
        }
    });
    const Texts texts = m_machine.Run([&] { StepsWithoutEnd(m_thread, [&] { running.Open(); }); });
    aborter.join();
    EXPECT_EQ(texts.back(), "Stopped: Operation is aborted.");
}

TEST_P(ThreadingModes, DestroyingAThreadEndsItsRun) {
    if (GetParam() == SynchronizationMode::Sync) {
        return;
    }
    for (const bool paused : {false, true}) {
        Gate running;
        auto thread = std::make_unique<Thread>();
        thread->set_SynchronizationMode(GetParam());
        Recorder events(*thread);
        thread->set_ThreadStart(
            [&, pThread = thread.get()] { StepsWithoutEnd(*pThread, [&] { running.Open(); }); });
        thread->Start();
        while (!running.IsOpen()) {
            m_loop.Loop->Pump();
        }
        if (paused) {
            thread->Pause();
        }
        thread.reset();
        EXPECT_EQ(events.Take().back(), "Stopped: Operation is aborted.");
    }
}

TEST_P(ThreadingModes, DisposedThreadsDoNotStart) {
    m_machine.Events.On("Started", [this] { EXPECT_THROW(m_thread.Dispose(), OperationNotCompletedException); });
    EXPECT_EQ(m_machine.Run([] {}).back(), "Stopped");
    m_thread.Dispose();
    m_thread.Dispose();
    EXPECT_THROW(m_thread.Start(), Host::ObjectDisposedException);
    EXPECT_TRUE(m_machine.Events.Take().empty());
}

TEST_P(ThreadingModes, PauseAndContinue) {
    if (GetParam() == SynchronizationMode::Sync) {
        return; // there is no worker to hold; see below
    }
    std::atomic<int> steps = 0;
    std::atomic<bool> goOn = true;
    m_thread.set_ThreadStart([&] {
        m_thread._ResetProgress(1'000'000'000);
        while (goOn) {
            m_thread._ReportProgress(1);
            ++steps;
        }
    });
    m_thread.Start();
    const auto waitForSteps = [&](int count) {
        while (steps < count) {
            m_loop.Loop->Pump();
        }
    };
    waitForSteps(1);
    m_thread.Pause();
    m_thread.Pause();
    EXPECT_EQ(m_thread.get_ActivityStatus(), ActivityStatus::ThreadPaused);
    const int atPause = steps;
    for (int i = 0; i < 100; ++i) {
        std::this_thread::yield();
    }
    EXPECT_LE(steps, atPause + 1); // the step that was under way
    m_thread.Continue();
    EXPECT_EQ(m_thread.get_ActivityStatus(), ActivityStatus::ThreadContinued);
    waitForSteps(atPause + 3);

    // A paused run can be aborted, and the next one starts unpaused.
    m_thread.Pause();
    m_thread.Abort();
    EXPECT_TRUE(m_thread.get_Completed());
    EXPECT_EQ(m_machine.Events.TakeWithoutProgress(),
              (Texts{"Starting", "Started", "Paused", "Continued", "Paused", "Stopping: Operation is aborted.",
                     "Aborted", "Stopped: Operation is aborted."}));
    goOn = false;
    m_thread.Start();
    m_thread.WaitForCompletion();
    EXPECT_EQ(m_machine.Events.Take().back(), "Stopped");
}

TEST(ThreadThreading, PauseInTheModeSyncHoldsTheCallerUntilAnotherThreadContinues) {
    Thread thread;
    Gate held;
    std::thread other([&] {
        held.Wait();
        thread.Continue();
    });
    thread.set_ThreadStart([&] {
        thread.Pause();
        held.Open();
        Steps(thread, 3);
    });
    Recorder events(thread);
    thread.Start();
    other.join();
    EXPECT_EQ(events.TakeWithoutProgress(), (Texts{"Starting", "Started", "Stopping", "Stopped"}));

    // With no run under way nothing is held, not even through a counter that is kept.
    thread.GetEvents();
    thread.Pause();
    thread.set_ThreadStart([&] { Steps(thread, 3); });
    thread.Start();
    EXPECT_EQ(events.Take().back(), "Stopped");
}

TEST(ThreadThreading, MisuseFails) {
    Thread thread;
    EXPECT_EQ(ThrownText<Exception>([&] { thread.Start(); }), "Start method is not selected.");
    EXPECT_EQ(thread.get_PollingInterval(), 50);
    thread.set_PollingInterval(5);
    EXPECT_EQ(thread.get_PollingInterval(), 10);
    EXPECT_EQ(thread.get_Priority(), ThreadPriority::Normal);
    EXPECT_THROW(thread.set_Priority(static_cast<ThreadPriority>(5)), Host::ArgumentException);
    EXPECT_THROW(thread.set_SynchronizationMode(static_cast<SynchronizationMode>(3)), Host::ArgumentException);

    std::string inBody;
    thread.set_SynchronizationMode(SynchronizationMode::Async);
    thread.set_Priority(ThreadPriority::Lowest);
    thread.set_ThreadStart([&] { inBody = ThrownText<Exception>([&] { thread.Pause(); }); });
    thread.Start();
    thread.WaitForCompletion();
    EXPECT_EQ(inBody, "It is not allowed to call Pause method from multi-threaded event handlers.");

    // Via a message loop, on a thread that has none.
    Recorder events(thread);
    thread.set_SynchronizationMode(SynchronizationMode::AsyncViaMessageLoop);
    EXPECT_THROW(thread.Start(), MessageLoopNotPresentedException);
    EXPECT_EQ(ThrownText<Exception>([&] { thread.Pause(); }),
              "It is not allowed to call Pause method from non-message loop thread.");
    EXPECT_EQ(ThrownText<Exception>([&] { thread.Continue(); }),
              "It is not allowed to call Continue method from non-message loop thread.");
    EXPECT_TRUE(events.Take().empty());
    thread.set_SynchronizationMode(SynchronizationMode::Sync);
    const auto token = thread.Starting.Subscribe(
        [&](EventArgs&) { thread.set_SynchronizationMode(SynchronizationMode::AsyncViaMessageLoop); });
    EXPECT_THROW(thread.Start(), MessageLoopNotPresentedException);
    EXPECT_TRUE(thread.get_Completed());
}

TEST(ThreadThreading, TimeoutsReachTheBody) {
    Thread thread;
    thread.set_ThreadStart([&] {
        thread._ResetProgress(10, 1);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        thread._ReportProgress(1);
    });
    thread.Start();
    EXPECT_THROW(std::rethrow_exception(thread.get_Exception()), TimeoutException);
    EXPECT_EQ(MessageOf(thread.get_Exception()), "Timeout is exceeded.");
}

TEST(ThreadThreading, ARunDrivenByALoopThatRunsItself) {
    LoopScope scope;
    Thread thread;
    Recorder events(thread);
    thread.set_SynchronizationMode(SynchronizationMode::AsyncViaMessageLoop);
    thread.set_PollingInterval(10);
    thread.set_ThreadStart([&] { Steps(thread, 1000); });
    events.On("Stopped", [&] { scope.Loop->Quit(); });
    thread.Start();
    scope.Loop->Run();
    const Texts texts = events.Take();
    EXPECT_EQ(texts.back(), "Stopped");
    // The worker waits for the loop at 0, 40, 80, 120 and 160, so at least these are seen.
    EXPECT_GE(texts.size(), 10U);

    // A loop that has quit tells nothing any more; the waiter does.
    scope.Loop->Quit();
    thread.Start();
    thread.WaitForCompletion();
    EXPECT_EQ(events.Take().back(), "Stopped");
}

TEST(ThreadThreading, TheLastHandlerOfStoppedMayDestroyTheThread) {
    auto thread = std::make_unique<Thread>();
    Gate gone;
    thread->set_SynchronizationMode(SynchronizationMode::Async);
    thread->set_ThreadStart([] {});
    auto token = thread->Stopped.Subscribe([&](ErrorEventArgs&) {
        thread.reset();
        gone.Open();
    });
    thread->Start();
    gone.Wait();
}

TEST(ThreadThreading, ManyThreadsAtOneMachine) {
    Thread thread;
    thread.set_SynchronizationMode(SynchronizationMode::Async);
    std::atomic<int> stopped = 0;
    const auto token = thread.Stopped.Subscribe([&](ErrorEventArgs&) { ++stopped; });
    thread.set_ThreadStart([&] { Steps(thread, 50); });
    std::atomic<int> started = 0;
    std::vector<std::thread> hosts;
    for (int i = 0; i < 4; ++i) {
        hosts.emplace_back([&, i] {
            for (int n = 0; n < 50; ++n) {
                try {
                    thread.Start();
                    ++started;
                } catch (const OperationNotCompletedException&) {
                    // another host was faster
                }
                if (i == 0) {
                    thread.Pause();
                    thread.Continue();
                } else if (i == 1) {
                    thread.Abort();
                } else {
                    thread.WaitForCompletion();
                }
            }
        });
    }
    for (std::thread& host : hosts) {
        host.join();
    }
    thread.WaitForCompletion();
    EXPECT_EQ(stopped, started);
}

} // namespace
} // namespace Corvane::Rasterloom
