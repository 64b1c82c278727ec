#include "ColorChoices.h"

#include "Files.h"
#include "Values.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/EnumNames.h>

#include <charconv>
#include <exception>

namespace Tool {

using namespace Corvane::Rasterloom;

namespace {

constexpr std::int32_t SmallestPalette = 2;
constexpr std::int32_t LargestPalette = 256;
/// Stands for a file of the system.
constexpr std::string_view SrgbName = "srgb";

/// A short name of the command line beside those of the library.
template <class E>
struct ShortName {
    std::string_view Name;
    E Value;
};

template <class E, std::size_t Count>
std::optional<E> ParseName(const std::string& text, const ShortName<E> (&names)[Count]) {
    for (const auto& entry : names) {
        if (Detail::EqualsIgnoringCase(entry.Name, text)) {
            return entry.Value;
        }
    }
    return Parse<E>(text);
}

/// The palette of an indexed picture; for any other picture the colours that stand for it best.
std::shared_ptr<ColorPalette> LoadPalette(const std::string& file) {
    Bitmap bitmap;
    bitmap.Load(std::filesystem::path(file));
    return std::make_shared<ColorPalette>(bitmap, LargestPalette, false);
}

std::shared_ptr<ColorProfile> LoadProfile(const std::string& file) {
    if (Detail::EqualsIgnoringCase(file, SrgbName)) {
        return ColorProfile::FromSrgb();
    }
    return file.empty() ? nullptr : std::make_shared<ColorProfile>(std::filesystem::path(file));
}

template <class Load>
auto LoadChoice(const char* option, const std::string& file, Load load) {
    try {
        return load(file);
    } catch (const std::exception& exception) {
        throw UsageError{std::string(option) + ": " + file + ": " + exception.what()};
    }
}

} // namespace

std::optional<RequestedPalette> RequestedPalette::Parse(const std::string& text) {
    constexpr ShortName<ColorPaletteType> names[] = {{"gray", ColorPaletteType::GrayScale},
                                                     {"grey", ColorPaletteType::GrayScale}};
    if (const auto number = ParseNumber(text)) {
        const bool valid = *number >= SmallestPalette && *number <= LargestPalette;
        const auto count = valid ? static_cast<std::int32_t>(*number) : 0;
        return valid && count == *number ? std::optional(RequestedPalette{ColorPaletteType::Adaptive, count, {}})
                                         : std::nullopt;
    }
    const auto type = ParseName(text, names);
    if (type && *type != ColorPaletteType::Custom) {
        return RequestedPalette{*type, 0, {}};
    }
    return text.empty() ? std::nullopt : std::optional(RequestedPalette{ColorPaletteType::Custom, 0, text});
}

std::optional<RequestedDithering> RequestedDithering::Parse(const std::string& text) {
    const auto colon = text.find(':');
    const auto type = Corvane::Rasterloom::Parse<DitheringType>(text.substr(0, colon));
    if (!type || colon == std::string::npos) {
        return type ? std::optional(RequestedDithering{*type, {}}) : std::nullopt;
    }
    const auto percent = ParseNumber(text.substr(colon + 1));
    const bool valid = percent && *percent >= 0 && *percent <= 100;
    return valid ? std::optional(RequestedDithering{*type, percent}) : std::nullopt;
}

std::optional<ColorQuantizationAlgorithm> ParseQuantizer(const std::string& text) {
    constexpr ShortName<ColorQuantizationAlgorithm> names[] = {{"median-cut", ColorQuantizationAlgorithm::MedianCut}};
    return ParseName(text, names);
}

std::optional<ColorTransformationIntent> ParseIntent(const std::string& text) {
    constexpr ShortName<ColorTransformationIntent> names[] = {
        {"relative", ColorTransformationIntent::RelativeColorimetric},
        {"absolute", ColorTransformationIntent::AbsoluteColorimetric},
    };
    return ParseName(text, names);
}

void ColorChoices::Complete() {
    if (Palette.Type == ColorPaletteType::Custom) {
        Custom = LoadChoice("--palette", Palette.File, LoadPalette);
    }
    Palette.EntryCount = PaletteSize.value_or(Palette.EntryCount);
    ProfileIn = LoadChoice("--profile-in", ProfileInFile, LoadProfile);
    ProfileOut = LoadChoice("--profile-out", ProfileOutFile, LoadProfile);
    ProfileProof = LoadChoice("--profile-proof", ProfileProofFile, LoadProfile);
    if (ProfileProof && !ProfileOut) {
        throw UsageError{"--profile-proof needs --profile-out, the profile to show the proof in"};
    }
    if (ProfileOut && ProfileOut->get_ColorSpace() == ColorSpace::Unknown) {
        throw UsageError{"--profile-out: " + ProfileOutFile + ": a profile of this colour space describes no pictures"};
    }
    const bool adaptive = Palette.Type == ColorPaletteType::Adaptive &&
                          (Palette.EntryCount == 0 || Palette.EntryCount >= SmallestAlphaPalette);
    if (AlphaThreshold && (!adaptive || Background)) {
        throw UsageError{
            "--alpha-threshold goes with an adaptive palette of 8 entries or more, and with no --background"};
    }
    const bool relative = !Intent || *Intent == ColorTransformationIntent::RelativeColorimetric ||
                          *Intent == ColorTransformationIntent::RelativeColorimetricBpc;
    if (BlackPointCompensation && !relative) {
        throw UsageError{"--bpc goes with --intent relative"};
    }
}

ColorTransformationIntent ColorChoices::GetIntent() const {
    return BlackPointCompensation ? ColorTransformationIntent::RelativeColorimetricBpc
                                  : Intent.value_or(ColorTransformationIntent::Perceptual);
}

bool ColorChoices::IsResultSrgb() const {
    return Detail::EqualsIgnoringCase(ProfileOutFile.empty() ? ProfileInFile : ProfileOutFile, SrgbName);
}

RgbColor ColorChoices::GetBackground() const {
    constexpr std::uint32_t white = 0xFFFFFFFFU;
    return RgbColor(static_cast<std::int32_t>(Background.value_or(white)));
}

} // namespace Tool
