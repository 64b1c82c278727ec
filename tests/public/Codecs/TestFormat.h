#pragma once

// A format of a host: "TST1", frame count, width, height (one byte each), then the gray samples of each frame.

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/CustomEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/CustomFormatReader.h>
#include <Corvane/Rasterloom/Codecs/CustomFormatWriter.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace Corvane::Rasterloom::Codecs {

inline constexpr std::int64_t TestFormat = 1001;

inline std::vector<std::uint8_t> TestFile(std::uint8_t frames, std::uint8_t width, std::uint8_t height,
                                          const std::vector<std::uint8_t>& samples) {
    std::vector<std::uint8_t> bytes(7 + samples.size());
    const std::uint8_t header[] = {'T', 'S', 'T', '1', frames, width, height};
    std::ranges::copy(header, bytes.begin());
    std::ranges::copy(samples, bytes.begin() + 7);
    return bytes;
}

class TestReader : public CustomFormatReader {
public:
    explicit TestReader(std::int64_t mediaFormat = TestFormat, std::int32_t priority = 0)
        : CustomFormatReader(mediaFormat), m_intPriority(priority) {
        SetFormatName("TST");
        SetFormatDescription("Test format");
        SetFilterString("*.tst");
        SetDefaultExtension("*.tst");
        SetMimeType("image/x-tst");
    }
    ~TestReader() override { DisposeFinally(); }

    std::unique_ptr<IFormatReader> Clone() override {
        return std::make_unique<TestReader>(get_MediaFormat(), m_intPriority);
    }
    std::int32_t get_CodecPriority() override { return m_intPriority; }

    int ParameterLoads = 0;
    int Closes = 0;
    /// Replaces the reading of pixels.
    std::function<void(TestReader&)> Work;
    using CustomFormatReader::GetLoadingMode;
    using CustomFormatReader::GetThumbnailHeightToLoad;
    using CustomFormatReader::GetThumbnailInterpolationToLoad;
    using CustomFormatReader::GetThumbnailWidthToLoad;
    using CustomFormatReader::ResetEvents;
    using CustomFormatReader::SetLoadedBitmap;
    using CustomFormatReader::UpdateEvents;

protected:
    std::unique_ptr<CustomFrame> GetEmptyFrame() override { return std::make_unique<CustomFrame>(); }
    void LoadFrameParameters(CustomFrame& frame) override {
        ++ParameterLoads;
        frame.InitializeCustomFrameTU(m_header[5], m_header[6], PixelFormat::Format8bppGrayScale, 300, 200, 4, 5,
                                      "named");
    }
    void LoadFrameBitmap() override {
        if (Work) {
            return Work(*this);
        }
        Bitmap bitmap(m_header[5], m_header[6], PixelFormat::Format8bppGrayScale);
        const std::int64_t size = std::int64_t{m_header[5]} * m_header[6];
        m_pStream->set_Position(7 + GetFrameIndexToLoad() * size);
        for (std::int32_t y = 0; y < m_header[6]; ++y) {
            for (std::int32_t x = 0; x < m_header[5]; ++x) {
                std::uint8_t sample = 0;
                if (m_pStream->Read(&sample, 1) != 1) {
                    throw MediaCorruptedException();
                }
                bitmap.SetPixel(x, y, Color::FromGrayScale(sample));
            }
        }
        UpdateEvents(100);
        SetLoadedBitmap(&bitmap);
    }
    void OpenReader(const std::shared_ptr<Host::Stream>& stream) override {
        m_pStream = stream;
        if (stream->Read(m_header, 7) != 7 || m_header[0] != 'T') {
            throw MediaUnsupportedException();
        }
        SetFrameCount(m_header[4]);
    }
    using CustomFormatReader::OpenReader;
    void CloseReader() override {
        ++Closes;
        m_pStream.reset();
    }
    bool IsSupported(Host::Stream& stream) override {
        char magic[4] = {};
        return stream.Read(magic, 4) == 4 && std::string(magic, 4) == "TST1";
    }

private:
    std::int32_t m_intPriority;
    std::uint8_t m_header[7] = {};
    std::shared_ptr<Host::Stream> m_pStream;
};

class TestWriter : public CustomFormatWriter {
public:
    TestWriter() : CustomFormatWriter(TestFormat) {
        SetFormatName("TST");
        SetFormatDescription("Test format");
        SetFilterString("*.tst;*.Tst2");
        SetDefaultExtension("*.tst");
        SetMimeType("image/x-tst");
    }
    ~TestWriter() override { DisposeFinally(); }

    std::unique_ptr<IFormatWriter> Clone() override {
        auto clone = std::make_unique<TestWriter>();
        clone->Work = Work;
        return clone;
    }

    /// Comes after the samples are written.
    std::function<void(TestWriter&)> Work;
    using CustomFormatWriter::ResetEvents;
    using CustomFormatWriter::UpdateEvents;

protected:
    void SaveFrameBitmap(Bitmap& bitmap) override {
        std::vector<std::uint8_t> bytes;
        if (GetWrittenFrameCount() == 0) {
            bytes = TestFile(0, static_cast<std::uint8_t>(bitmap.get_Width()),
                             static_cast<std::uint8_t>(bitmap.get_Height()), {});
        }
        for (std::int32_t y = 0; y < bitmap.get_Height(); ++y) {
            for (std::int32_t x = 0; x < bitmap.get_Width(); ++x) {
                bytes.push_back(static_cast<std::uint8_t>(bitmap.GetPixel(x, y).ToInt32()));
            }
        }
        GetStream()->Write(bytes.data(), bytes.size());
        UpdateEvents(100);
        if (Work) {
            Work(*this);
        }
    }
    PixelFormat GetClosestPixelFormat(PixelFormat) override { return PixelFormat::Format8bppGrayScale; }
    std::vector<PixelFormat> GetSupportedPixelFormats() override { return {PixelFormat::Format8bppGrayScale}; }
    void CloseWriter() override {
        if (GetWrittenFrameCount() > 0) {
            const auto count = static_cast<std::uint8_t>(GetWrittenFrameCount());
            GetStream()->set_Position(4);
            GetStream()->Write(&count, 1);
        }
        CustomFormatWriter::CloseWriter();
    }
};

/// Adds the format to the process, once.
inline void RegisterTestFormat() {
    static const bool registered = [] {
        FormatManager::RegisterFormatReader([] { return std::make_unique<TestReader>(); });
        FormatManager::RegisterFormatWriter([] { return std::make_unique<TestWriter>(); });
        return true;
    }();
    (void)registered;
}

} // namespace Corvane::Rasterloom::Codecs
