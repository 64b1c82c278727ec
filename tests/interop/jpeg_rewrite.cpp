// Reads a JPEG file and writes it again with every block of metadata that it has, for jpeg_interop.py.
// Usage: jpeg_rewrite SOURCE TARGET [progressive]

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/IFrame.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/JpegReader.h>

#include <cstdio>
#include <exception>
#include <filesystem>

using namespace Corvane::Rasterloom;
using namespace Corvane::Rasterloom::Codecs;

int main(int argc, char** argv) {
    if (argc < 3) {
        return 2;
    }
    try {
        JpegReader reader(std::filesystem::path{argv[1]});
        JpegEncoderOptions options(90, argc > 3);
        options.set_Exif(reader.get_Exif());
        options.set_Iptc(reader.get_Iptc());
        options.set_Xmp(reader.get_Xmp());
        options.set_AdobeResources(reader.get_AdobeResources());
        Bitmap bitmap;
        reader.LoadFrame(0)->GetBitmap(&bitmap);
        bitmap.Save(std::filesystem::path{argv[2]}, &options);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    return 0;
}
