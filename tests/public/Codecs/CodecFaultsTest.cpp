// What goes wrong while a codec works, over all codecs that there are: streams that fail, handlers that raise, aborts, files
// that end too early. Nothing may crash, leak or change the bitmap, and the failure must arrive as it was.

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/ExifDictionary.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/IptcDictionary.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/PngEncoderOptions.h>
#include <Corvane/Rasterloom/ColorManagementProvider.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>

namespace Corvane::Rasterloom::Codecs {
namespace {

/// A failure that the library does not know.
struct HostFailure : std::runtime_error {
    HostFailure() : std::runtime_error("the host's own failure") {}
};

constexpr std::int64_t NoLimit = std::int64_t{1} << 40;

/// A memory stream that fails at a byte, after moving those before it, or at a call.
class FailingStream : public Host::MemoryStream {
public:
    explicit FailingStream(std::vector<std::uint8_t> bytes, std::int64_t readLimit = NoLimit,
                           std::int64_t writeLimit = NoLimit, std::int64_t callLimit = NoLimit)
        : MemoryStream(std::move(bytes)), m_readLimit(readLimit), m_writeLimit(writeLimit), m_callLimit(callLimit) {}

    std::size_t Read(void* buffer, std::size_t size) override {
        CountCall();
        const std::int64_t left = m_readLimit - get_Position();
        if (left <= 0) {
            throw HostFailure();
        }
        return MemoryStream::Read(buffer, std::min(size, static_cast<std::size_t>(left)));
    }
    void Write(const void* buffer, std::size_t size) override {
        CountCall();
        if (get_Position() + static_cast<std::int64_t>(size) > m_writeLimit) {
            throw HostFailure();
        }
        MemoryStream::Write(buffer, size);
    }
    std::int64_t Seek(std::int64_t offset, Host::SeekOrigin origin) override {
        CountCall();
        return MemoryStream::Seek(offset, origin);
    }
    std::int64_t get_Calls() const { return m_calls; }

private:
    void CountCall() {
        if (m_calls++ >= m_callLimit) {
            throw HostFailure();
        }
    }

    std::int64_t m_readLimit;
    std::int64_t m_writeLimit;
    std::int64_t m_callLimit;
    std::int64_t m_calls = 0;
};

constexpr std::int32_t Width = 61;
constexpr std::int32_t Height = 43;

/// A way to write a file: the settings of its format, and the pixels that it is written from.
struct Way {
    std::string Name;
    std::shared_ptr<EncoderOptions> Options;
    PixelFormat Format = PixelFormat::Format24bppRgb;
};

std::string NameOf(std::int64_t format) {
    std::string name = FormatManager::GetFormatName(format);
    std::erase_if(name, [](unsigned char c) { return std::isalnum(c) == 0; });
    return name;
}

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
    ways.push_back({"JpegProgressiveWithMetadata", JpegWithMetadata()});
    ways.push_back({"JpegCmyk", std::make_shared<JpegEncoderOptions>(), PixelFormat::Format32bppCmyk});
    ways.push_back({"PngInterlaced", std::make_shared<PngEncoderOptions>(true)});
    ways.push_back({"PngPalette", std::make_shared<PngEncoderOptions>(), PixelFormat::Format8bppIndexed});
    return ways;
}

/// Noise, so that no format packs it into nothing.
void Fill(Bitmap& bitmap, PixelFormat format) {
    bitmap.Create(Width, Height, PixelFormat::Format24bppRgb);
    std::uint32_t state = 1;
    for (std::int32_t y = 0; y < Height; ++y) {
        for (std::int32_t x = 0; x < Width; ++x) {
            state = state * 1664525 + 1013904223;
            bitmap.SetPixel(x, y, RgbColor(static_cast<std::int32_t>(state | 0xFF000000U)));
        }
    }
    bitmap.get_ColorManagement()->Convert(format);
}

void SaveTo(const std::shared_ptr<FailingStream>& stream, const Way& way, Bitmap& bitmap) {
    bitmap.Save(stream, way.Options.get());
}

class CodecFaults : public testing::TestWithParam<Way> {
protected:
    void SetUp() override {
        Fill(m_source, GetParam().Format);
        m_file = Save(m_source);
    }

    static std::vector<std::uint8_t> Save(Bitmap& bitmap, std::int64_t writeLimit = NoLimit) {
        const auto stream = std::make_shared<FailingStream>(std::vector<std::uint8_t>{}, NoLimit, writeLimit);
        SaveTo(stream, GetParam(), bitmap);
        return stream->GetBuffer();
    }
    static void Load(Bitmap& bitmap, std::vector<std::uint8_t> file, std::int64_t readLimit = NoLimit) {
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
        EXPECT_THROW(Save(m_source, limit), HostFailure) << limit;
    }
    EXPECT_EQ(Save(m_source, size), m_file);
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
    const auto save = [](Bitmap& bitmap) { Save(bitmap); };
    const auto raise = [](Bitmap&) { throw HostFailure(); };
    const auto abort = [](Bitmap& bitmap) { bitmap.Abort(); };
    Bitmap target;
    // The last step may come when the work is done; an abort has nothing to stop then.
    EXPECT_GE(steps(target, load, raise), 2);
    EXPECT_GE(steps(target, load, abort), 1);
    EXPECT_GE(steps(m_source, save, raise), 2);
    EXPECT_GE(steps(m_source, save, abort), 1);
}

TEST_P(CodecFaults, AnyCallOfAStreamMayFail) {
    // Loading and saving is the same every time, so every call is the last one once.
    const auto whole = std::make_shared<FailingStream>(m_file);
    Bitmap target(3, 2, PixelFormat::Format8bppGrayScale);
    target.Load(whole);
    for (std::int64_t call = 0; call < whole->get_Calls(); ++call) {
        target.Create(3, 2, PixelFormat::Format8bppGrayScale);
        try {
            // A probe that fails is no match, and what fails when the work is done is not heard.
            target.Load(std::make_shared<FailingStream>(m_file, NoLimit, NoLimit, call));
        } catch (const HostFailure&) {
            EXPECT_EQ(target.get_Width(), 3) << call;
        } catch (const MediaUnsupportedException&) {
            EXPECT_EQ(target.get_Width(), 3) << call;
        }
    }
    const auto written = std::make_shared<FailingStream>(std::vector<std::uint8_t>{});
    SaveTo(written, GetParam(), m_source);
    for (std::int64_t call = 0; call < written->get_Calls(); ++call) {
        const auto stream = std::make_shared<FailingStream>(std::vector<std::uint8_t>{}, NoLimit, NoLimit, call);
        EXPECT_THROW(SaveTo(stream, GetParam(), m_source), HostFailure) << call;
    }
}

INSTANTIATE_TEST_SUITE_P(All, CodecFaults, testing::ValuesIn(AllWays()),
                         [](const auto& info) { return info.param.Name; });

} // namespace
} // namespace Corvane::Rasterloom::Codecs
