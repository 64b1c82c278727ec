#include "colorconversion/LinkKernels.h"

#include "colorconversion/SampleAccess.h"

#include <array>

namespace ImagingFramework::LinkKernels {

namespace {

/// A function of two bytes as a table, the first argument in the rows.
using ByteTable = std::array<std::uint8_t, 65536>;

ByteTable MakeTable(std::uint8_t (*function)(std::uint8_t, std::uint8_t)) {
    ByteTable table{};
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        table[i] = function(static_cast<std::uint8_t>(i >> 8), static_cast<std::uint8_t>(i & 255));
    }
    return table;
}

std::uint32_t ClampToByte(double value) {
    return static_cast<std::uint32_t>(value < 0.0 ? 0.0 : (value > 255.0 ? 255.0 : value));
}

/// The formula of CMYK to a colour, on a scale of `Maximum`.
template <std::uint32_t Maximum> double ColorOfCmyk(std::uint32_t black, std::uint32_t ink) {
    const double k = black / static_cast<double>(Maximum);
    const double c = ink / static_cast<double>(Maximum);
    const double covered = c * (1.0 - k) + k;
    return (1.0 - (covered < 1.0 ? covered : 1.0)) * Maximum;
}

std::uint8_t ColorOfCmyk8(std::uint8_t black, std::uint8_t ink) {
    return static_cast<std::uint8_t>(ClampToByte(ColorOfCmyk<255>(black, ink)));
}

std::uint16_t ColorOfCmyk16(std::uint16_t black, std::uint16_t ink) {
    return static_cast<std::uint16_t>(static_cast<std::int32_t>(ColorOfCmyk<65535>(black, ink)));
}

const std::uint8_t* CmykTable() {
    static const ByteTable table = MakeTable(ColorOfCmyk8);
    return table.data();
}

std::uint8_t Premultiply8(std::uint8_t alpha, std::uint8_t color) {
    const double factor = alpha / 255.0;
    return static_cast<std::uint8_t>(ClampToByte(color * factor));
}

std::uint8_t Unpremultiply8(std::uint8_t alpha, std::uint8_t color) {
    const double factor = alpha == 0 ? 0.0 : 255.0 / alpha;
    return static_cast<std::uint8_t>(ClampToByte(color * factor));
}

/// 16 bits to 8, by the run's bits, offset and scale.
std::uint8_t Quantize16To8(const LinkRun& run, std::uint16_t value) {
    const std::uint32_t shifted = std::uint32_t{value} >> (16U - run.BitsUsed);
    const std::uint32_t top = ((1U << run.Scale) - 1U) + run.Offset;
    if (shifted < run.Offset) {
        return 0;
    }
    return shifted >= top ? std::uint8_t{255} : static_cast<std::uint8_t>((shifted - run.Offset) >> (run.Scale - 8U));
}

/// Writes one word for each word. The count and what the function holds are locals, so the loop can be vectorised: a store
/// through a byte pointer might change anything else.
template <class Out, class In, class Function>
void MapWords(const LinkRun& run, const std::uint8_t* __restrict source, std::uint8_t* __restrict destination,
              Function function) {
    const std::size_t count = run.PixelCount;
    for (std::size_t i = 0; i < count; ++i) {
        StoreSample<Out>(destination, i, function(LoadSample<In>(source, i)));
    }
}

/// Replaces each colour of a pixel by table[alpha][colour].
void ScaleByAlpha(const ByteTable& table, const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    MapWords<std::uint32_t, std::uint32_t>(run, source, destination, [bytes = table.data()](std::uint32_t pixel) {
        const std::uint8_t* const row = bytes + ((pixel >> 24) << 8);
        return row[pixel & 255] | (std::uint32_t{row[(pixel >> 8) & 255]} << 8) |
               (std::uint32_t{row[(pixel >> 16) & 255]} << 16) | (pixel & 0xFF000000U);
    });
}

/// The alpha of a run in the top byte of a word.
std::uint32_t AlphaByteOf(const LinkRun& run) { return std::uint32_t{run.Alpha} >> 8 << 24; }

/// Five bits each of blue, green and red, from the lowest up, in the top bits of three bytes.
std::uint32_t ExpandRgb555(std::uint32_t p) { return ((p & 0x1F) << 3) | ((p & 0x3E0) << 6) | ((p & 0x7C00) << 9); }

/// Complements three samples in memory order blue, green, red and takes the common part out as black: full replacement of
/// the gray component.
template <class Sample>
void ColorToCmyk(std::uint32_t pixelCount, const std::uint8_t* __restrict source, std::uint8_t* __restrict destination) {
    for (std::size_t i = 0; i < pixelCount; ++i) {
        const auto yellow = static_cast<Sample>(~LoadSample<Sample>(source, 4 * i));
        const auto magenta = static_cast<Sample>(~LoadSample<Sample>(source, 4 * i + 1));
        const auto cyan = static_cast<Sample>(~LoadSample<Sample>(source, 4 * i + 2));
        const Sample black = std::min(cyan, std::min(magenta, yellow));
        StoreSample(destination, 5 * i, black);
        StoreSample(destination, 5 * i + 1, static_cast<Sample>(yellow - black));
        StoreSample(destination, 5 * i + 2, static_cast<Sample>(magenta - black));
        StoreSample(destination, 5 * i + 3, static_cast<Sample>(cyan - black));
        StoreSample(destination, 5 * i + 4, LoadSample<Sample>(source, 4 * i + 3));
    }
}

template <class Sample>
void GrayToCmyk(std::uint32_t pixelCount, const std::uint8_t* __restrict source, std::uint8_t* __restrict destination) {
    for (std::size_t i = 0; i < pixelCount; ++i) {
        StoreSample(destination, 5 * i, static_cast<Sample>(~LoadSample<Sample>(source, 2 * i)));
        for (std::size_t ink = 1; ink <= 3; ++ink) {
            StoreSample(destination, 5 * i + ink, Sample{0});
        }
        StoreSample(destination, 5 * i + 4, LoadSample<Sample>(source, 2 * i + 1));
    }
}

/// The colours of a CMYK pixel of words in memory order: yellow gives blue, magenta green, cyan red.
struct WordColors {
    std::uint16_t Blue;
    std::uint16_t Green;
    std::uint16_t Red;
};

WordColors ColorsOfCmyk80(const std::uint8_t* source, std::size_t pixel) {
    const auto black = LoadSample<std::uint16_t>(source, 5 * pixel);
    return {ColorOfCmyk16(black, LoadSample<std::uint16_t>(source, 5 * pixel + 1)),
            ColorOfCmyk16(black, LoadSample<std::uint16_t>(source, 5 * pixel + 2)),
            ColorOfCmyk16(black, LoadSample<std::uint16_t>(source, 5 * pixel + 3))};
}

/// The weights go by memory order, 30 for blue and 11 for red, on purpose.
std::uint16_t GrayOfWords(std::uint32_t first, std::uint32_t second, std::uint32_t third) {
    return static_cast<std::uint16_t>((30 * first + 59 * second + 11 * third) / 100);
}

} // namespace

template <std::uint32_t Channels> void Narrow(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    VectorKernels::NarrowToHighBytes(source, destination, std::size_t{run.PixelCount} * Channels);
    // With all 16 bits in use on the full scale an offset is ignored.
    if (run.BitsUsed == 16 && run.Scale == 16) {
        return;
    }
    const LinkRun local = run;
    for (std::size_t i = 0; i < local.PixelCount; ++i) {
        for (std::size_t channel = i * Channels; channel < i * Channels + Channels - 1; ++channel) {
            destination[channel] = Quantize16To8(local, LoadSample<std::uint16_t>(source, channel));
        }
    }
}

template void Narrow<2>(const LinkRun&, const std::uint8_t*, std::uint8_t*);
template void Narrow<4>(const LinkRun&, const std::uint8_t*, std::uint8_t*);
template void Narrow<5>(const LinkRun&, const std::uint8_t*, std::uint8_t*);

void Rgb16555ToArgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    MapWords<std::uint32_t, std::uint16_t>(run, source, destination,
                                           [alpha = AlphaByteOf(run)](std::uint32_t p) { return ExpandRgb555(p) | alpha; });
}

/// The lowest bit of green is dropped, on purpose.
void Rgb16565ToArgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    MapWords<std::uint32_t, std::uint16_t>(run, source, destination, [alpha = AlphaByteOf(run)](std::uint32_t p) {
        return ((p & 0x1F) << 3) | ((p & 0x7C0) << 5) | ((p & 0xF800) << 8) | alpha;
    });
}

void Argb16ToArgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    MapWords<std::uint32_t, std::uint16_t>(run, source, destination, [](std::uint32_t p) {
        const std::uint32_t alpha = (0U - (p >> 15)) << 24;
        return ExpandRgb555(p) | alpha;
    });
}

void Rgb32ToArgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    MapWords<std::uint32_t, std::uint32_t>(
        run, source, destination, [alpha = AlphaByteOf(run)](std::uint32_t p) { return (p & 0xFFFFFFU) | alpha; });
}

/// The fourth byte of the destination keeps its value.
void Argb32ToRgb32(const LinkRun& run, const std::uint8_t* __restrict source, std::uint8_t* __restrict destination) {
    const std::size_t count = run.PixelCount;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t kept = LoadSample<std::uint32_t>(destination, i) & 0xFF000000U;
        StoreSample(destination, i, (LoadSample<std::uint32_t>(source, i) & 0xFFFFFFU) | kept);
    }
}

void Pargb32ToArgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    static const ByteTable table = MakeTable(Unpremultiply8);
    ScaleByAlpha(table, run, source, destination);
}

void Argb32ToPargb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    static const ByteTable table = MakeTable(Premultiply8);
    ScaleByAlpha(table, run, source, destination);
}

void Agray16ToArgb32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    MapWords<std::uint32_t, std::uint16_t>(run, source, destination, [](std::uint32_t p) {
        const std::uint32_t gray = p & 255;
        return gray | (gray << 8) | (gray << 16) | ((p >> 8) << 24);
    });
}

void Argb32ToAgray16(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    VectorKernels::GrayFromColor(source, destination, run.PixelCount);
}

void Acmyk40ToArgb32(const LinkRun& run, const std::uint8_t* __restrict source, std::uint8_t* __restrict destination) {
    const std::size_t count = run.PixelCount;
    const std::uint8_t* const table = CmykTable();
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* const pixel = source + 5 * i;
        const std::uint8_t* const row = table + (std::size_t{pixel[0]} << 8);
        StoreSample(destination, i,
                    row[pixel[1]] | (std::uint32_t{row[pixel[2]]} << 8) | (std::uint32_t{row[pixel[3]]} << 16) |
                        (std::uint32_t{pixel[4]} << 24));
    }
}

void Argb32ToAcmyk40(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    ColorToCmyk<std::uint8_t>(run.PixelCount, source, destination);
}

void Acmyk40ToAgray16(const LinkRun& run, const std::uint8_t* __restrict source, std::uint8_t* __restrict destination) {
    const std::size_t count = run.PixelCount;
    const std::uint8_t* const table = CmykTable();
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* const pixel = source + 5 * i;
        const std::uint8_t* const row = table + (std::size_t{pixel[0]} << 8);
        destination[2 * i] = PlainKernels::GrayOfBytes(row[pixel[1]], row[pixel[2]], row[pixel[3]]);
        destination[2 * i + 1] = pixel[4];
    }
}

void Agray16ToAcmyk40(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    GrayToCmyk<std::uint8_t>(run.PixelCount, source, destination);
}

void Acmyk80ToArgb64(const LinkRun& run, const std::uint8_t* __restrict source, std::uint8_t* __restrict destination) {
    const std::size_t count = run.PixelCount;
    for (std::size_t i = 0; i < count; ++i) {
        const WordColors colors = ColorsOfCmyk80(source, i);
        StoreSample(destination, 4 * i, colors.Blue);
        StoreSample(destination, 4 * i + 1, colors.Green);
        StoreSample(destination, 4 * i + 2, colors.Red);
        StoreSample(destination, 4 * i + 3, LoadSample<std::uint16_t>(source, 5 * i + 4));
    }
}

void Argb64ToAcmyk80(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    ColorToCmyk<std::uint16_t>(run.PixelCount, source, destination);
}

void Agray32ToAcmyk80(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    GrayToCmyk<std::uint16_t>(run.PixelCount, source, destination);
}

void Acmyk80ToAgray32(const LinkRun& run, const std::uint8_t* __restrict source, std::uint8_t* __restrict destination) {
    const std::size_t count = run.PixelCount;
    for (std::size_t i = 0; i < count; ++i) {
        const WordColors colors = ColorsOfCmyk80(source, i);
        StoreSample(destination, 2 * i, GrayOfWords(colors.Blue, colors.Green, colors.Red));
        StoreSample(destination, 2 * i + 1, LoadSample<std::uint16_t>(source, 5 * i + 4));
    }
}

void Agray32ToArgb64(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    MapWords<std::uint64_t, std::uint32_t>(run, source, destination, [](std::uint64_t p) {
        const std::uint64_t gray = p & 0xFFFF;
        return gray | (gray << 16) | (gray << 32) | ((p >> 16) << 48);
    });
}

void Argb64ToAgray32(const LinkRun& run, const std::uint8_t* source, std::uint8_t* destination) {
    MapWords<std::uint32_t, std::uint64_t>(run, source, destination, [](std::uint64_t p) {
        const auto word = [p](int index) { return static_cast<std::uint32_t>((p >> (16 * index)) & 0xFFFF); };
        return GrayOfWords(word(0), word(1), word(2)) | (word(3) << 16);
    });
}

} // namespace ImagingFramework::LinkKernels
