// What goes wrong while a codec works, over all codecs that there are: streams that fail, handlers that raise, aborts, files
// that end too early. Nothing may crash, leak or change the bitmap, and the failure must arrive as it was.

#include "EveryCodec.h"
#include "PcxBuilder.h"

#include <Corvane/Rasterloom/Codecs/BmpEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/ExifDictionary.h>
#include <Corvane/Rasterloom/Codecs/IptcDictionary.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/PngEncoderOptions.h>
#include <Corvane/Rasterloom/ColorManagementProvider.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include <functional>
#include <ostream>

namespace Corvane::Rasterloom::Codecs {
namespace {

// --- Files

/// A way to write a file: the settings of its format, and the pixels that it is written from.
struct Way {
    std::string Name;
    std::shared_ptr<EncoderOptions> Options;
    PixelFormat Format = PixelFormat::Format24bppRgb;

    friend void PrintTo(const Way& way, std::ostream* pOut) { *pOut << way.Name; }
};

std::shared_ptr<JpegEncoderOptions> JpegWithMetadata() {
    auto options = std::make_shared<JpegEncoderOptions>(75, true);
    options->set_RestartInterval(1);
    options->set_Exif(std::make_shared<ExifDictionary>());
    options->get_Exif()->set_Item(ExifDictionary::Model, std::string("Camera"));
    options->set_Iptc(std::make_shared<IptcDictionary>());
    options->get_Iptc()->set_Item(IptcDictionary::Caption, std::string("A caption"));
    options->set_Xmp("<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?><x:xmpmeta xmlns:x='adobe:ns:meta/'/><?xpacket end='w'?>");
    return options;
}

/// All formats as they are written by default, and what makes a codec go other ways.
std::vector<Way> AllWays() {
    std::vector<Way> ways;
    for (const std::int64_t format : FormatManager::SupportedMediaFormatsForSave()) {
        ways.push_back({NameOf(format), FormatManager::CreateEncoderOptions(format)});
    }
    ways.push_back({"BmpRle8", std::make_shared<BmpEncoderOptions>(CompressionType::Rle), PixelFormat::Format8bppIndexed});
    ways.push_back({"BmpRle4", std::make_shared<BmpEncoderOptions>(CompressionType::Rle), PixelFormat::Format4bppIndexed});
    ways.push_back({"JpegProgressiveWithMetadata", JpegWithMetadata()});
    ways.push_back({"JpegCmyk", std::make_shared<JpegEncoderOptions>(), PixelFormat::Format32bppCmyk});
    ways.push_back({"PngInterlaced", std::make_shared<PngEncoderOptions>(true)});
    ways.push_back({"PngPalette", std::make_shared<PngEncoderOptions>(), PixelFormat::Format8bppIndexed});
    return ways;
}

void FillFor(const Way& way, Bitmap& bitmap) {
    FillWithNoise(bitmap);
    bitmap.get_ColorManagement()->Convert(way.Format);
}

std::vector<std::uint8_t> Save(const Way& way, Bitmap& bitmap, std::int64_t writeLimit = FailingStream::NoLimit) {
    const auto stream =
        std::make_shared<FailingStream>(std::vector<std::uint8_t>{}, FailingStream::NoLimit, writeLimit);
    bitmap.Save(stream, way.Options.get());
    return stream->GetBuffer();
}

std::vector<std::uint8_t> PcxFile(std::uint8_t planes, std::uint8_t bits) {
    PcxBuilder file{.Bits = bits, .Planes = planes, .Width = NoiseWidth, .Height = NoiseHeight};
    file.BytesPerLine = bits == 8 ? NoiseWidth : (NoiseWidth + 7) / 8;
    std::vector<std::uint8_t> lines(std::size_t{file.BytesPerLine} * planes * NoiseHeight);
    std::uint32_t state = 1;
    std::ranges::generate(lines, [&] { return static_cast<std::uint8_t>((state = state * 1664525 + 1013904223) >> 24); });
    file.Data = PcxBuilder::Pack(lines);
    if (planes == 1 && bits == 8) {
        file.Tail = PcxBuilder::FilePalette();
    }
    return file.Build();
}

/// A sound file of each kind that is read: written here where the library can, else put together.
struct SoundFile {
    std::string Name;
    std::function<std::vector<std::uint8_t>()> Make;

    friend void PrintTo(const SoundFile& file, std::ostream* pOut) { *pOut << file.Name; }
};

std::vector<SoundFile> SoundFiles() {
    std::vector<SoundFile> files;
    for (const Way& way : AllWays()) {
        files.push_back({way.Name, [way] {
                             Bitmap source;
                             FillFor(way, source);
                             return Save(way, source);
                         }});
    }
    files.push_back({"PcxOf256Colors", [] { return PcxFile(1, 8); }});
    files.push_back({"PcxOfFourPlanes", [] { return PcxFile(4, 1); }});
    return files;
}

// --- Stops

/// How many times `act` was carried out: at the first progress step, then at the second, until the work comes to its end.
template <class Work, class Act>
std::int32_t CountStops(Bitmap& bitmap, Work work, Act act) {
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
}

/// The last step may come when the work is done; an abort has nothing to stop then.
template <class Work>
void RaiseAndAbortAtEveryStep(Bitmap& bitmap, Work work) {
    EXPECT_GE(CountStops(bitmap, work, [](Bitmap&) { throw HostFailure(); }), 2);
    EXPECT_GE(CountStops(bitmap, work, [](Bitmap& running) { running.Abort(); }), 1);
}

// --- Loading

class LoadFaults : public testing::TestWithParam<SoundFile> {
protected:
    void SetUp() override { m_file = GetParam().Make(); }

    static void Load(Bitmap& bitmap, std::vector<std::uint8_t> file, std::int64_t readLimit = FailingStream::NoLimit) {
        bitmap.Load(std::make_shared<FailingStream>(std::move(file), readLimit));
    }

    std::vector<std::uint8_t> m_file;
};

TEST_P(LoadFaults, AFileThatEndsAnywhereIsDamagedOrUnknown) {
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

TEST_P(LoadFaults, ASourceThatFailsIsHeard) {
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

TEST_P(LoadFaults, AnyCallOfTheSourceMayFail) {
    // Loading is the same every time, so every call is the last one once.
    const auto whole = std::make_shared<FailingStream>(m_file);
    Bitmap target;
    target.Load(whole);
    for (std::int64_t call = 0; call < whole->get_Calls(); ++call) {
        target.Create(3, 2, PixelFormat::Format8bppGrayScale);
        try {
            // A probe that fails is no match, and what fails when the work is done is not heard.
            target.Load(std::make_shared<FailingStream>(m_file, FailingStream::NoLimit, FailingStream::NoLimit, call));
        } catch (const HostFailure&) {
            EXPECT_EQ(target.get_Width(), 3) << call;
        } catch (const MediaUnsupportedException&) {
            EXPECT_EQ(target.get_Width(), 3) << call;
        } catch (const Host::ArgumentException&) { // of a reader that a test before has registered
            EXPECT_EQ(target.get_Width(), 3) << call;
        }
    }
}

TEST_P(LoadFaults, HandlersMayRaiseAndAbortAtEveryStep) {
    Bitmap target;
    RaiseAndAbortAtEveryStep(target, [this](Bitmap& bitmap) { Load(bitmap, m_file); });
}

INSTANTIATE_TEST_SUITE_P(All, LoadFaults, testing::ValuesIn(SoundFiles()), [](const auto& info) { return info.param.Name; });

// --- Saving

class SaveFaults : public testing::TestWithParam<Way> {
protected:
    void SetUp() override { FillFor(GetParam(), m_source); }

    Bitmap m_source;
};

TEST_P(SaveFaults, ATargetThatFailsIsHeard) {
    const std::vector<std::uint8_t> file = Save(GetParam(), m_source);
    const auto size = static_cast<std::int64_t>(file.size());
    for (std::int64_t limit = 0; limit < size; limit += std::max<std::int64_t>(1, size / 40)) {
        EXPECT_THROW(Save(GetParam(), m_source, limit), HostFailure) << limit;
    }
    EXPECT_EQ(Save(GetParam(), m_source, size), file);
}

TEST_P(SaveFaults, AnyCallOfTheTargetMayFail) {
    const auto written = std::make_shared<FailingStream>(std::vector<std::uint8_t>{});
    m_source.Save(written, GetParam().Options.get());
    for (std::int64_t call = 0; call < written->get_Calls(); ++call) {
        const auto stream = std::make_shared<FailingStream>(std::vector<std::uint8_t>{}, FailingStream::NoLimit,
                                                            FailingStream::NoLimit, call);
        EXPECT_THROW(m_source.Save(stream, GetParam().Options.get()), HostFailure) << call;
    }
}

TEST_P(SaveFaults, HandlersMayRaiseAndAbortAtEveryStep) {
    RaiseAndAbortAtEveryStep(m_source, [](Bitmap& bitmap) { Save(GetParam(), bitmap); });
}

INSTANTIATE_TEST_SUITE_P(All, SaveFaults, testing::ValuesIn(AllWays()), [](const auto& info) { return info.param.Name; });

} // namespace
} // namespace Corvane::Rasterloom::Codecs
