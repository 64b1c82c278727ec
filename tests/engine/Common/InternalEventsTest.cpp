#include "Common/InternalEvents.h"

#include "ErrorHandling/Exceptions.h"
#include "EventsProbe.h"
#include "Throws.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace ImagingFramework {
namespace {

using Testing::EventsProbe;

TEST(InternalEvents, StepsStopAtTheEndsAndReportWhatMoved) {
    EventsProbe events;
    events.SetProgressMaxValue(10);
    events.OnProgress(4);
    EXPECT_EQ(events.Current(), 4);
    events.OnProgress(0);
    EXPECT_FALSE(events.Changed());
    events.OnProgress(100);
    EXPECT_EQ(events.Current(), 10);
    EXPECT_TRUE(events.Changed());
    events.OnProgress(100);
    EXPECT_FALSE(events.Changed());
    events.OnProgress(-100);
    EXPECT_EQ(events.Current(), 0);

    EventsProbe empty; // minimum = maximum: the first step shows, and nothing is divided
    empty.SetProgressUserMode(1);
    empty.OnProgress(1);
    EXPECT_TRUE(empty.Changed());
    EXPECT_EQ(empty.Current(), 0);
}

TEST(InternalEvents, UserUnitsReportOnlyVisibleMoves) {
    EventsProbe events;
    events.SetUserProgressMaxValue(200);
    events.SetProgressUserMode(1);
    events.SetProgressMaxValue(1000);
    for (int i = 0; i < 1000; ++i) {
        events.OnProgress(1);
        if (i == 6) {
            EXPECT_EQ(events.Current(), 1); // 7 x 0.2, cut
        }
    }
    // The first step, and each of the moves to 1..200.
    EXPECT_EQ(events.Changes(), 201);
    EXPECT_EQ(events.Current(), 200);
}

TEST(InternalEvents, SettingABoundClearsAbortAndSwapsReversedPairs) {
    EventsProbe events;
    events.Abort();
    std::uint16_t flag = 0;
    events.CheckAbort(&flag);
    EXPECT_EQ(flag, EventsTrue);
    events.SetUserProgressMinValue(300);
    EXPECT_FALSE(events.IsAborted());
    std::int32_t value = 0;
    events.GetUserProgressMinValue(&value);
    EXPECT_EQ(value, 100);
    events.GetUserProgressMaxValue(&value);
    EXPECT_EQ(value, 300);
    EXPECT_EQ(ThrownText<ArgumentNullPointerException>([&] { events.GetProgressMaxValue(nullptr); }),
              "Argument is null pointer (pValue).");
    EXPECT_THROW(events.CheckAbort(nullptr), ArgumentNullPointerException);
}

TEST(InternalEvents, OperationsInARowFormOneRange) {
    EventsProbe events;
    IInternalEventsHostImpl host;
    host.SetEvents(&events);
    std::int32_t minimum = -1;
    std::int32_t maximum = -1;
    for (const std::int32_t expected : {0, 100}) {
        host.ResetProgress(100);
        events.GetProgressMinValue(&minimum);
        events.GetProgressMaxValue(&maximum);
        EXPECT_EQ(minimum, expected);
        EXPECT_EQ(maximum, expected + 100);
        host.UpdateEvents(30);
        EXPECT_EQ(events.Current(), expected + 30);
    }
    events.Abort();
    EXPECT_THROW(host.UpdateEvents(1), AbortedException);
    EXPECT_EQ(events.Current(), 131); // the step counts before the flag is looked at
}

TEST(InternalEvents, TimeoutsNeedEvents) {
    EventsProbe events;
    IInternalEventsHostImpl host;
    host.SetTimeout(1);
    host.ResetProgress(10);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_NO_THROW(host.UpdateEvents(1));
    host.SetEvents(&events);
    EXPECT_THROW(host.UpdateEvents(1), TimeOutException);
    EXPECT_EQ(events.Current(), 0); // it fails before the step counts
    host.SetTimeout(0);
    EXPECT_NO_THROW(host.UpdateEvents(1));
}

TEST(InternalEvents, ReporterSwallowsStepsBeyondItsNumber) {
    EventsProbe events;
    ProgressReporter reporter;
    reporter.SetEvents(&events);
    reporter.SetMaximumStepCount(10);
    EXPECT_EQ(reporter.Report(8), 8);
    EXPECT_EQ(reporter.Report(5), 10); // two of them
    EXPECT_EQ(reporter.Report(5), 10);
    EXPECT_EQ(events.Current(), 10);
}

TEST(InternalEventsThreading, APausedWorkerSleepsThenAborts) {
    EventsProbe events;
    IInternalEventsHostImpl host;
    host.SetEvents(&events);
    host.ResetProgress(1'000'000);
    events.SetPause(EventsTrue);
    bool aborted = false;
    std::int32_t steps = 0;
    std::thread worker([&] {
        try {
            for (;;) {
                host.UpdateEvents(1);
                ++steps;
            }
        } catch (const AbortedException&) {
            aborted = true;
        }
    });
    while (events.Current() == 0) {
        std::this_thread::yield();
    }
    EXPECT_EQ(events.Current(), 1);
    events.Abort();
    EXPECT_EQ(events.Current(), 1);
    events.SetPause(0);
    worker.join();
    EXPECT_TRUE(aborted);
    EXPECT_LE(steps, 1); // the flag was read before or after the pause began
}

} // namespace
} // namespace ImagingFramework
