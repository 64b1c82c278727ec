// The code of ../failures.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Transforms/Rotate.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <fstream>

using namespace Corvane::Rasterloom;

namespace {

std::string Load(const char* name) {
    // [catch]
    try {
        Bitmap picture(name);
        return "loaded";
    } catch (const Codecs::MediaUnsupportedException&) {
        return "no picture that I know";
    } catch (const Codecs::MediaCorruptedException&) {
        return "a damaged picture";
    } catch (const Host::FileNotFoundException&) {
        return "no such file";
    } catch (const Host::Exception& failure) { // the root of all
        return failure.get_Message();
    }
    // [catch end]
}

void Classes() {
    std::ofstream("notes.txt") << "no picture";
    std::ofstream("broken.bmp", std::ios::binary) << std::string("BM") + std::string(8, '\0') + "6" + std::string(200, '\x01');
    Expect(Load("lake.bmp") == "loaded");
    Expect(Load("notes.txt") == "no picture that I know");
    Expect(Load("broken.bmp") == "a damaged picture");
    Expect(Load("missing.bmp") == "no such file");
}

void Arguments() {
    Bitmap picture("lake.bmp");
    std::string parameter;
    // [arguments]
    try {
        picture.GetPixel(720, 0);
    } catch (const Host::ArgumentException& failure) {
        parameter = failure.get_ParamName(); // "x"
    }
    // [arguments end]
    Expect(parameter == "x");
}

void Unharmed() {
    Bitmap picture("text.bmp"); // indexed
    bool refused = false;
    // [unharmed]
    try {
        picture.get_Transforms()->Rotate(30.0F); // takes no indexed format
    } catch (const UnsupportedPixelFormatException&) {
        refused = true; // the picture is as it was; ask IsPixelFormatSupported, or convert first
    }
    Transforms::Rotate(30.0F).IsPixelFormatSupported(picture.get_PixelFormat()); // false
    // [unharmed end]
    Expect(refused && picture.get_Width() == 1000);
    Expect(!Transforms::Rotate(30.0F).IsPixelFormatSupported(picture.get_PixelFormat()));
}

void Disposed() {
    Bitmap picture("lake.bmp");
    std::string text;
    // [disposed]
    picture.Dispose();
    picture.Dispose(); // may be repeated
    try {
        picture.get_Width();
    } catch (const Host::ObjectDisposedException& failure) {
        text = failure.get_ObjectName(); // "Bitmap"
    }
    // [disposed end]
    Expect(text == "Bitmap");
}

} // namespace

int main() { return RunPage({Classes, Arguments, Unharmed, Disposed}); }
