// Decodes every frame of a file for corpus_test.py, which compares. For each frame a line "OK width height kind size" and
// the samples, rows from the top without padding; for a documented failure a line "FAIL text" and the end.
//
// Kinds: RGBA8 (also for gray and indexed pixels), RAW5 (samples of the packed 16-bit formats, one byte each), CMYK8,
// CMYKA8, and GRAY16, GRAYA16, RGB16, RGBA16, CMYK16, CMYKA16 in little-endian order.

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/FormatReader.h>
#include <Corvane/Rasterloom/Codecs/IFrame.h>
#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/Host/Errors.h>
#include <Corvane/Rasterloom/PixelArray.h>

#include <cstdio>
#include <string>
#include <vector>

using namespace Corvane::Rasterloom;

namespace {

struct Dump {
    std::string Kind;
    std::vector<std::uint8_t> Bytes;

    void Add(std::int32_t sample, bool wide) {
        Bytes.push_back(static_cast<std::uint8_t>(sample));
        if (wide) {
            Bytes.push_back(static_cast<std::uint8_t>(sample >> 8));
        }
    }
};

template <class Visit>
void ForEachPixel(Bitmap& bitmap, Visit visit) {
    for (std::int32_t y = 0; y < bitmap.get_Height(); ++y) {
        for (std::int32_t x = 0; x < bitmap.get_Width(); ++x) {
            visit(x, y);
        }
    }
}

Dump DumpIndexed(Bitmap& bitmap) {
    Dump dump{"RGBA8", {}};
    const auto palette = bitmap.get_Palette();
    std::vector<RgbColor> entries;
    for (std::int32_t i = 0; i < palette->get_Count(); ++i) {
        entries.push_back(palette->get_Item(i));
    }
    const int bits = bitmap.get_BitsPerPixel();
    const auto view = bitmap.LockBits();
    for (std::int32_t y = 0; y < view->get_Height(); ++y) {
        const std::uint8_t* const pRow = view->get_Scan0() + std::ptrdiff_t{y} * view->get_Stride();
        for (std::int32_t x = 0; x < view->get_Width(); ++x) {
            const std::int32_t position = x * bits;
            const int index = pRow[position / 8] >> (8 - bits - position % 8) & ((1 << bits) - 1);
            const RgbColor& color = entries.at(static_cast<std::size_t>(index));
            for (const auto sample : {color.get_R(), color.get_G(), color.get_B(), color.get_A()}) {
                dump.Add(sample, false);
            }
        }
    }
    return dump;
}

Dump DumpPacked(Bitmap& bitmap) {
    Dump dump{"RAW5", {}};
    const bool has565 = bitmap.get_PixelFormat() == PixelFormat::Format16bppRgb565;
    const auto view = bitmap.LockBits();
    for (std::int32_t y = 0; y < view->get_Height(); ++y) {
        const std::uint8_t* const pRow = view->get_Scan0() + std::ptrdiff_t{y} * view->get_Stride();
        for (std::int32_t x = 0; x < view->get_Width(); ++x) {
            const int word = pRow[2 * x] | pRow[2 * x + 1] << 8;
            dump.Add(has565 ? word >> 11 & 31 : word >> 10 & 31, false);
            dump.Add(has565 ? word >> 5 & 63 : word >> 5 & 31, false);
            dump.Add(word & 31, false);
        }
    }
    return dump;
}

Dump DumpSamples(Bitmap& bitmap) {
    const PixelArray samples = bitmap.Export();
    const bool wide = bitmap.get_IsExtended();
    const bool alpha = bitmap.get_HasAlpha();
    const std::string space = bitmap.get_IsCmyk() ? "CMYK" : bitmap.get_IsGrayScale() && wide ? "GRAY" : "RGB";
    Dump dump{space + (alpha || (space == "RGB" && !wide) ? "A" : "") + (wide ? "16" : "8"), {}};
    const std::int32_t colors = bitmap.get_IsCmyk() ? 4 : bitmap.get_IsGrayScale() ? 1 : 3;
    ForEachPixel(bitmap, [&](std::int32_t x, std::int32_t y) {
        // The channels lie in the order of memory, which is the reverse of the names' order, alpha last.
        for (std::int32_t c = colors - 1; c >= 0; --c) {
            const std::int32_t copies = colors == 1 && !wide ? 3 : 1;
            for (std::int32_t i = 0; i < copies; ++i) {
                dump.Add(samples(x, y, c), wide);
            }
        }
        if (alpha) {
            dump.Add(samples(x, y, colors), wide);
        } else if (dump.Kind == "RGBA8") {
            dump.Add(255, false);
        }
    });
    return dump;
}

Dump DumpBitmap(Bitmap& bitmap) {
    switch (bitmap.get_PixelFormat()) {
    case PixelFormat::Format16bppRgb555:
    case PixelFormat::Format16bppRgb565:
    case PixelFormat::Format16bppArgb1555:
        return DumpPacked(bitmap);
    default:
        return bitmap.get_IsIndexed() ? DumpIndexed(bitmap) : DumpSamples(bitmap);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    try {
        const auto reader = Codecs::FormatManager::CreateFormatReader(std::filesystem::path(argv[1]));
        for (std::int32_t index = 0; index < reader->get_FrameCount(); ++index) {
            Bitmap bitmap;
            reader->LoadFrame(index)->GetBitmap(&bitmap);
            const Dump dump = DumpBitmap(bitmap);
            std::printf("OK %d %d %s %zu\n", bitmap.get_Width(), bitmap.get_Height(), dump.Kind.c_str(), dump.Bytes.size());
            std::fwrite(dump.Bytes.data(), 1, dump.Bytes.size(), stdout);
        }
    } catch (const Host::Exception& exception) {
        std::printf("FAIL %s\n", exception.what());
    }
    return 0;
}
