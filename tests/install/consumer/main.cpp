// A host program that knows nothing but the installed library: halves a picture.
#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <iostream>

using namespace Corvane::Rasterloom;

int main(int argc, char** argv) {
    if (argc != 3) {
        return 2;
    }
    try {
        Bitmap missing("no such file");
        return 1;
    } catch (const Host::FileNotFoundException&) { // failures cross the boundary of the library
    }
    try {
        Bitmap noPicture(argv[0]);
        return 1;
    } catch (const Host::Exception& failure) { // and their classes are the same on both sides
        if (dynamic_cast<const Codecs::MediaUnsupportedException*>(&failure) == nullptr) {
            return 1;
        }
    }
    Bitmap bitmap(argv[1]);
    const std::int32_t width = bitmap.get_Width() / 2;
    bitmap.get_Transforms()->Resize(width, 0, Transforms::InterpolationMode::Bilinear);
    bitmap.Save(argv[2]);
    std::cout << bitmap.get_Width() << " x " << bitmap.get_Height() << '\n';
    return 0;
}
