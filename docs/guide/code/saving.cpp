// The code of ../saving.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/BmpEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/IFormatWriter.h>
#include <Corvane/Rasterloom/Codecs/IFrame.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/PngEncoderOptions.h>
#include <Corvane/Rasterloom/ColorManagementProvider.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/FileStream.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>
#include <Corvane/Rasterloom/Host/StdStream.h>

#include <filesystem>
#include <fstream>

using namespace Corvane::Rasterloom;

namespace {

void ByName() {
    // [name]
    Bitmap picture("lake.bmp");
    picture.Save("copy.png"); // the extension chooses the format

    Codecs::JpegEncoderOptions options(85); // the options choose the format, whatever the name is
    options.set_IsProgressive(true);
    picture.Save("copy.jpg", &options);

    Codecs::PngEncoderOptions small;
    small.set_CompressionLevel(9);
    picture.Save("small.png", &small);
    // [name end]
    Expect(std::filesystem::file_size("small.png") <= std::filesystem::file_size("copy.png"));
}

void Atomic() {
    Bitmap picture("lake.bmp");
    picture.Save("target.png");
    const auto size = std::filesystem::file_size("target.png");
    // [atomic]
    picture.set_Timeout(1); // a millisecond is not enough, as an example of a save that fails
    try {
        picture.Save("target.png");
    } catch (const TimeoutException&) {
        // target.png is what it was before, and no temporary file is left
    }
    // [atomic end]
    Expect(std::filesystem::file_size("target.png") == size);
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(".")) {
        files += entry.path().filename().string().starts_with("target") ? 1U : 0U;
    }
    Expect(files == 1);
}

void Streams() {
    Bitmap picture("lake.bmp");
    // [streams]
    const auto memory = std::make_shared<Host::MemoryStream>();
    const Codecs::PngEncoderOptions png; // a stream has no name: the options tell the format
    picture.Save(memory, &png);
    const std::vector<std::uint8_t>& bytes = memory->GetBuffer();

    std::ofstream file("from-stream.png", std::ios::binary);
    picture.Save(std::make_shared<Host::StdStream>(file), &png); // any stream of the standard library

    Bitmap again(memory); // and back
    // [streams end]
    file.close();
    Expect(bytes.size() == std::filesystem::file_size("from-stream.png") && again.get_Width() == 720);
}

void Formats() {
    Bitmap picture("lake.bmp");
    picture.get_ColorManagement()->Convert(PixelFormat::Format32bppCmyk);
    // [closest]
    picture.Save("cmyk.png"); // PNG has no CMYK: converted on the way, the bitmap itself stays CMYK
    // [closest end]
    Expect(picture.get_IsCmyk() && Bitmap("cmyk.png").get_IsRgb());
    // [writer]
    const auto writer = Codecs::FormatManager::CreateFormatWriter(Codecs::FormatManager::PngFormat);
    writer->Open(std::filesystem::path("written.png"));
    const auto frame = writer->GetEmptyFrame();
    frame->SetBitmap(&picture);
    writer->AddFrame(frame.get());
    writer->Close(); // now the file takes its place; without this call it does too, but a failure would go unheard
    // [writer end]
    Expect(std::filesystem::exists("written.png"));
}

} // namespace

int main() { return RunPage({ByName, Atomic, Streams, Formats}); }
