// Memory that runs out, at each allocation of each operation: the caller gets the failure that says so, the bitmap stays as it
// was and can be used, and no file is half written. What leaks is found by the leak checker of the sanitized builds.

#include "EveryOperation.h"
#include "MemoryManagement/Memory.h"
#include "TempFolder.h"

#include <Corvane/Rasterloom/BitmapStatisticsProvider.h>
#include <Corvane/Rasterloom/ChannelsProvider.h>
#include <Corvane/Rasterloom/Codecs/BmpFrame.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/GlobalSettings.h>
#include <Corvane/Rasterloom/Histogram.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace {

/// Objects until the one that cannot be made; 0 and below: all can.
std::atomic<std::int64_t> s_intFailingObject{0};

void* MakeObject(std::size_t size) noexcept {
    if (s_intFailingObject.load(std::memory_order_relaxed) > 0 && s_intFailingObject.fetch_sub(1) == 1) {
        return nullptr;
    }
    return std::malloc(std::max<std::size_t>(size, 1));
}

std::int64_t FailObject(std::int64_t number) noexcept {
    return std::max<std::int64_t>(0, s_intFailingObject.exchange(number));
}

} // namespace

// The whole program's. They are not inlined: the compiler would take what they free for what its own ones have made.
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const object = MakeObject(size);
    if (object == nullptr) {
        throw std::bad_alloc();
    }
    return object;
}
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return MakeObject(size); }
[[gnu::noinline]] void operator delete(void* object) noexcept { std::free(object); }
[[gnu::noinline]] void operator delete(void* object, std::size_t) noexcept { std::free(object); }
[[gnu::noinline]] void operator delete(void* object, const std::nothrow_t&) noexcept { std::free(object); }

namespace Corvane::Rasterloom {
namespace {

using Bytes = std::vector<std::uint8_t>;

/// What runs out: blocks of `AllocMemory`, or `new`.
enum class Supply { Blocks, Objects };

std::int64_t FailFrom(Supply supply, std::int64_t number) {
    return supply == Supply::Blocks ? ImagingFramework::FailAllocation(number) : FailObject(number);
}

/// Whether `work` fails for want of memory; any other failure is a fault.
template <class Work> bool RunsOutOfMemory(Work work) {
    try {
        work();
        return false;
    } catch (const UnexpectedException& failure) {
        FailObject(0);
        EXPECT_EQ(failure.get_Message(), "Unable to commit memory.");
    } catch (const std::bad_alloc&) { // of an object outside the engine
    } catch (const std::exception& failure) {
        FailObject(0);
        ADD_FAILURE() << typeid(failure).name() << ": " << failure.what();
    }
    return true;
}

/// Runs `work` with its first allocation failing, with its second, and so on until it runs through; `begin` makes what it
/// works on, `isUnchanged` and `isDone` look at what it left. Returns the number of failures.
template <class Begin, class Work, class IsUnchanged, class IsDone>
int FailEachAllocation(Supply supply, Begin begin, Work work, IsUnchanged isUnchanged, IsDone isDone) {
    int failures = 0;
    for (std::int64_t number = 1;; number += supply == Supply::Blocks ? 1 : 1 + number / 16) {
        SCOPED_TRACE((supply == Supply::Blocks ? "block " : "object ") + std::to_string(number));
        begin();
        FailFrom(supply, number);
        const bool failed = RunsOutOfMemory(work);
        const bool ranThrough = FailFrom(supply, 0) > 0;
        if (!failed) {
            // What can be done without an object may be.
            EXPECT_TRUE(ranThrough || supply == Supply::Objects) << "nothing failed";
            isDone();
        } else {
            ++failures;
            isUnchanged();
            work(); // and then there is enough
            isDone();
        }
        if (ranThrough || testing::Test::HasFailure()) {
            return failures;
        }
    }
}

class ExhaustedMemoryOfCodecs : public testing::TestWithParam<std::int64_t>, protected TempFolder {
protected:
    void SetUp() override {
        Codecs::FillWithNoise(m_source);
        m_source.set_ColorProfile(ProfileOf(TestProfiles::Rgb()));
        m_file = Codecs::SaveTo(GetParam(), m_source);
    }

    /// `load` must load all or leave the bitmap.
    template <class Load> void LoadEachWay(Load load) {
        Bitmap expected;
        load(expected);
        const Bytes contents = Contents(expected);
        for (const Supply supply : {Supply::Blocks, Supply::Objects}) {
            Bitmap target;
            Bytes before;
            const auto begin = [&] {
                target.Create(RgbColor::Red, 3, 2, PixelFormat::Format24bppRgb); // with the resolution that it has
                before = Contents(target);
            };
            const int failures = FailEachAllocation(
                supply, begin, [&] { load(target); }, [&] { EXPECT_EQ(Contents(target), before); },
                [&] { EXPECT_EQ(Contents(target), contents); });
            EXPECT_GE(failures, 1);
        }
    }

    Bitmap m_source;
    Bytes m_file;
};

TEST_P(ExhaustedMemoryOfCodecs, LoadsOrLeavesTheBitmap) {
    LoadEachWay([&](Bitmap& bitmap) { bitmap.Load(std::make_shared<Host::MemoryStream>(m_file)); });
    LoadEachWay([&](Bitmap& bitmap) { bitmap.LoadThumbnail(std::make_shared<Host::MemoryStream>(m_file), 20, 0); });
    const auto path = Write("picture", {reinterpret_cast<const char*>(m_file.data()), m_file.size()});
    LoadEachWay([&](Bitmap& bitmap) { bitmap.Load(path); });
}

TEST_P(ExhaustedMemoryOfCodecs, SavesAllOrNothing) {
    constexpr std::string_view old = "what was there before";
    const auto options = Codecs::FormatManager::CreateEncoderOptions(GetParam());
    m_source.get_ColorManagement()->Convert(PixelFormat::Format64bppArgb); // which few formats take as it is
    const Bytes expected = Codecs::SaveTo(GetParam(), m_source);
    for (const Supply supply : {Supply::Blocks, Supply::Objects}) {
        const auto path = File("picture");
        const int failures = FailEachAllocation(
            supply, [&] { Write("picture", old); }, [&] { m_source.Save(path, options.get()); },
            [&] {
                EXPECT_EQ(Read("picture"), old);
                EXPECT_EQ(Names(), std::set<std::string>{"picture"});
            },
            [&] {
                const std::string file = Read("picture");
                EXPECT_EQ(Bytes(file.begin(), file.end()), expected);
                EXPECT_EQ(Names(), std::set<std::string>{"picture"});
            });
        EXPECT_GE(failures, 1);
    }
}

INSTANTIATE_TEST_SUITE_P(All, ExhaustedMemoryOfCodecs,
                         testing::ValuesIn(Codecs::FormatManager::SupportedMediaFormatsForSave()), Codecs::CodecName);

class ExhaustedMemory : public testing::TestWithParam<bool> {
protected:
    void SetUp() override { GlobalSettings::set_MultiProcessorSupport(GetParam()); }
    void TearDown() override { GlobalSettings::set_MultiProcessorSupport(false); }
};

TEST_P(ExhaustedMemory, OperationsSucceedOrLeaveTheBitmap) {
    for (const Operation& operation : EveryOperation()) {
        SCOPED_TRACE(operation.Name);
        Bitmap source;
        operation.Prepare(source);
        const Bytes before = Contents(source);
        Bitmap done(source);
        operation.Run(done);
        const Bytes after = Contents(done);
        for (const Supply supply : {Supply::Blocks, Supply::Objects}) {
            Bitmap bitmap;
            const int failures = FailEachAllocation(
                supply, [&] { bitmap.Create(source); }, [&] { operation.Run(bitmap); },
                [&] { EXPECT_EQ(Contents(bitmap), before); }, [&] { EXPECT_EQ(Contents(bitmap), after); });
            EXPECT_GE(failures, 1);
        }
        if (HasFailure()) {
            return; // the others would tell the same
        }
    }
}

INSTANTIATE_TEST_SUITE_P(RowsOf, ExhaustedMemory, testing::Bool(),
                         [](const auto& info) { return info.param ? "AllProcessors" : "OneProcessor"; });

TEST(ExhaustedMemoryOfCopies, SucceedOrFail) {
    Bitmap bitmap;
    Codecs::FillWithNoise(bitmap);
    const Bytes before = Contents(bitmap);
    const auto nothing = [] {};
    const auto isUnchanged = [&] { EXPECT_EQ(Contents(bitmap), before); };
    const std::function<void()> works[] = {[&] { bitmap.Clone(); },
                                           [&] { bitmap.get_Statistics()->GetLuminosityHistogram(); },
                                           [&] { bitmap.get_Channels()->get_Channel(0); },
                                           [&] { bitmap.GetEmptyMask(); },
                                           [&] { bitmap.Export(); },
                                           [&] {
                                               Bitmap copy;
                                               Codecs::BmpFrame(&bitmap).GetBitmap(&copy);
                                           }};
    for (const Supply supply : {Supply::Blocks, Supply::Objects}) {
        for (const auto& work : works) {
            FailEachAllocation(supply, nothing, work, isUnchanged, isUnchanged);
        }
        FailEachAllocation(
            supply, [&] { Codecs::FillWithNoise(bitmap); }, [&] { bitmap.Create(5, 5, PixelFormat::Format24bppRgb); },
            isUnchanged, [&] { EXPECT_EQ(bitmap.get_Width(), 5); });
        Codecs::FillWithNoise(bitmap);
    }
}

} // namespace
} // namespace Corvane::Rasterloom
