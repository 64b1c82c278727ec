// Loads a picture, makes it 800 pixels wide, and saves it. Usage: first_steps IN OUT
#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <iostream>

using namespace Corvane::Rasterloom;

int main(int argc, char** argv) try {
    if (argc != 3) {
        std::cerr << "usage: first_steps IN OUT\n";
        return 2;
    }
    Bitmap bitmap{std::filesystem::path(argv[1])};
    const auto progress = bitmap.Progress.Subscribe(
        [](ProgressEventArgs& args) { std::cerr << '\r' << args.get_Current() << '/' << args.get_Maximum(); });
    bitmap.get_Transforms()->Resize(800, 0, Transforms::InterpolationMode::Lanczos3Filter); // the height follows
    bitmap.Save(argv[2]); // replaces the file when the new one is complete, never before
    std::cerr << '\n';
    return 0;
} catch (const Host::Exception& failure) {
    std::cerr << failure.get_Message() << '\n';
    return 1;
}
