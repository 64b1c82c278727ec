#pragma once

#include <Corvane/Rasterloom/PixelFormat.h>
#include <Corvane/Rasterloom/Transforms/InterpolationMode.h>

#include <filesystem>
#include <optional>
#include <string>

namespace Tool {

/// The file that a command works on at the moment, for the line that tells a failure.
std::filesystem::path& CurrentFile();

/// A size of the command line: "800x600", "800x", "x600" (the other side follows) or "50%".
struct RequestedSize {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    double Percent = 0;

    /// Nothing for a text that is no size.
    static std::optional<RequestedSize> Parse(const std::string& text);
};

struct ConvertOptions {
    std::filesystem::path Input;
    std::filesystem::path Output;
    std::optional<RequestedSize> Resize;
    Corvane::Rasterloom::Transforms::InterpolationMode Interpolation =
        Corvane::Rasterloom::Transforms::InterpolationMode::HighQuality;
    std::optional<Corvane::Rasterloom::PixelFormat> PixelFormat;
};

// Each command prints to standard output and fails with the library's exceptions.

void RunInfo(const std::filesystem::path& file);
void RunConvert(const ConvertOptions& options);
void RunFormats();

} // namespace Tool
