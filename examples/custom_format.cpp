// A format of the host's own: once its reader and its writer are registered, `Bitmap` loads and saves it like any other, with
// progress, cancellation and files that are replaced only when the new one is complete.
// Usage: custom_format IN OUT      where either may end in ".toy"
//
// A .toy file is "TOY1", width and height (32 bits each, low byte first) and the lines from the top, 3 bytes a pixel: blue,
// green, red.
#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/Codecs/CustomFormatReader.h>
#include <Corvane/Rasterloom/Codecs/CustomFormatWriter.h>
#include <Corvane/Rasterloom/Codecs/CustomFrame.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iostream>
#include <memory>
#include <vector>

using namespace Corvane::Rasterloom;

namespace {

/// Any number that no other format has; the library's own are below 100.
constexpr std::int64_t ToyFormat = 1000;
constexpr std::size_t HeaderSize = 12;
constexpr std::size_t BytesPerPixel = 3;

using Header = std::array<std::uint8_t, HeaderSize>;

std::uint32_t ReadNumber(const Header& header, std::size_t at) {
    return header[at] | header[at + 1] << 8 | header[at + 2] << 16 | std::uint32_t{header[at + 3]} << 24;
}

void WriteNumber(Header& header, std::size_t at, std::int32_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        header[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

/// Streams give as much as they have at hand.
void ReadAll(Host::Stream& stream, std::uint8_t* bytes, std::size_t size) {
    while (size > 0) {
        const std::size_t count = stream.Read(bytes, size);
        if (count == 0) {
            throw Codecs::MediaCorruptedException(); // the end
        }
        bytes += count;
        size -= count;
    }
}

/// What the registry and file dialogs know of the format; for the reader and for the writer.
template <class Base>
class ToyCodec : public Base {
protected:
    ToyCodec() : Base(ToyFormat) {
        this->SetFormatName("TOY");
        this->SetFormatDescription("Toy format");
        this->SetFilterString("*.toy");
        this->SetDefaultExtension("*.toy");
        this->SetMimeType("image/x-toy");
    }
};

class ToyReader final : public ToyCodec<Codecs::CustomFormatReader> {
public:
    ~ToyReader() override { DisposeFinally(); }

    std::unique_ptr<Codecs::IFormatReader> Clone() override { return std::make_unique<ToyReader>(); }

protected:
    bool IsSupported(Host::Stream& stream) override {
        char magic[4] = {};
        return stream.Read(magic, sizeof magic) == sizeof magic && std::memcmp(magic, "TOY1", sizeof magic) == 0;
    }

    /// A file may say anything, so its size is believed only when the pixels are there.
    void OpenReader(const std::shared_ptr<Host::Stream>& stream) override {
        Header header;
        ReadAll(*stream, header.data(), HeaderSize);
        const std::uint64_t width = ReadNumber(header, 4);
        const std::uint64_t height = ReadNumber(header, 8);
        const auto left = static_cast<std::uint64_t>(stream->get_Length()) - HeaderSize;
        if (width == 0 || height == 0 || height > left / BytesPerPixel / width) {
            throw Codecs::MediaCorruptedException();
        }
        m_intWidth = static_cast<std::int32_t>(width);
        m_intHeight = static_cast<std::int32_t>(height);
        m_pStream = stream;
        SetFrameCount(1);
    }
    using CustomFormatReader::OpenReader; // the form for file names

    void CloseReader() override { m_pStream.reset(); }

    std::unique_ptr<Codecs::CustomFrame> GetEmptyFrame() override { return std::make_unique<Codecs::CustomFrame>(); }

    void LoadFrameParameters(Codecs::CustomFrame& frame) override {
        constexpr float dotsPerInch = 72;
        frame.InitializeCustomFrameTU(m_intWidth, m_intHeight, PixelFormat::Format24bppRgb, dotsPerInch, dotsPerInch);
    }

    void LoadFrameBitmap() override {
        Bitmap bitmap(m_intWidth, m_intHeight, PixelFormat::Format24bppRgb);
        ResetEvents(m_intHeight); // one step a line
        const auto view = bitmap.LockBits();
        const std::size_t size = BytesPerPixel * static_cast<std::size_t>(m_intWidth);
        m_pStream->set_Position(HeaderSize);
        for (std::int32_t y = 0; y < m_intHeight; ++y) {
            ReadAll(*m_pStream, view->get_Scan0() + std::ptrdiff_t{view->get_Stride()} * y, size);
            UpdateEvents(); // fails when the host wants it to stop; nothing has to be tidied up here
        }
        bitmap.UnlockBits(view);
        if (GetLoadingMode() == Codecs::LoadingMode::Thumbnail) {
            Reduce(bitmap);
        }
        SetLoadedBitmap(&bitmap);
    }

private:
    /// To the box of the thumbnail; a side of it that is 0 follows the other. Never enlarges.
    void Reduce(Bitmap& bitmap) const {
        const auto ratio = [](std::int32_t box, std::int32_t side) {
            return box == 0 ? 1.0 : std::min(1.0, static_cast<double>(box) / side);
        };
        const double scale =
            std::min(ratio(GetThumbnailWidthToLoad(), m_intWidth), ratio(GetThumbnailHeightToLoad(), m_intHeight));
        const auto reduced = [&](std::int32_t side) { return std::max(1, static_cast<std::int32_t>(side * scale + 0.5)); };
        bitmap.get_Transforms()->Resize(reduced(m_intWidth), reduced(m_intHeight), GetThumbnailInterpolationToLoad());
    }

    std::shared_ptr<Host::Stream> m_pStream;
    std::int32_t m_intWidth = 0;
    std::int32_t m_intHeight = 0;
};

class ToyWriter final : public ToyCodec<Codecs::CustomFormatWriter> {
public:
    ~ToyWriter() override { DisposeFinally(); }

    std::unique_ptr<Codecs::IFormatWriter> Clone() override { return std::make_unique<ToyWriter>(); }

protected:
    // Bitmaps of other formats are converted before they come here.
    std::vector<PixelFormat> GetSupportedPixelFormats() override { return {PixelFormat::Format24bppRgb}; }
    PixelFormat GetClosestPixelFormat(PixelFormat) override { return PixelFormat::Format24bppRgb; }

    void SaveFrameBitmap(Bitmap& bitmap) override {
        if (GetWrittenFrameCount() > 0) {
            throw Codecs::MultiFrameException(); // one picture a file
        }
        const auto view = bitmap.LockBits();
        Header header = {'T', 'O', 'Y', '1'};
        WriteNumber(header, 4, view->get_Width());
        WriteNumber(header, 8, view->get_Height());
        GetStream()->Write(header.data(), HeaderSize);
        ResetEvents(view->get_Height());
        const std::size_t size = BytesPerPixel * static_cast<std::size_t>(view->get_Width());
        for (std::int32_t y = 0; y < view->get_Height(); ++y) {
            GetStream()->Write(view->get_Scan0() + std::ptrdiff_t{view->get_Stride()} * y, size);
            UpdateEvents();
        }
        bitmap.UnlockBits(view);
    }
};

} // namespace

int main(int argc, char** argv) try {
    if (argc != 3) {
        std::cerr << "usage: custom_format IN OUT\n";
        return 2;
    }
    // The library keeps one object of each and makes copies of it when a file comes.
    Codecs::FormatManager::RegisterFormatReader([] { return std::make_unique<ToyReader>(); });
    Codecs::FormatManager::RegisterFormatWriter([] { return std::make_unique<ToyWriter>(); });

    Bitmap bitmap{std::filesystem::path(argv[1])};
    bitmap.Save(argv[2]);
    Bitmap thumbnail;
    thumbnail.LoadThumbnail(std::filesystem::path(argv[2]), 64, 64);
    std::cout << argv[2] << ": " << bitmap.get_Width() << " x " << bitmap.get_Height() << ", its thumbnail "
              << thumbnail.get_Width() << " x " << thumbnail.get_Height() << '\n';
    return 0;
} catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
}
