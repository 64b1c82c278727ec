// The code of ../limits.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/IFormatReader.h>
#include <Corvane/Rasterloom/Codecs/IFrame.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/GlobalSettings.h>

#include <string>

using namespace Corvane::Rasterloom;

namespace {

void Set() {
    // [set]
    GlobalSettings::set_MaximumFramePixels(64'000'000);  // width times height
    GlobalSettings::set_MaximumFrameBytes(512'000'000);  // of the bitmap in memory
    GlobalSettings::set_MaximumFrameCount(100);          // of one file
    // [set end]
    Bitmap picture("lake.bmp");
    Expect(picture.get_Width() == 720);
}

void Exceed() {
    std::string text;
    GlobalSettings::set_MaximumFramePixels(100'000);
    // [exceed]
    try {
        Bitmap picture("lake.bmp"); // 720 x 480, while 100,000 pixels are allowed
    } catch (const Codecs::MediaCorruptedException& failure) {
        text = failure.get_Message(); // tells the size found and the limit
    }
    // [exceed end]
    Expect(text.find("100000") != std::string::npos);
    GlobalSettings::set_MaximumFramePixels(0);
}

void Look() {
    bool small = false;
    // [look]
    const auto reader = Codecs::FormatManager::CreateFormatReader("lake.bmp"); // reads the header alone
    const auto frame = reader->LoadFrame(0);
    if (std::int64_t{frame->get_Width()} * frame->get_Height() < 1'000'000) {
        Bitmap picture;
        frame->GetBitmap(&picture);
        small = !picture.get_IsEmpty();
    }
    // [look end]

    // [time]
    Bitmap picture;
    picture.set_Timeout(5000); // milliseconds; TimeoutException when the load takes longer
    picture.Load("lake.bmp");
    // [time end]
    Expect(small);
}

} // namespace

int main() { return RunPage({Set, Exceed, Look}); }
