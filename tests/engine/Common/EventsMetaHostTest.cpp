#include "Common/EventsMetaHost.h"

#include "ErrorHandling/Exceptions.h"
#include "EventsProbe.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace ImagingFramework {
namespace {

using Testing::EventsProbe;

/// A worker as an engine loop sees itself.
IInternalEventsHostImpl MakeWorker(EventsMetaHost& host, std::size_t index, std::int32_t steps) {
    IInternalEventsHostImpl worker;
    worker.SetEvents(host.GetWorkerEvents(index));
    worker.ResetProgress(steps);
    return worker;
}

TEST(EventsMetaHost, WeightsMergeIntoOneValue) {
    EventsProbe events;
    EventsMetaHost host({1, 3}, {}, 100);
    host.SetEvents(&events);
    auto light = MakeWorker(host, 0, 10);
    auto heavy = MakeWorker(host, 1, 20);
    light.UpdateEvents(5); // 5/10 of a quarter
    EXPECT_EQ(events.Current(), 12);
    heavy.UpdateEvents(10); // and half of three quarters
    EXPECT_EQ(events.Current(), 50);
    light.UpdateEvents(5);
    heavy.UpdateEvents(10);
    EXPECT_EQ(events.Current(), 100);
    EXPECT_THROW(host.UpdateEvents(1), UnexpectedException);
    EXPECT_THROW(host.GetWorkerEvents(2), ArgumentOutOfRangeException);

    // The same host again, from the start, on the next part of the real range.
    host.SetEvents(&events);
    EXPECT_EQ(events.Current(), 100);
    MakeWorker(host, 1, 2).UpdateEvents(1);
    EXPECT_EQ(events.Current(), 137);
}

TEST(EventsMetaHost, SilentWorkersNeitherReportNorRaise) {
    EventsProbe events;
    EventsMetaHost host({1, 1}, {1}, 100);
    host.SetEvents(&events);
    auto loud = MakeWorker(host, 0, 10);
    auto silent = MakeWorker(host, 1, 10);
    silent.UpdateEvents(10);
    EXPECT_EQ(events.Current(), 0);
    loud.UpdateEvents(1); // 10 % and 100 % of a half each
    EXPECT_EQ(events.Current(), 55);
    events.Abort();
    EXPECT_NO_THROW(silent.UpdateEvents(1));
    EXPECT_THROW(loud.UpdateEvents(1), AbortedException);
}

TEST(EventsMetaHost, EveryFailureInReportingIsAnAbort) {
    EventsProbe events;
    EventsMetaHost host({1}, {}, 10);
    host.SetTimeout(1);
    host.SetEvents(&events);
    auto worker = MakeWorker(host, 0, 10);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_THROW(worker.UpdateEvents(1), AbortedException);
    host.SetEvents(nullptr);
    EXPECT_NO_THROW(worker.UpdateEvents(1));
}

TEST(EventsMetaHostThreading, WorkersReportAtOnce) {
    EventsProbe events;
    EventsMetaHost host({1, 1, 1, 1}, {3}, 1000);
    host.SetEvents(&events);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < 4; ++i) {
        threads.emplace_back([&host, i] {
            auto worker = MakeWorker(host, i, 500);
            for (int step = 0; step < 500; ++step) {
                worker.UpdateEvents(1);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    host.GetWorkerEvents(0)->OnProgress(0); // what the silent one did shows with the next report
    EXPECT_EQ(events.Current(), 1000);
}

} // namespace
} // namespace ImagingFramework
