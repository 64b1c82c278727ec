// Memory that runs out, at each allocation of each operation: the caller gets the failure that says so, the bitmap stays as it
// was and can be used, and no file is half written. What leaks is found by the leak checker of the sanitized builds.

#include "EveryOperation.h"
#include "MemoryManagement/Memory.h"
#include "TempFolder.h"

#include <Corvane/Rasterloom/BitmapStatisticsProvider.h>
#include <Corvane/Rasterloom/ChannelsProvider.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/GlobalSettings.h>
#include <Corvane/Rasterloom/Histogram.h>

namespace Corvane::Rasterloom {
namespace {

using Bytes = std::vector<std::uint8_t>;

/// Runs `work` with its first allocation failing, with its second, and so on until it runs through. `check` looks at what a
/// failure leaves. Returns the number of failures.
template <class Work, class Check> int FailEachAllocation(Work work, Check check) {
    for (int number = 1;; ++number) {
        ImagingFramework::FailAllocation(number);
        std::string text;
        try {
            work();
        } catch (const UnexpectedException& failure) {
            text = failure.get_Message();
        } catch (const std::exception& failure) {
            ADD_FAILURE() << "allocation " << number << ": " << typeid(failure).name() << ": " << failure.what();
        }
        if (ImagingFramework::FailAllocation(0) > 0) {
            EXPECT_EQ(text, "") << "nothing failed";
            return number - 1;
        }
        EXPECT_EQ(text, "Unable to commit memory.") << "allocation " << number;
        check();
    }
}

class ExhaustedMemoryOfCodecs : public testing::TestWithParam<std::int64_t>, protected TempFolder {
protected:
    void SetUp() override {
        Codecs::FillWithNoise(m_source);
        m_source.set_ColorProfile(std::make_shared<ColorProfile>(std::span(TestProfiles::Rgb())));
        m_file = Codecs::SaveTo(GetParam(), m_source);
    }

    Bitmap m_source;
    Bytes m_file;
};

TEST_P(ExhaustedMemoryOfCodecs, LoadsOrLeavesTheBitmap) {
    Bitmap target(3, 2, PixelFormat::Format8bppGrayScale);
    const auto isUnchanged = [&] {
        EXPECT_EQ(target.get_Width(), 3);
        EXPECT_EQ(target.GetPixel(2, 1).ToInt32(), Color(GrayScaleColor(0)).ToInt32());
    };
    const auto file = [&] { return std::make_shared<Host::MemoryStream>(m_file); };
    EXPECT_GE(FailEachAllocation([&] { target.Load(file()); }, isUnchanged), 2);
    Bitmap again;
    again.Load(file());
    EXPECT_EQ(Contents(target), Contents(again));

    target.Create(3, 2, PixelFormat::Format8bppGrayScale);
    EXPECT_GE(FailEachAllocation([&] { target.LoadThumbnail(file(), 20, 0); }, isUnchanged), 2);
    EXPECT_EQ(target.get_Width(), 20);
    target.Create(3, 2, PixelFormat::Format8bppGrayScale);
    const auto path = Write("picture", {reinterpret_cast<const char*>(m_file.data()), m_file.size()});
    FailEachAllocation([&] { target.Load(path); }, isUnchanged);
    EXPECT_EQ(Contents(target), Contents(again));
}

TEST_P(ExhaustedMemoryOfCodecs, SavesAllOrNothing) {
    const auto path = Write("picture", "what was there before");
    const auto options = Codecs::FormatManager::CreateEncoderOptions(GetParam());
    const auto isUntouched = [&] {
        EXPECT_EQ(Read("picture"), "what was there before");
        EXPECT_EQ(Names(), std::set<std::string>{"picture"});
    };
    m_source.get_ColorManagement()->Convert(PixelFormat::Format64bppArgb); // which few formats take as it is
    EXPECT_GE(FailEachAllocation([&] { m_source.Save(path, options.get()); }, isUntouched), 1);
    const std::string file = Read("picture");
    EXPECT_EQ(Bytes(file.begin(), file.end()), Codecs::SaveTo(GetParam(), m_source));
}

INSTANTIATE_TEST_SUITE_P(All, ExhaustedMemoryOfCodecs,
                         testing::ValuesIn(Codecs::FormatManager::SupportedMediaFormatsForSave()), Codecs::CodecName);

TEST(ExhaustedMemory, OperationsSucceedOrLeaveTheBitmap) {
    for (const bool parallel : {false, true}) {
        GlobalSettings::set_MultiProcessorSupport(parallel);
        for (const Operation& operation : EveryOperation()) {
            SCOPED_TRACE(operation.Name);
            Bitmap bitmap;
            operation.Prepare(bitmap);
            const Bytes before = Contents(bitmap);
            const int failures = FailEachAllocation([&] { operation.Run(bitmap); },
                                                    [&] { EXPECT_EQ(Contents(bitmap), before); });
            EXPECT_GE(failures, 1);
            Bitmap other;
            operation.Prepare(other);
            operation.Run(other);
            EXPECT_EQ(Contents(bitmap), Contents(other)) << "what failed before changes nothing";
        }
    }
    GlobalSettings::set_MultiProcessorSupport(false);
}

TEST(ExhaustedMemory, CopiesAndCountsSucceedOrFail) {
    Bitmap bitmap;
    Codecs::FillWithNoise(bitmap);
    const auto nothing = [] {};
    EXPECT_GE(FailEachAllocation([&] { bitmap.Clone(); }, nothing), 1);
    EXPECT_GE(FailEachAllocation([&] { bitmap.get_Statistics()->GetLuminosityHistogram(); }, nothing), 1);
    EXPECT_GE(FailEachAllocation([&] { bitmap.get_Channels()->get_Channel(0); }, nothing), 1);
    EXPECT_GE(FailEachAllocation([&] { bitmap.GetEmptyMask(); }, nothing), 1);
    const Bytes before = Contents(bitmap);
    const auto isUnchanged = [&] { EXPECT_EQ(Contents(bitmap), before); };
    EXPECT_GE(FailEachAllocation([&] { bitmap.Create(5, 5, PixelFormat::Format24bppRgb); }, isUnchanged), 1);
}

} // namespace
} // namespace Corvane::Rasterloom
