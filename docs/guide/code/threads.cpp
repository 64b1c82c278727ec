// The code of ../threads.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/GlobalSettings.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <thread>
#include <vector>

using namespace Corvane::Rasterloom;

namespace {

void Workers() {
    std::filesystem::create_directories("thumbnails");
    // [workers]
    const std::vector<std::filesystem::path> files{"lake.bmp", "text.bmp"};
    std::atomic<std::size_t> next{0};
    std::vector<std::thread> workers;
    for (unsigned i = 0; i < std::max(1U, std::thread::hardware_concurrency()); ++i) {
        workers.emplace_back([&] {
            for (std::size_t number = next++; number < files.size(); number = next++) {
                try {
                    Bitmap thumbnail; // one for each thread
                    thumbnail.LoadThumbnail(files[number], 160, 160);
                    thumbnail.Save("thumbnails" / files[number].filename().replace_extension(".png"));
                } catch (const Host::Exception& failure) {
                    std::cerr << files[number].string() + ": " + failure.get_Message() + "\n";
                }
            }
        });
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    // [workers end]
    Expect(std::filesystem::exists("thumbnails/lake.png") && std::filesystem::exists("thumbnails/text.png"));
}

void Rows() {
    Bitmap picture("lake.bmp");
    // [rows]
    GlobalSettings::set_MultiProcessorSupport(true); // for the process; off at first
    picture.get_Transforms()->Resize(4000, 0, Transforms::InterpolationMode::Lanczos3Filter);
    // [rows end]
    GlobalSettings::set_MultiProcessorSupport(false);
    Bitmap alone("lake.bmp");
    alone.get_Transforms()->Resize(4000, 0, Transforms::InterpolationMode::Lanczos3Filter);
    Expect(alone.Export() == picture.Export());
}

void Locks() {
    Bitmap picture("lake.bmp");
    bool refused = false;
    // [locks]
    picture.Lock(); // several calls of other threads wait now
    try {
        picture.get_Width(); // a call that locks by itself, on the thread that holds the lock
    } catch (const ObjectLockedException&) {
        refused = true;
    }
    picture.Unlock();
    // [locks end]
    Expect(refused);
    bool late = false;
    // [wait]
    picture.set_Timeout(20); // milliseconds
    picture.Lock();
    std::thread other([&] {
        try {
            picture.get_Width();
        } catch (const TimeoutException&) {
            late = true;
        }
    });
    other.join();
    picture.Unlock();
    // [wait end]
    Expect(late);
}

void Views() {
    Bitmap picture("lake.bmp");
    bool refused = false;
    // [views]
    const auto view = picture.LockBits();
    try {
        picture.get_Transforms()->Resize(10, 10);
    } catch (const BitmapLockedException&) {
        refused = true; // as long as the view is out, the raster stays
    }
    picture.UnlockBits(view);
    // [views end]
    Expect(refused);
}

} // namespace

int main() { return RunPage({Workers, Rows, Locks, Views}); }
