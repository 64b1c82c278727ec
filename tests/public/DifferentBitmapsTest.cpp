// Different bitmaps on different threads: what they have in common (the registry, the tables of links and profiles, the memory)
// must neither race nor mix them up.

#include "EveryOperation.h"

#include <latch>
#include <thread>

namespace Corvane::Rasterloom {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes FileOf(std::int64_t format) {
    Bitmap bitmap;
    Codecs::FillWithNoise(bitmap);
    bitmap.set_ColorProfile(ProfileOf(TestProfiles::Rgb()));
    return Codecs::SaveTo(format, bitmap);
}

/// The road of a file: loaded, converted by profiles and by formulas, dithered, resized, turned, saved.
Bytes Travel(const Bytes& file, std::int64_t format) {
    Bitmap thumbnail;
    thumbnail.LoadThumbnail(std::make_shared<Host::MemoryStream>(file), 20, 0);
    Bitmap bitmap(std::make_shared<Host::MemoryStream>(file));
    const auto management = bitmap.get_ColorManagement();
    management->set_ColorManagementEngine(ColorManagementEngine::LittleCms);
    management->set_RgbColorProfile(ColorProfile::FromSrgb());
    management->Convert(PixelFormat::Format32bppArgb);
    management->Convert(PixelFormat::Format32bppCmyk);
    bitmap.get_Transforms()->Resize(40, 0, Transforms::InterpolationMode::Lanczos3Filter);
    bitmap.get_Transforms()->Rotate(10.0F);
    management->Convert(PixelFormat::Format8bppIndexed);
    Bytes result = Codecs::SaveTo(format, bitmap);
    const Bytes small = Codecs::SaveTo(format, thumbnail);
    result.insert(result.end(), small.begin(), small.end());
    return result;
}

// Taken before any test registers formats of its own.
const std::vector<std::int64_t> OwnFormats = Codecs::FormatManager::SupportedMediaFormatsForSave();

TEST(DifferentBitmapsThreading, TravelSideBySide) {
    struct Journey {
        std::int64_t Format;
        Bytes File;
        Bytes Expected;
    };
    std::vector<Journey> journeys;
    for (const std::int64_t format : OwnFormats) {
        const Bytes file = FileOf(format);
        journeys.push_back({format, file, Travel(file, format)});
    }
    constexpr std::size_t threadCount = 4;
    std::latch start(threadCount);
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&, thread] {
            start.arrive_and_wait();
            for (std::size_t i = 0; i < 2 * journeys.size(); ++i) {
                const Journey& journey = journeys[(thread + i) % journeys.size()];
                EXPECT_EQ(Travel(journey.File, journey.Format), journey.Expected);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace
} // namespace Corvane::Rasterloom
