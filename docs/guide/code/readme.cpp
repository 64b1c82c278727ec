// [program]
#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/TransformsProvider.h>
#include <iostream>

using namespace Corvane::Rasterloom;

int main() try {
    Bitmap picture("lake.bmp"); // any format that has a reader, told by the content
    picture.get_Transforms()->Resize(640, 640, Transforms::InterpolationMode::Lanczos3Filter, Transforms::ResizeMode::Shrink);
    Codecs::JpegEncoderOptions options(85);
    options.set_IsProgressive(true);
    picture.Save("lake.jpg", &options); // replaces the file when the new one is complete, never before
} catch (const Host::Exception& failure) {
    std::cerr << failure.get_Message() << '\n';
    return 1;
}
// [program end]
