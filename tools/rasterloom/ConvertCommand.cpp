#include "Commands.h"
#include "Progress.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/ColorPaletteType.h>
#include <Corvane/Rasterloom/EnumNames.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/PixelFormatUtils.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace Tool {

using namespace Corvane::Rasterloom;

namespace {

template <class Number> bool ParseWhole(std::string_view text, Number& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

bool ParseSide(std::string_view text, std::int32_t& side) { return text.empty() || (ParseWhole(text, side) && side > 0); }

/// Runs one step of the work and prints what it did and how long it took.
template <class Body> void Step(Progress& progress, const char* name, Body body) {
    progress.Begin(name);
    const auto start = std::chrono::steady_clock::now();
    const std::string text = body();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    progress.Begin({});
    std::printf("%-8s %s (%.1f ms)\n", name, text.c_str(), time.count());
    std::fflush(stdout);
}

std::string Describe(Bitmap& bitmap) {
    return std::to_string(bitmap.get_Width()) + " x " + std::to_string(bitmap.get_Height()) + " " +
           std::string(ToString(bitmap.get_PixelFormat()));
}

void Resize(Bitmap& bitmap, const ConvertOptions& options) {
    RequestedSize size = *options.Resize;
    if (size.Percent > 0) {
        const auto scaled = [&](std::int32_t side) {
            return static_cast<std::int32_t>(std::max(1.0, std::round(side * size.Percent / 100.0)));
        };
        size = {scaled(bitmap.get_Width()), scaled(bitmap.get_Height()), 0};
    }
    bitmap.get_Transforms()->Resize(size.Width, size.Height, options.Interpolation);
}

/// Palettes are picked from the fixed web-safe colours, each pixel getting the nearest one.
void Convert(Bitmap& bitmap, PixelFormat format) {
    Transforms::PixelFormatConverter converter;
    converter.set_DestinationPixelFormat(format);
    if (PixelFormatUtils::IsIndexed(format)) {
        converter.set_PaletteType(ColorPaletteType::WebSafe);
        converter.set_Dithering(DitheringType::None);
    }
    const auto forward = converter.Progress.Subscribe(
        [&](ProgressEventArgs& args) { bitmap._OnProgress(&converter, args); });
    converter.ApplyTransform(bitmap);
}

/// Fails with `MediaUnsupportedException` when no format that can be saved has the file's extension.
void RequireWriter(const std::filesystem::path& file) {
    std::string wanted = "*" + file.extension().string();
    std::ranges::transform(wanted, wanted.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    for (const auto format : Codecs::FormatManager::SupportedMediaFormatsForSave()) {
        const std::string filter = ";" + Codecs::FormatManager::GetFilterString(format) + ";";
        if (filter.find(";" + wanted + ";") != std::string::npos) {
            return;
        }
    }
    throw Codecs::MediaUnsupportedException();
}

} // namespace

std::optional<RequestedSize> RequestedSize::Parse(const std::string& text) {
    RequestedSize size;
    if (!text.empty() && text.back() == '%') {
        const std::string_view number(text.data(), text.size() - 1);
        const bool valid = ParseWhole(number, size.Percent) && size.Percent > 0 && size.Percent <= 10000;
        return valid ? std::optional(size) : std::nullopt;
    }
    const auto cross = text.find('x');
    const bool valid = cross != std::string::npos && text.size() > 1 && ParseSide(text.substr(0, cross), size.Width) &&
                       ParseSide(text.substr(cross + 1), size.Height);
    return valid ? std::optional(size) : std::nullopt;
}

void RunConvert(const ConvertOptions& options) {
    // A format that cannot be written is told before the work, not after it.
    CurrentFile() = options.Output;
    RequireWriter(options.Output);
    CurrentFile() = options.Input;
    Bitmap bitmap;
    Progress progress(bitmap);
    Step(progress, "load", [&] {
        bitmap.Load(options.Input);
        return options.Input.string() + ": " + Describe(bitmap);
    });
    if (options.Resize) {
        Step(progress, "resize", [&] {
            Resize(bitmap, options);
            return Describe(bitmap) + ", " + std::string(ToString(options.Interpolation));
        });
    }
    if (options.PixelFormat && *options.PixelFormat != bitmap.get_PixelFormat()) {
        Step(progress, "convert", [&] {
            Convert(bitmap, *options.PixelFormat);
            return Describe(bitmap);
        });
    }
    CurrentFile() = options.Output;
    Step(progress, "save", [&] {
        bitmap.Save(options.Output);
        return options.Output.string();
    });
}

} // namespace Tool
