// What stops an operation at any of its steps: an abort, a handler that raises. The caller hears it, the bitmap stays as it was
// and can be used.

#include "EveryOperation.h"

#include <Corvane/Rasterloom/Exceptions.h>

namespace Corvane::Rasterloom {
namespace {

/// Runs the operation with `act` at its first step, at its second, and so on until it runs through. Returns how often it
/// was stopped.
template <class Act> int StopAtEachStep(const Operation& operation, Act act) {
    Bitmap bitmap;
    operation.Prepare(bitmap);
    const auto before = Contents(bitmap);
    for (int stop = 0;; ++stop) {
        int step = 0;
        const auto progress = bitmap.Progress.Subscribe([&](ProgressEventArgs&) {
            if (step++ == stop) {
                act(bitmap);
            }
        });
        try {
            operation.Run(bitmap);
            // What is asked for at the last step of the work comes too late; one report may follow it.
            EXPECT_LE(step, stop + 2);
            return stop;
        } catch (const AbortedException&) {
        } catch (const Codecs::HostFailure&) {
        }
        EXPECT_EQ(Contents(bitmap), before) << "step " << stop;
    }
}

TEST(OperationFaults, AbortsAtEveryStep) {
    for (const Operation& operation : EveryOperation()) {
        SCOPED_TRACE(operation.Name);
        // The last step may come when the work is done; an abort has nothing to stop then.
        EXPECT_GE(StopAtEachStep(operation, [](Bitmap& bitmap) { bitmap.Abort(); }), 1);
    }
}

TEST(OperationFaults, HandlersMayRaiseAtEveryStep) {
    for (const Operation& operation : EveryOperation()) {
        SCOPED_TRACE(operation.Name);
        EXPECT_GE(StopAtEachStep(operation, [](Bitmap&) { throw Codecs::HostFailure(); }), 2);
    }
}

} // namespace
} // namespace Corvane::Rasterloom
