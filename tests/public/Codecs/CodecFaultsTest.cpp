// What goes wrong while a codec works, over all codecs that there are: streams that fail, handlers that raise, aborts, files
// that end too early. Nothing may crash, leak or change the bitmap, and the failure must arrive as it was.

#include "PcxBuilder.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <ostream>
#include <stdexcept>

namespace Corvane::Rasterloom::Codecs {
namespace {

/// A failure that the library does not know.
struct HostFailure : std::runtime_error {
    HostFailure() : std::runtime_error("the host's own failure") {}
};

/// A memory stream whose reads or writes fail from a byte on.
class FailingStream : public Host::MemoryStream {
public:
    explicit FailingStream(std::vector<std::uint8_t> bytes, std::int64_t readLimit, std::int64_t writeLimit)
        : MemoryStream(std::move(bytes)), m_readLimit(readLimit), m_writeLimit(writeLimit) {}

    std::size_t Read(void* buffer, std::size_t size) override {
        Check(size, m_readLimit);
        return MemoryStream::Read(buffer, size);
    }
    void Write(const void* buffer, std::size_t size) override {
        Check(size, m_writeLimit);
        MemoryStream::Write(buffer, size);
    }

private:
    void Check(std::size_t size, std::int64_t limit) {
        if (get_Position() + static_cast<std::int64_t>(size) > limit) {
            throw HostFailure();
        }
    }

    std::int64_t m_readLimit;
    std::int64_t m_writeLimit;
};

constexpr std::int64_t NoLimit = std::int64_t{1} << 40;
constexpr std::int32_t Width = 61;
constexpr std::int32_t Height = 43;

/// Noise, so that no format packs it into nothing.
class Noise {
public:
    std::uint32_t Next() { return m_state = m_state * 1664525 + 1013904223; }

private:
    std::uint32_t m_state = 1;
};

void Fill(Bitmap& bitmap) {
    bitmap.Create(Width, Height, PixelFormat::Format24bppRgb);
    Noise noise;
    for (std::int32_t y = 0; y < Height; ++y) {
        for (std::int32_t x = 0; x < Width; ++x) {
            bitmap.SetPixel(x, y, RgbColor(static_cast<std::int32_t>(noise.Next() | 0xFF000000U)));
        }
    }
}

std::vector<std::uint8_t> SaveTo(std::int64_t format, Bitmap& bitmap, std::int64_t writeLimit = NoLimit) {
    const auto stream = std::make_shared<FailingStream>(std::vector<std::uint8_t>{}, NoLimit, writeLimit);
    bitmap.Save(stream, FormatManager::CreateEncoderOptions(format).get());
    return stream->GetBuffer();
}

std::vector<std::uint8_t> PcxFile(std::uint8_t planes, std::uint8_t bits) {
    PcxBuilder file{.Bits = bits, .Planes = planes, .Width = Width, .Height = Height};
    file.BytesPerLine = bits == 8 ? Width : (Width + 7) / 8;
    std::vector<std::uint8_t> lines(std::size_t{file.BytesPerLine} * planes * Height);
    Noise noise;
    std::ranges::generate(lines, [&] { return static_cast<std::uint8_t>(noise.Next() >> 24); });
    file.Data = PcxBuilder::Pack(lines);
    if (planes == 1 && bits == 8) {
        file.Tail = PcxBuilder::FilePalette();
    }
    return file.Build();
}

std::string NameOf(std::int64_t format) {
    std::string name = FormatManager::GetFormatName(format);
    std::erase_if(name, [](unsigned char c) { return std::isalnum(c) == 0; });
    return name;
}

/// A sound file of each format that is read: written here where the library can, else put together.
struct SoundFile {
    std::string Name;
    std::function<std::vector<std::uint8_t>()> Make;

    friend void PrintTo(const SoundFile& file, std::ostream* pOut) { *pOut << file.Name; }
};

std::vector<SoundFile> SoundFiles() {
    std::vector<SoundFile> files;
    for (const std::int64_t format : FormatManager::SupportedMediaFormatsForSave()) {
        files.push_back({NameOf(format), [format] {
                             Bitmap source;
                             Fill(source);
                             return SaveTo(format, source);
                         }});
    }
    files.push_back({"PcxOf256Colors", [] { return PcxFile(1, 8); }});
    files.push_back({"PcxOfFourPlanes", [] { return PcxFile(4, 1); }});
    return files;
}

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

class LoadFaults : public testing::TestWithParam<SoundFile> {
protected:
    void SetUp() override { m_file = GetParam().Make(); }

    void Load(Bitmap& bitmap, std::vector<std::uint8_t> file, std::int64_t readLimit = NoLimit) {
        bitmap.Load(std::make_shared<FailingStream>(std::move(file), readLimit, NoLimit));
    }

    std::vector<std::uint8_t> m_file;
};

class SaveFaults : public testing::TestWithParam<std::int64_t> {
protected:
    void SetUp() override { Fill(m_source); }

    Bitmap m_source;
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

TEST_P(LoadFaults, HandlersMayRaiseAndAbortAtEveryStep) {
    Bitmap target;
    RaiseAndAbortAtEveryStep(target, [this](Bitmap& bitmap) { Load(bitmap, m_file); });
}

INSTANTIATE_TEST_SUITE_P(All, LoadFaults, testing::ValuesIn(SoundFiles()), [](const auto& info) { return info.param.Name; });

TEST_P(SaveFaults, ATargetThatFailsIsHeard) {
    const std::vector<std::uint8_t> file = SaveTo(GetParam(), m_source);
    const auto size = static_cast<std::int64_t>(file.size());
    for (std::int64_t limit = 0; limit < size; limit += std::max<std::int64_t>(1, size / 40)) {
        EXPECT_THROW(SaveTo(GetParam(), m_source, limit), HostFailure) << limit;
    }
    EXPECT_EQ(SaveTo(GetParam(), m_source, size), file);
}

TEST_P(SaveFaults, HandlersMayRaiseAndAbortAtEveryStep) {
    RaiseAndAbortAtEveryStep(m_source, [](Bitmap& bitmap) { SaveTo(GetParam(), bitmap); });
}

INSTANTIATE_TEST_SUITE_P(All, SaveFaults, testing::ValuesIn(FormatManager::SupportedMediaFormatsForSave()),
                         [](const auto& info) { return NameOf(info.param); });

} // namespace
} // namespace Corvane::Rasterloom::Codecs
