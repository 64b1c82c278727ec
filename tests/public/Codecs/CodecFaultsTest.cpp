// What goes wrong while a codec works, over all codecs that there are: streams that fail, handlers that raise, aborts, files
// that end too early. Nothing may crash, leak or change the bitmap, and the failure must arrive as it was.

#include "EveryCodec.h"

#include <Corvane/Rasterloom/Exceptions.h>

#include <algorithm>

namespace Corvane::Rasterloom::Codecs {
namespace {

class CodecFaults : public testing::TestWithParam<std::int64_t> {
protected:
    void SetUp() override {
        FillWithNoise(m_source);
        m_file = SaveTo(GetParam(), m_source);
    }

    void Load(Bitmap& bitmap, std::vector<std::uint8_t> file, std::int64_t readLimit = FailingStream::NoLimit) {
        bitmap.Load(std::make_shared<FailingStream>(std::move(file), readLimit));
    }

    Bitmap m_source;
    std::vector<std::uint8_t> m_file;
};

TEST_P(CodecFaults, AFileThatEndsAnywhereIsDamagedOrUnknown) {
    Bitmap target(3, 2, PixelFormat::Format8bppGrayScale);
    std::size_t accepted = 0;
    for (std::size_t size = 0; size < m_file.size(); ++size) {
        try {
            Load(target, {m_file.begin(), m_file.begin() + static_cast<std::ptrdiff_t>(size)});
            ++accepted;
            target.Create(3, 2, PixelFormat::Format8bppGrayScale);
        } catch (const MediaCorruptedException&) {
        } catch (const MediaUnsupportedException&) {
        } catch (const Host::IOException&) {
        }
        ASSERT_EQ(target.get_Width(), 3) << size;
    }
    // What stands behind the last pixel may be missing.
    EXPECT_LE(accepted, 16U);
}

TEST_P(CodecFaults, ASourceThatFailsIsHeard) {
    Bitmap target(3, 2, PixelFormat::Format8bppGrayScale);
    const auto size = static_cast<std::int64_t>(m_file.size());
    // While its format is looked for, a failure is no match, unless a reader that a test has registered tells it.
    EXPECT_ANY_THROW(Load(target, m_file, 0));
    for (std::int64_t limit = 100; limit < size; limit += std::max<std::int64_t>(1, size / 40)) {
        EXPECT_THROW(Load(target, m_file, limit), HostFailure) << limit;
        EXPECT_EQ(target.get_Width(), 3);
    }
    EXPECT_NO_THROW(Load(target, m_file, size));
}

TEST_P(CodecFaults, ATargetThatFailsIsHeard) {
    const auto size = static_cast<std::int64_t>(m_file.size());
    for (std::int64_t limit = 0; limit < size; limit += std::max<std::int64_t>(1, size / 40)) {
        EXPECT_THROW(SaveTo(GetParam(), m_source, limit), HostFailure) << limit;
    }
    EXPECT_EQ(SaveTo(GetParam(), m_source, size), m_file);
}

TEST_P(CodecFaults, HandlersMayRaiseAndAbortAtEveryStep) {
    const auto steps = [](Bitmap& bitmap, auto work, auto act) {
        for (std::int32_t stop = 0;; ++stop) {
            std::int32_t step = 0;
            const auto progress = bitmap.Progress.Subscribe([&](ProgressEventArgs&) {
                if (step++ == stop) {
                    act(bitmap);
                }
            });
            try {
                work(bitmap);
            } catch (const HostFailure&) {
                continue;
            } catch (const AbortedException&) {
                continue;
            }
            return stop;
        }
    };
    const auto load = [this](Bitmap& bitmap) { Load(bitmap, m_file); };
    const auto save = [](Bitmap& bitmap) { SaveTo(GetParam(), bitmap); };
    const auto raise = [](Bitmap&) { throw HostFailure(); };
    const auto abort = [](Bitmap& bitmap) { bitmap.Abort(); };
    Bitmap target;
    // The last step may come when the work is done; an abort has nothing to stop then.
    EXPECT_GE(steps(target, load, raise), 2);
    EXPECT_GE(steps(target, load, abort), 1);
    EXPECT_GE(steps(m_source, save, raise), 2);
    EXPECT_GE(steps(m_source, save, abort), 1);
}

INSTANTIATE_TEST_SUITE_P(All, CodecFaults, testing::ValuesIn(FormatManager::SupportedMediaFormatsForSave()), CodecName);

} // namespace
} // namespace Corvane::Rasterloom::Codecs
