// Starts a long resize on a worker and stops it from the main thread. Usage: abort_from_another_thread IN
#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <atomic>
#include <iostream>
#include <thread>

using namespace Corvane::Rasterloom;

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::cerr << "usage: abort_from_another_thread IN\n";
        return 2;
    }
    Bitmap bitmap{std::filesystem::path(argv[1])};
    std::atomic<bool> begun{false};
    const auto progress = bitmap.Progress.Subscribe([&](ProgressEventArgs& args) { begun = args.get_Current() > 0; });
    bool aborted = false;
    std::thread worker([&] {
        try {
            bitmap.get_Transforms()->Resize(12000, 8000, Transforms::InterpolationMode::MitchellFilter);
        } catch (const AbortedException&) {
            aborted = true; // the bitmap keeps the raster it had
        }
        begun = true;
    });
    while (!begun) {
        std::this_thread::yield();
    }
    bitmap.Abort();
    worker.join();
    std::cout << (aborted ? "aborted" : "finished") << ", the bitmap is " << bitmap.get_Width() << " pixels wide\n";
    return 0;
} catch (const Host::Exception& failure) {
    std::cerr << failure.get_Message() << '\n';
    return 1;
}
