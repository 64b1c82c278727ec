// The code of ../progress.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/SimpleMessageLoop.h>
#include <Corvane/Rasterloom/Thread.h>
#include <Corvane/Rasterloom/Transforms/Resize.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <atomic>
#include <future>
#include <thread>

using namespace Corvane::Rasterloom;

namespace {

void Watch() {
    Bitmap picture("lake.bmp");
    int percent = 0;
    // [watch]
    const auto subscription = picture.Progress.Subscribe(
        [&](ProgressEventArgs& args) { percent = args.get_Current() * 100 / args.get_Maximum(); });
    picture.get_Transforms()->Resize(1440, 960, Transforms::InterpolationMode::Lanczos3Filter);
    // percent is 100; the subscription ends with its token
    // [watch end]
    Expect(percent == 100);
}

void AbortInHandler() {
    Bitmap picture("lake.bmp");
    bool aborted = false;
    // [handler]
    const auto subscription = picture.Progress.Subscribe([&](ProgressEventArgs& args) {
        if (args.get_Current() * 2 > args.get_Maximum()) {
            picture.Abort(); // the one member that a handler of Progress may call
        }
    });
    try {
        picture.get_Transforms()->Resize(1440, 960);
    } catch (const AbortedException&) {
        aborted = true; // the picture is 720 x 480 as before
    }
    // [handler end]
    Expect(aborted && picture.get_Width() == 720);
}

void AbortFromThread() {
    Bitmap picture("lake.bmp");
    // [thread]
    std::atomic<bool> begun{false};
    const auto subscription = picture.Progress.Subscribe([&](ProgressEventArgs&) { begun = true; });
    auto work = std::async(std::launch::async, [&] {
        try {
            picture.get_Transforms()->Resize(9000, 6000, Transforms::InterpolationMode::MitchellFilter);
            return true;
        } catch (const AbortedException&) {
            return false;
        }
    });
    while (!begun) {
        std::this_thread::yield();
    }
    picture.Abort(); // from any thread; takes no lock and does not wait
    const bool finished = work.get();
    // [thread end]
    Expect(!finished && picture.get_Width() == 720);
}

void TimeLimit() {
    Bitmap picture("lake.bmp");
    bool late = false;
    // [time]
    picture.set_Timeout(1); // milliseconds, for waiting as well as for working; -1, as at first, is no limit
    try {
        picture.get_Transforms()->Resize(9000, 6000, Transforms::InterpolationMode::Lanczos3Filter);
    } catch (const TimeoutException&) {
        late = true;
    }
    // [time end]
    Expect(late && picture.get_Width() == 720);
}

void Transform() {
    Bitmap picture("lake.bmp");
    std::string order;
    // [transform]
    Transforms::Resize resize(300.0F, 200.0F);
    const auto starting = resize.Starting.Subscribe([&](EventArgs&) { order += "starting "; });
    const auto stopped = resize.Stopped.Subscribe([&](ErrorEventArgs& args) {
        order += args.get_Exception() ? "failed" : "stopped";
    });
    resize.ApplyTransform(picture);
    // [transform end]
    Expect(order == "starting stopped");
}

void Background() {
    // [background]
    const auto loop = std::make_shared<Host::SimpleMessageLoop>(); // a host with windows has a loop already
    Host::MessageLoop::set_Current(loop);

    Bitmap picture("lake.bmp");
    Thread worker([&] { picture.get_Transforms()->Resize(3000, 2000); });
    worker.set_SynchronizationMode(SynchronizationMode::AsyncViaMessageLoop);
    const auto stopped = worker.Stopped.Subscribe([&](ErrorEventArgs&) { loop->Quit(); }); // on this thread
    worker.Start(); // returns at once
    loop->Run();
    if (worker.get_Exception()) {
        std::rethrow_exception(worker.get_Exception());
    }
    // [background end]
    Host::MessageLoop::set_Current(nullptr);
    Expect(picture.get_Width() == 3000);
}

} // namespace

int main() { return RunPage({Watch, AbortInHandler, AbortFromThread, TimeLimit, Transform, Background}); }
