#include <Corvane/Rasterloom/SyncHandler.h>

#include <Corvane/Rasterloom/Exceptions.h>

#include "Throws.h"

#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace Corvane::Rasterloom {
namespace {

/// An operation of two steps that holds its lock while it runs, as transforms and readers do.
class Operation : public SyncHandler {
public:
    ~Operation() override { DisposeFinally(); }
    using SyncHandler::Dispose;

    void Run(int steps) {
        m_intSteps = steps;
        Lock();
        StartThread();
    }
    void Count(std::int32_t count) { m_intOperationCount = count; }

    std::function<void()> Body;
    int Resets = 0;

protected:
    void Dispose(bool disposing) override { SyncHandler::Dispose(disposing); }
    void _ResetThreadRuntimeData() override { ++Resets; }
    void ThreadProc() override {
        SyncHandler::ThreadProc();
        if (Body) {
            Body();
        }
        _ResetProgress(m_intSteps);
        for (int i = 0; i < m_intSteps; ++i) {
            _ReportProgress(1);
        }
    }
    void OnThreadStopping(const std::exception_ptr& exception) override {
        SyncHandler::OnThreadStopping(exception);
        Unlock();
    }

private:
    int m_intSteps = 0;
};

TEST(SyncHandler, SyncAloneIsAccepted) {
    Operation operation;
    operation.set_SynchronizationMode(SynchronizationMode::Sync);
    for (const auto mode : {SynchronizationMode::Async, SynchronizationMode::AsyncViaMessageLoop}) {
        const std::string text =
            ThrownText<Host::NotImplementedException>([&] { operation.set_SynchronizationMode(mode); });
        EXPECT_TRUE(text.starts_with("Please, contact ") && text.ends_with(" if you are using async mode.")) << text;
    }
    EXPECT_THROW(operation.set_Priority(static_cast<ThreadPriority>(9)), Host::ArgumentException);
    EXPECT_THROW(operation.ExportEventsHostSettings(nullptr), Host::ArgumentNullException);
    EXPECT_THROW(operation.ResetEventsHostSettings(nullptr), Host::ArgumentNullException);
}

TEST(SyncHandler, ProgressCoversAllOperationsOfARun) {
    Operation operation;
    operation.Count(2); // the first of two: half of the way
    std::vector<int> values;
    const auto token = operation.Progress.Subscribe([&](ProgressEventArgs& args) {
        EXPECT_EQ(args.get_Maximum(), 200);
        EXPECT_THROW(operation.Lock(), ObjectLockedException); // held by the run, on this thread
        values.push_back(args.get_Current());
    });
    operation.Run(8); // 25 of 200 each, halved and rounded up
    EXPECT_EQ(values, (std::vector<int>{0, 13, 25, 38, 50, 63, 75, 88, 100}));
    EXPECT_FALSE(operation.get_Locked());
    EXPECT_EQ(operation.Resets, 1);

    // Every value maps to itself when the run is one operation.
    operation.Count(1);
    values.clear();
    operation.Run(200);
    ASSERT_EQ(values.size(), 201U);
    for (int i = 0; i <= 200; ++i) {
        EXPECT_EQ(values[static_cast<std::size_t>(i)], i);
    }
}

TEST(SyncHandler, FailuresReachTheCallerUnlessSwitchedOff) {
    Operation operation;
    std::vector<std::string> ends;
    const auto token = operation.Stopped.Subscribe(
        [&](ErrorEventArgs& args) { ends.push_back(args.get_Exception() ? "failed" : "done"); });
    operation.Body = [] { throw std::runtime_error("body"); };
    EXPECT_THROW(operation.Run(1), std::runtime_error);
    operation.set_ExceptionThrowEnabled(false);
    EXPECT_NO_THROW(operation.Run(1));
    operation.set_ExceptionThrowEnabled(true);
    operation.Body = [&] { operation.Abort(); };
    EXPECT_THROW(operation.Run(1), AbortedException);
    operation.Body = nullptr;
    EXPECT_NO_THROW(operation.Run(1));
    EXPECT_EQ(ends, (std::vector<std::string>{"failed", "failed", "failed", "done"}));

    const auto failing = operation.Stopping.Subscribe([](ErrorEventArgs&) { throw std::logic_error("stopping"); });
    EXPECT_THROW(operation.Run(1), std::logic_error);
    EXPECT_TRUE(operation.get_Locked()); // the handler failed before the override came to its unlock
    operation.Unlock();
}

TEST(SyncHandler, TimeoutAndDisposal) {
    Operation operation;
    operation.set_Timeout(1);
    const auto token = operation.Progress.Subscribe([](ProgressEventArgs& args) {
        if (args.get_Current() > 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    });
    EXPECT_THROW(operation.Run(10), TimeoutException);
    operation.Body = [&] { EXPECT_THROW(operation.Dispose(), OperationNotCompletedException); };
    EXPECT_NO_THROW(operation.Run(0));
    operation.Dispose();
    operation.Dispose();
    EXPECT_TRUE(operation.get_IsDisposed());
    EXPECT_THROW(operation.Run(1), Host::ObjectDisposedException);
}

TEST(SyncHandlerThreading, AnotherThreadDisposesARunningOperation) {
    Operation operation;
    std::atomic<bool> running = false;
    operation.Body = [&] { running = true; };
    std::thread other([&] {
        while (!running) {
            std::this_thread::yield();
        }
        operation.Dispose();
    });
    EXPECT_THROW(operation.Run(2'000'000'000), AbortedException);
    other.join();
    EXPECT_TRUE(operation.get_IsDisposed());
}

} // namespace
} // namespace Corvane::Rasterloom
