#pragma once

#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/ColorPaletteType.h>
#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/ColorQuantizationAlgorithm.h>
#include <Corvane/Rasterloom/ColorTransformationIntent.h>
#include <Corvane/Rasterloom/DitheringType.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace Tool {

/// Palettes with alpha are not made for fewer entries.
inline constexpr std::int32_t SmallestAlphaPalette = 8;

/// "websafe", "gray", a number of entries, or a file.
struct RequestedPalette {
    Corvane::Rasterloom::ColorPaletteType Type = Corvane::Rasterloom::ColorPaletteType::Adaptive;
    std::int32_t EntryCount = 0; ///< 0: as many as there are
    std::string File;            ///< of the type `Custom`

    /// What is no number and no name is the name of a file. Nothing for a number outside 2 to 256 and for an empty
    /// text.
    static std::optional<RequestedPalette> Parse(const std::string& text);
};

/// "Jarvis" or "Jarvis:50".
struct RequestedDithering {
    Corvane::Rasterloom::DitheringType Type = Corvane::Rasterloom::DitheringType::FloydSteinberg;
    std::optional<double> Percent;

    static std::optional<RequestedDithering> Parse(const std::string& text);
};

/// "octree" or "median-cut", and the names of the library.
std::optional<Corvane::Rasterloom::ColorQuantizationAlgorithm> ParseQuantizer(const std::string& text);
/// "perceptual", "relative", "saturation" or "absolute", and the names of the library.
std::optional<Corvane::Rasterloom::ColorTransformationIntent> ParseIntent(const std::string& text);

/// How colours are converted in a run. Profiles and palettes are read before the first picture.
struct ColorChoices {
    /// What shows where a picture does not reach, and through it where the result cannot be transparent; 0xAARRGGBB.
    std::optional<std::uint32_t> Background;

    // Pictures that become indexed.
    RequestedPalette Palette;
    /// The most entries; of a given palette those are picked that are used most.
    std::optional<std::int32_t> PaletteSize;
    std::shared_ptr<Corvane::Rasterloom::ColorPalette> Custom;
    Corvane::Rasterloom::ColorQuantizationAlgorithm Quantizer =
        Corvane::Rasterloom::ColorQuantizationAlgorithm::MedianCut;
    Corvane::Rasterloom::DitheringType Dithering = Corvane::Rasterloom::DitheringType::FloydSteinberg;
    double DitheringPercent = 100;
    /// Pixels below it become one transparent entry of an adaptive palette.
    std::optional<std::uint8_t> AlphaThreshold;
    /// Whether anything of that was asked for.
    bool WantsIndexed = false;

    // Colour management.
    std::string ProfileInFile;
    std::string ProfileOutFile;
    std::string ProfileProofFile;
    std::shared_ptr<Corvane::Rasterloom::ColorProfile> ProfileIn;
    std::shared_ptr<Corvane::Rasterloom::ColorProfile> ProfileOut;
    std::shared_ptr<Corvane::Rasterloom::ColorProfile> ProfileProof;
    std::optional<Corvane::Rasterloom::ColorTransformationIntent> Intent;
    bool BlackPointCompensation = false;

    /// Reads the files that the choices name. Fails with `UsageError` for a file that is not what it should be, and for
    /// choices that do not go together.
    void Complete();
    /// The intent with the compensation taken in.
    Corvane::Rasterloom::ColorTransformationIntent GetIntent() const;
    /// Whether pictures leave in sRGB, as far as the choices tell.
    bool IsResultSrgb() const;
    /// White where none was chosen.
    Corvane::Rasterloom::RgbColor GetBackground() const;
};

} // namespace Tool
