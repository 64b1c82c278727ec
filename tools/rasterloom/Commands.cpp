#include "Commands.h"

#include "CommandLine.h"

#include <Corvane/Rasterloom/PixelFormatUtils.h>

#include <algorithm>

namespace Tool {

using namespace Corvane::Rasterloom;

namespace {

constexpr const char* ConvertExamples = R"(Examples:
  rasterloom convert photo.jpg photo.png
  rasterloom convert photo.jpg small.jpg --resize 50% --quality 85
  rasterloom convert *.jpg out/{}.png --jobs 0 --auto-orient
  rasterloom convert scan.png icon.png --palette 16 --dither Jarvis:80
  rasterloom convert photo.jpg print.jpg --profile-out press.icc --bpc
  cat photo.jpg | rasterloom convert - - --to png --resize 200x > small.png

Operations are applied in the order given. Metadata (EXIF, IPTC, XMP, image
resources) and the colour profile are kept where the new file can hold them.
Pixels are turned as EXIF says with --auto-orient alone; otherwise the EXIF
orientation is carried along. An EXIF thumbnail is kept as it is while the
pixels are; else it is made anew, or left out of pictures as small as itself.)";

constexpr const char* ThumbnailExamples = R"(Examples:
  rasterloom thumbnail photo.jpg small.jpg --size 160x120
  rasterloom thumbnail *.jpg thumbs/{}.jpg --size 800x600 --jobs 0 --fast
  rasterloom thumbnail photo.jpg upright.png --size 256x256 --auto-orient

Proportions stay, and nothing is enlarged. Metadata and the colour profile are
kept where the new file can hold them; --strip leaves them behind.)";

constexpr const char* InfoExamples = R"(Examples:
  rasterloom info photo.jpg
  rasterloom info --metadata photo.jpg
  rasterloom info --json --metadata *.jpg)";

std::optional<RequestedSize> ParseBox(const std::string& text) {
    const auto size = RequestedSize::Parse(text);
    return size && size->Percent <= 0 ? size : std::nullopt;
}

std::optional<PixelFormat> ParsePixelFormat(const std::string& text) {
    const auto format = Parse<PixelFormat>(text);
    return format ? format : Parse<PixelFormat>("Format" + text);
}

CLI::Option* AddNumber(CLI::App& command, const OptionText& text, std::optional<std::int32_t>& target,
                       std::int32_t least, std::int32_t most) {
    return command.add_option(text.Name, target, text.Description)
        ->option_text(text.Value)
        ->check(CLI::Range(least, most));
}

void AddFileOptions(CLI::App& command, Request& request) {
    command
        .add_option(
            "FILES", request.Files,
            "Pictures to load (- is standard input), and last where to save: the extension tells the format, {} "
            "stands for the name of each input without folder and extension, - is standard output")
        ->option_text("INPUT... OUTPUT")
        ->required()
        ->expected(2, -1);
    command.add_flag("-f,--force", request.Batch.Force, "Replace files that exist");
    command
        .add_option("-j,--jobs", request.Batch.Jobs,
                    "Files worked on at a time (default 1); 0 for one on each processor")
        ->option_text("N")
        ->check(CLI::Range(0, 256));
    command.add_option("--to", request.Batch.StandardOutputFormat, "Format for standard output, by its extension")
        ->option_text("FORMAT");
    command.add_flag("--strip", request.Batch.Loading.Strip, "Leave all metadata and the colour profile behind");
    command.add_flag("--auto-orient", request.Batch.Loading.AutoOrient,
                     "Turn the pixels as the EXIF orientation tells, before all operations");
}

void AddSaveOptions(CLI::App& command, SaveChoices& saving) {
    const std::string group = "How files are written";
    AddNumber(command, {"--quality", "N", "JPEG: 0 to 100 (default 75)"}, saving.Quality, 0, 100)->group(group);
    command.add_flag("--progressive", saving.Progressive, "JPEG: in scans of growing detail")->group(group);
    command
        .add_flag_callback(
            "--no-chroma-subsampling", [&] { saving.ChromaSubsampling = false; }, "JPEG: colour at full resolution")
        ->group(group);
    AddNumber(command, {"--restart-interval", "ROWS", "JPEG: rows of blocks from one restart marker to the next"},
              saving.RestartInterval, 0, 65535)
        ->group(group);
    command.add_flag("--interlaced", saving.Interlaced, "PNG: in passes of growing detail")->group(group);
    AddNumber(command, {"--compression-level", "N", "PNG: 0 (none) to 9 (smallest)"}, saving.CompressionLevel, 0, 9)
        ->group(group);
    AddEnumOption<Codecs::PngFilter>(command, {"--png-filter", "FILTER", "PNG: how lines are prepared for packing"},
                                     [&](auto filter) { saving.Filter = filter; })
        ->group(group);
    command.add_flag("--rle", saving.RunLengths, "BMP: run lengths, for 4 and 8-bit indexed pictures")->group(group);
}

void AddProfileOptions(CLI::App& command, Request& request, bool inOrder) {
    const std::string group = "Colour management";
    ColorChoices& colors = request.Batch.Choices.Colors;
    command
        .add_option(
            "--profile-in", colors.ProfileInFile,
            "ICC profile that the colours of the pictures are in, in place of their own; srgb is the system's sRGB")
        ->option_text("FILE")
        ->group(group);
    // Kept in the order of operations by the place where it stands.
    command
        .add_option_function<std::string>(
            "--profile-out",
            [&request](const std::string& file) {
                request.Batch.Choices.Colors.ProfileOutFile = file;
                request.Batch.Operations.push_back(MakeProfile());
            },
            std::string("ICC profile to convert the colours to, which the result carries; srgb as above") +
                (inOrder ? ". One of the operations in the order given" : ""))
        ->option_text("FILE")
        ->trigger_on_parse()
        ->group(group);
    command.add_option("--profile-proof", colors.ProfileProofFile, "ICC profile of a device to simulate on the way")
        ->option_text("FILE")
        ->group(group);
    AddParsedOption<ColorTransformationIntent>(
        command, {"--intent", "INTENT", "perceptual (default), relative, saturation or absolute"}, ParseIntent,
        [] { return "none of perceptual, relative, saturation, absolute"; },
        [&](auto intent) { colors.Intent = intent; })
        ->group(group);
    command.add_flag("--bpc", colors.BlackPointCompensation, "Black point compensation, with the relative intent")
        ->group(group);
}

void AddBackground(CLI::App& command, ColorChoices& colors) {
    AddParsedOption<std::uint32_t>(
        command,
        {"--background", "COLOUR",
         "#RRGGBB or #AARRGGBB where a picture does not reach, and behind transparent pixels where the result has none "
         "(default white)"},
        ParseColor, [] { return "no colour like #20A0FF"; }, [&](std::uint32_t color) { colors.Background = color; });
}

void AddPaletteOptions(CLI::App& command, ColorChoices& colors) {
    const std::string group = "Indexed results (without --pixel-format: the smallest that holds the palette)";
    AddParsedOption<RequestedPalette>(
        command,
        {"--palette", "PALETTE",
         "2 to 256 for so many entries made for the picture; adaptive, websafe, windows, mac, gray or bicolor; or a "
         "picture whose palette is taken"},
        RequestedPalette::Parse, [] { return "no palette: 2 to 256 entries, a name, or the file of a picture"; },
        [&](const RequestedPalette& palette) {
            colors.Palette = palette;
            colors.WantsIndexed = true;
        })
        ->group(group);
    AddNumber(command,
              {"--palette-size", "N", "The most entries, 2 to 256; of a given palette those that are used most"},
              colors.PaletteSize, 2, 256)
        ->group(group);
    AddParsedOption<ColorQuantizationAlgorithm>(
        command,
        {"--quantizer", "METHOD",
         "How a palette is made for the picture: median-cut (default) or octree, which is a tree of sixteen ways for "
         "pictures with alpha"},
        ParseQuantizer, [] { return "none of median-cut, octree"; },
        [&](auto algorithm) {
            colors.Quantizer = algorithm;
            colors.WantsIndexed = true;
        })
        ->group(group);
    AddParsedOption<RequestedDithering>(
        command,
        {"--dither", "TYPE[:PERCENT]",
         "Dithering and its strength (default FloydSteinberg:100): " + NamesOf<DitheringType>()},
        RequestedDithering::Parse, [] { return "none of " + NamesOf<DitheringType>() + ", with a percentage or not"; },
        [&](const RequestedDithering& dithering) {
            colors.Dithering = dithering.Type;
            colors.DitheringPercent = dithering.Percent.value_or(colors.DitheringPercent);
            colors.WantsIndexed = true;
        })
        ->group(group);
    AddParsedOption<double>(
        command, {"--alpha-threshold", "N", "Pixels of alpha below it (1 to 255) become one transparent entry"},
        [](const std::string& text) {
            const auto value = ParseNumber(text);
            return value && *value >= 1 && *value <= 255 && *value == static_cast<std::uint8_t>(*value) ? value
                                                                                                        : std::nullopt;
        },
        [] { return "no number from 1 to 255"; },
        [&](double value) {
            colors.AlphaThreshold = static_cast<std::uint8_t>(value);
            colors.WantsIndexed = true;
        })
        ->group(group);
}

void AddOperations(CLI::App& command, std::vector<Operation>& operations) {
    const std::string group = "Operations, in the order given";
    const auto add = [&operations](Operation operation) { operations.push_back(std::move(operation)); };
    AddParsedOption<RequestedSize>(
        command, {"--resize", "SIZE", "New size: 800x600, 800x, x600 or 50%"}, RequestedSize::Parse,
        [] { return "no size like 800x600, 800x, x600 or 50%"; }, [add](RequestedSize size) { add(MakeResize(size)); })
        ->group(group);
    AddParsedOption<RequestedBox>(
        command, {"--crop", "L,T,W,H", "Left, top, width and height in pixels; may reach beyond the picture"},
        RequestedBox::Parse, [] { return "no box like 10,20,300,200"; },
        [add](RequestedBox box) { add(MakeCrop(box)); })
        ->group(group);
    AddEnumOption<Host::RotateFlipType>(command, {"--rotate-flip", "TURN", "Turn clockwise, then flip"},
                                        [add](auto mode) { add(MakeRotateFlip(mode)); })
        ->group(group);
    AddParsedOption<double>(
        command, {"--rotate", "DEGREES", "Rotate by any angle, clockwise"}, ParseNumber, [] { return "no number"; },
        [add](double angle) { add(MakeRotate(angle)); })
        ->group(group);
    const std::string names =
        NamesOf<PixelFormat>([](PixelFormat format) { return format != PixelFormat::FormatUnknown; });
    AddParsedOption<PixelFormat>(
        command, {"--pixel-format", "FORMAT", "Convert the pixels (the word Format may be left out): " + names},
        ParsePixelFormat, [names] { return "none of " + names; },
        [add](PixelFormat format) { add(MakePixelFormat(format)); })
        ->group(group);
}

/// Choices about palettes bring an operation of their own, where none makes the picture indexed.
void AddImpliedOperations(BatchOptions& batch) {
    batch.Choices.Colors.WantsIndexed |= batch.Choices.Colors.PaletteSize.has_value();
    if (!batch.Choices.Colors.WantsIndexed) {
        return;
    }
    const auto isIndexed = [](const Operation& operation) {
        return operation.Format && PixelFormatUtils::IsIndexed(*operation.Format);
    };
    if (std::ranges::any_of(batch.Operations, isIndexed)) {
        return;
    }
    const auto hasFormat = [](const Operation& operation) { return operation.Format.has_value(); };
    if (std::ranges::any_of(batch.Operations, hasFormat)) {
        throw UsageError{"--palette and the options that go with it need an indexed --pixel-format, or none"};
    }
    batch.Operations.push_back(MakeIndexed());
}

} // namespace

CLI::App* AddInfo(CLI::App& app, Request& request) {
    CLI::App* const info = app.add_subcommand("info", "Print what pictures are");
    info->add_option("FILES", request.Files, "The pictures; - is standard input")->option_text("FILE...")->required();
    info->add_flag("--metadata", request.Metadata, "Every entry of EXIF, IPTC, XMP and image resources as well");
    info->add_flag("--json", request.Json, "As a JSON array with an object for each file");
    info->footer(InfoExamples);
    return info;
}

CLI::App* AddConvert(CLI::App& app, Request& request) {
    CLI::App* const convert = app.add_subcommand("convert", "Load pictures, change them, save them");
    AddFileOptions(*convert, request);
    AddBackground(*convert, request.Batch.Choices.Colors);
    AddEnumOption<Transforms::InterpolationMode>(*convert,
                                                 {"--interpolation", "MODE", "How to resample (default HighQuality)"},
                                                 [&](auto mode) { request.Batch.Choices.Interpolation = mode; });
    AddOperations(*convert, request.Batch.Operations);
    AddPaletteOptions(*convert, request.Batch.Choices.Colors);
    AddProfileOptions(*convert, request, true);
    AddSaveOptions(*convert, request.Batch.Saving);
    convert->footer(ConvertExamples);
    return convert;
}

CLI::App* AddThumbnail(CLI::App& app, Request& request) {
    using enum Transforms::InterpolationMode;
    CLI::App* const thumbnail = app.add_subcommand("thumbnail", "Load pictures reduced to fit into a box, save them");
    AddFileOptions(*thumbnail, request);
    AddParsedOption<RequestedSize>(
        *thumbnail, {"--size", "BOX", "The box: 160x120, 160x or x120. Needed"}, ParseBox,
        [] { return "no size of a box like 160x120"; }, [&](RequestedSize box) { request.Batch.Loading.Box = box; })
        ->required();
    thumbnail->add_flag("--fast", request.Batch.Loading.Fast,
                        "JPEG: let the decoder reduce first, which is faster and a little less exact");
    AddEnumOption<Transforms::InterpolationMode>(
        *thumbnail, {"--interpolation", "MODE", "How to resample (default Anisotropic4)"},
        [&](auto mode) { request.Batch.Choices.Interpolation = mode; },
        [](auto mode) {
            return mode == NearestNeighbour || mode == Anisotropic4 || mode == Anisotropic9 || mode == Lanczos3Filter;
        });
    AddBackground(*thumbnail, request.Batch.Choices.Colors);
    AddProfileOptions(*thumbnail, request, false);
    AddSaveOptions(*thumbnail, request.Batch.Saving);
    thumbnail->footer(ThumbnailExamples);
    return thumbnail;
}

CLI::App* AddFormats(CLI::App& app) {
    return app.add_subcommand("formats", "List the file formats");
}

bool RunRequest(Request& request) {
    const std::filesystem::path output = request.Files.back();
    request.Files.pop_back();
    Console console(output == Standard);
    if (output == Standard && request.Batch.StandardOutputFormat.empty()) {
        throw UsageError{"standard output needs --to with a format"};
    }
    const auto tasks = MakeTasks(request.Files, output);
    AddImpliedOperations(request.Batch);
    request.Batch.Choices.Colors.Complete();
    return RunBatch(tasks, request.Batch, console);
}

} // namespace Tool
