#include "Batch.h"
#include "CommandLine.h"
#include "InfoCommand.h"

#include <Corvane/Rasterloom/Bitmap.h>

#include <iostream>

// Exit codes: 0 done, 1 a file failed or the work was interrupted, 2 the command line is wrong.

namespace {

using namespace Corvane::Rasterloom;
using namespace Tool;

constexpr int FileFailed = 1;
constexpr int UsageFailed = 2;

/// What the command line asks for.
struct Request {
    std::vector<std::filesystem::path> Files;
    bool Json = false;
    BatchOptions Batch;
};

std::string LoadWhole(Bitmap& bitmap, const std::filesystem::path& file, const Settings&) {
    if (file == Standard) {
        bitmap.Load(ReadStandardInput());
    } else {
        bitmap.Load(file);
    }
    return Describe(bitmap);
}

std::optional<RequestedSize> ParseBox(const std::string& text) {
    const auto size = RequestedSize::Parse(text);
    return size && size->Percent <= 0 ? size : std::nullopt;
}

std::string LoadThumbnail(Bitmap& bitmap, const std::filesystem::path& file, const Settings& settings,
                          const RequestedSize& box) {
    const auto load = [&](const auto& source) {
        if (settings.Interpolation) {
            bitmap.LoadThumbnail(source, box.Width, box.Height, *settings.Interpolation);
        } else {
            bitmap.LoadThumbnail(source, box.Width, box.Height);
        }
    };
    if (file == Standard) {
        load(ReadStandardInput());
    } else {
        load(file);
    }
    return Describe(bitmap);
}

/// The options that every command with an output has.
void AddBatchOptions(CLI::App& command, Request& request) {
    command.add_option("FILES", request.Files, "Pictures to load (- is standard input), and last where to save: the extension "
                                               "tells the format, {} stands for the name of each input, - is standard output")
        ->required()
        ->expected(2, -1);
    command.add_option("--jobs,-j", request.Batch.Jobs, "Files worked on at a time (default 1)")->check(CLI::Range(1, 256));
    command.add_flag("--force,-f", request.Batch.Force, "Replace files that exist");
    command.add_option("--to", request.Batch.StandardOutputFormat, "Format for standard output, by its extension");
    const std::string saving = "How files are written";
    command.add_option("--quality", request.Batch.Saving.Quality, "JPEG: 0 to 100 (default 75)")
        ->check(CLI::Range(0, 100))
        ->group(saving);
    command.add_flag("--progressive", request.Batch.Saving.Progressive, "JPEG: in scans of growing detail")->group(saving);
    command
        .add_flag_callback("--no-chroma-subsampling", [&] { request.Batch.Saving.ChromaSubsampling = false; },
                           "JPEG: colour at full resolution")
        ->group(saving);
    command.add_flag("--interlaced", request.Batch.Saving.Interlaced, "PNG: in passes of growing detail")->group(saving);
    command.add_option("--compression-level", request.Batch.Saving.CompressionLevel, "PNG: 0 (none) to 9 (smallest)")
        ->check(CLI::Range(0, 9))
        ->group(saving);
    AddEnumOption<Transforms::InterpolationMode>(command, "--interpolation", "How to resample",
                                                 [&](auto mode) { request.Batch.Choices.Interpolation = mode; });
}

/// Colours that operations make up, and palettes.
void AddColorOptions(CLI::App& command, Settings& choices) {
    const std::string group = "Colours";
    AddParsedOption<std::uint32_t>(
        command, "--background", "#RRGGBB or #AARRGGBB where a picture does not reach (default white)", ParseColor,
        [] { return "no colour"; }, [&](std::uint32_t color) { choices.Background = color; })
        ->group(group);
    AddEnumOption<ColorPaletteType>(command, "--palette", "Palette of indexed results (default Adaptive)",
                                    [&](auto type) { choices.Palette = type; })
        ->group(group);
    command.add_option("--palette-size", choices.PaletteEntryCount, "Entries of an adaptive palette")
        ->check(CLI::Range(2, 256))
        ->group(group);
    AddEnumOption<ColorQuantizationAlgorithm>(command, "--quantizer", "How an adaptive palette is made (default MedianCut)",
                                              [&](auto algorithm) { choices.Quantizer = algorithm; })
        ->group(group);
    AddEnumOption<DitheringType>(command, "--dither", "How indexed results are dithered (default FloydSteinberg)",
                                 [&](auto type) { choices.Dithering = type; })
        ->group(group);
    command.add_option("--dither-percent", choices.DitheringPercent, "Strength of the dithering (default 100)")
        ->check(CLI::Range(0, 100))
        ->group(group);
}

CLI::App* AddConvert(CLI::App& app, Request& request) {
    CLI::App* const convert = app.add_subcommand("convert", "Load pictures, change them, save them");
    AddBatchOptions(*convert, request);
    const auto add = [&](Operation operation) { request.Batch.Operations.push_back(std::move(operation)); };
    const std::string group = "Operations, in the order given";
    AddParsedOption<RequestedSize>(
        *convert, "--resize", "New size: 800x600, 800x, x600 or 50%", RequestedSize::Parse, [] { return "no size"; },
        [add](RequestedSize size) { add(MakeResize(size)); })
        ->group(group);
    AddParsedOption<RequestedBox>(
        *convert, "--crop", "LEFT,TOP,WIDTH,HEIGHT in pixels", RequestedBox::Parse, [] { return "no box"; },
        [add](RequestedBox box) { add(MakeCrop(box)); })
        ->group(group);
    AddEnumOption<Host::RotateFlipType>(*convert, "--rotate-flip", "Turn and flip, e.g. Rotate90FlipNone", [add](auto mode) {
        add(MakeRotateFlip(mode));
    })->group(group);
    AddParsedOption<double>(
        *convert, "--rotate", "Rotate by degrees, clockwise", ParseNumber, [] { return "no number"; },
        [add](double angle) { add(MakeRotate(angle)); })
        ->group(group);
    AddEnumOption<PixelFormat>(*convert, "--pixel-format", "Pixel format", [add](PixelFormat format) {
        add(MakePixelFormat(format));
    })->group(group);
    AddColorOptions(*convert, request.Batch.Choices);
    return convert;
}

CLI::App* AddThumbnail(CLI::App& app, Request& request, RequestedSize& size) {
    CLI::App* const thumbnail = app.add_subcommand("thumbnail", "Load pictures reduced to fit into a box, save them");
    AddBatchOptions(*thumbnail, request);
    AddParsedOption<RequestedSize>(
        *thumbnail, "--size", "The box: 160x120, 160x or x120", ParseBox, [] { return "no size of a box"; },
        [&](RequestedSize box) { size = box; })
        ->required();
    return thumbnail;
}

int RunTasks(Request& request) {
    const std::filesystem::path output = request.Files.back();
    request.Files.pop_back();
    Console console(output == Standard);
    if (output == Standard && request.Batch.StandardOutputFormat.empty()) {
        throw UsageError{"standard output needs --to with a format"};
    }
    return RunBatch(MakeTasks(request.Files, output), request.Batch, console) ? 0 : FileFailed;
}

} // namespace

int main(int argc, char** argv) {
    InstallInterruptHandler();
    Request request;
    CLI::App app("Loads, converts, resizes and saves pictures.", "rasterloom");
    app.set_version_flag("--version", RASTERLOOM_VERSION);
    app.require_subcommand(1);
    CLI::App* const info = app.add_subcommand("info", "Print what pictures are");
    info->add_option("FILES", request.Files, "The pictures; - is standard input")->required();
    info->add_flag("--json", request.Json, "Print a JSON array");
    CLI::App* const convert = AddConvert(app, request);
    RequestedSize box;
    CLI::App* const thumbnail = AddThumbnail(app, request, box);
    app.add_subcommand("formats", "List the file formats");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : UsageFailed;
    }
    try {
        if (convert->parsed()) {
            request.Batch.Load = LoadWhole;
            return RunTasks(request);
        }
        if (thumbnail->parsed()) {
            request.Batch.Load = [box](Bitmap& bitmap, const std::filesystem::path& file, const Settings& settings) {
                return LoadThumbnail(bitmap, file, settings, box);
            };
            return RunTasks(request);
        }
        Console console(false);
        if (info->parsed()) {
            return RunInfo(request.Files, request.Json, console) ? 0 : FileFailed;
        }
        RunFormats(console);
        return 0;
    } catch (const UsageError& error) {
        std::cerr << "rasterloom: " << error.Text << '\n';
        return UsageFailed;
    }
}
