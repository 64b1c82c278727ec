// The code of ../custom-formats.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/Codecs/CustomFormatReader.h>
#include <Corvane/Rasterloom/Codecs/CustomFormatWriter.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <vector>

using namespace Corvane::Rasterloom;
using namespace Corvane::Rasterloom::Codecs;

namespace {

// [format]
// GREY1: the five letters, width and height as two bytes each, low byte first, then a byte for each pixel.
constexpr std::int64_t GreyFormat = 5000; // any number that the library does not use
constexpr std::size_t HeaderSize = 9;
// [format end]

// [reader]
class GreyReader : public CustomFormatReader {
public:
    GreyReader() : CustomFormatReader(GreyFormat) {
        SetFormatName("GREY1");
        SetDefaultExtension("*.grey");
        SetFilterString("*.grey");
    }
    ~GreyReader() override { DisposeFinally(); }
    std::unique_ptr<IFormatReader> Clone() override { return std::make_unique<GreyReader>(); }

protected:
    bool IsSupported(Host::Stream& stream) override {
        char magic[5] = {};
        return stream.Read(magic, 5) == 5 && std::memcmp(magic, "GREY1", 5) == 0;
    }
    void OpenReader(const std::shared_ptr<Host::Stream>& stream) override {
        std::array<std::uint8_t, HeaderSize> header{};
        if (stream->Read(header.data(), HeaderSize) != HeaderSize) {
            throw MediaCorruptedException();
        }
        m_width = header[5] | header[6] << 8;
        m_height = header[7] | header[8] << 8;
        // Compare what the header says with what is there, before anything is allocated.
        if (m_width == 0 || m_height == 0 ||
            stream->get_Length() - std::int64_t{HeaderSize} < std::int64_t{m_width} * m_height) {
            throw MediaCorruptedException();
        }
        m_pStream = stream;
        SetFrameCount(1);
    }
    using CustomFormatReader::OpenReader;
    void CloseReader() override { m_pStream.reset(); }

    std::unique_ptr<CustomFrame> GetEmptyFrame() override { return std::make_unique<CustomFrame>(); }
    void LoadFrameParameters(CustomFrame& frame) override {
        frame.InitializeCustomFrameTU(m_width, m_height, PixelFormat::Format8bppGrayScale, 72, 72);
    }
    void LoadFrameBitmap() override {
        Bitmap bitmap(m_width, m_height, PixelFormat::Format8bppGrayScale);
        m_pStream->set_Position(HeaderSize);
        ResetEvents(m_height); // one step for each row
        const auto view = bitmap.LockBits();
        for (std::int32_t y = 0; y < m_height; ++y) {
            std::uint8_t* const row = view->get_Scan0() + std::ptrdiff_t{view->get_Stride()} * y;
            for (std::size_t done = 0; done < static_cast<std::size_t>(m_width);) {
                const std::size_t count = m_pStream->Read(row + done, static_cast<std::size_t>(m_width) - done);
                if (count == 0) {
                    throw MediaCorruptedException();
                }
                done += count;
            }
            UpdateEvents(); // progress, abort and time limit
        }
        bitmap.UnlockBits(view);
        if (GetLoadingMode() == LoadingMode::Thumbnail) { // a side of 0 is free
            bitmap.get_Transforms()->Resize(GetThumbnailWidthToLoad(), GetThumbnailHeightToLoad(),
                                            Transforms::ResizeMode::Shrink);
        }
        SetLoadedBitmap(&bitmap);
    }

private:
    std::shared_ptr<Host::Stream> m_pStream;
    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
};
// [reader end]

// [writer]
class GreyWriter : public CustomFormatWriter {
public:
    GreyWriter() : CustomFormatWriter(GreyFormat) {
        SetFormatName("GREY1");
        SetDefaultExtension("*.grey");
        SetFilterString("*.grey");
    }
    ~GreyWriter() override { DisposeFinally(); }
    std::unique_ptr<IFormatWriter> Clone() override { return std::make_unique<GreyWriter>(); }

protected:
    std::vector<PixelFormat> GetSupportedPixelFormats() override { return {PixelFormat::Format8bppGrayScale}; }
    PixelFormat GetClosestPixelFormat(PixelFormat) override { return PixelFormat::Format8bppGrayScale; }
    void SaveFrameBitmap(Bitmap& bitmap) override { // converted to gray by now
        const std::int32_t width = bitmap.get_Width();
        const std::int32_t height = bitmap.get_Height();
        if (GetWrittenFrameCount() > 0) {
            throw MultiFrameException();
        }
        if (width > 0xFFFF || height > 0xFFFF) {
            throw Host::ArgumentOutOfRangeException("bitmap");
        }
        const auto byte = [](std::int32_t value) { return static_cast<std::uint8_t>(value & 0xFF); };
        const std::uint8_t header[] = {'G', 'R', 'E', 'Y', '1', byte(width), byte(width >> 8), byte(height), byte(height >> 8)};
        GetStream()->Write(header, sizeof header);
        ResetEvents(height);
        const auto view = bitmap.LockBits();
        for (std::int32_t y = 0; y < height; ++y) {
            GetStream()->Write(view->get_Scan0() + std::ptrdiff_t{view->get_Stride()} * y, static_cast<std::size_t>(width));
            UpdateEvents();
        }
    }
};
// [writer end]

void Use() {
    // [use]
    FormatManager::RegisterFormatReader([] { return std::make_unique<GreyReader>(); });
    FormatManager::RegisterFormatWriter([] { return std::make_unique<GreyWriter>(); });

    Bitmap("lake.bmp").Save("lake.grey"); // by the extension; converted to gray on the way
    Bitmap picture("lake.grey");          // by the content
    Bitmap thumbnail;
    thumbnail.LoadThumbnail("lake.grey", 160, 160);
    // [use end]
    Expect(std::filesystem::file_size("lake.grey") == 9 + 720 * 480);
    Expect(picture.get_PixelFormat() == PixelFormat::Format8bppGrayScale && picture.get_Height() == 480);
    Expect(thumbnail.get_Width() == 160);
    thumbnail.Save("grey.png");
}

void Refuse() {
    std::filesystem::resize_file("lake.grey", 1000);
    bool refused = false;
    try {
        Bitmap picture("lake.grey");
    } catch (const MediaCorruptedException&) {
        refused = true;
    }
    Expect(refused);
}

} // namespace

int main() { return RunPage({Use, Refuse}); }
