#include "Commands.h"
#include "Progress.h"

#include <Corvane/Rasterloom/EnumNames.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <functional>

// Exit codes: 0 done, 1 a file failed or the work was interrupted, 2 the command line is wrong.

namespace {

using namespace Corvane::Rasterloom;

constexpr int FileFailed = 1;
constexpr int UsageFailed = 2;

/// Names of an enumeration as a check of CLI11: case does not matter, and the usual list of names is the error text.
template <class E> CLI::Option* AddEnumOption(CLI::App& command, const std::string& name, const std::string& description,
                                              std::function<void(E)> store) {
    return command
        .add_option_function<std::string>(
            name, [store](const std::string& text) { store(*Parse<E>(text)); }, description)
        ->check([](const std::string& text) {
            if (Parse<E>(text)) {
                return std::string();
            }
            std::string names;
            for (const auto& entry : EnumNames<E>()) {
                names += (names.empty() ? "" : ", ") + std::string(entry.Name);
            }
            return "'" + text + "' is none of " + names;
        });
}

/// One clear line for whatever went wrong with the file at hand.
int Report(const std::string& cause) {
    std::fprintf(stderr, "rasterloom: %s: %s\n", Tool::CurrentFile().c_str(), cause.c_str());
    return FileFailed;
}

int Run(const std::function<void()>& command) {
    try {
        command();
        return 0;
    } catch (const AbortedException&) {
        return Report("interrupted");
    } catch (const std::exception& exception) {
        return Report(exception.what());
    }
}

} // namespace

std::filesystem::path& Tool::CurrentFile() {
    static std::filesystem::path s_file;
    return s_file;
}

int main(int argc, char** argv) {
    Tool::InstallInterruptHandler();
    CLI::App app("Loads, converts, resizes and saves pictures.", "rasterloom");
    app.set_version_flag("--version", RASTERLOOM_VERSION);
    app.require_subcommand(1);

    std::filesystem::path file;
    CLI::App* const info = app.add_subcommand("info", "Print what a picture is");
    info->add_option("FILE", file, "The picture")->required();

    Tool::ConvertOptions options;
    CLI::App* const convert = app.add_subcommand("convert", "Load a picture, change it, save it");
    convert->add_option("IN", options.Input, "The picture to load")->required();
    convert->add_option("OUT", options.Output, "Where to save; the extension tells the format")->required();
    convert
        ->add_option_function<std::string>(
            "--resize", [&](const std::string& text) { options.Resize = Tool::RequestedSize::Parse(text); },
            "New size: 800x600, 800x, x600 or 50%")
        ->check([](const std::string& text) {
            return Tool::RequestedSize::Parse(text) ? std::string() : "'" + text + "' is no size";
        });
    AddEnumOption<Transforms::InterpolationMode>(*convert, "--interpolation", "How to resample (default HighQuality)",
                                                 [&](auto mode) { options.Interpolation = mode; });
    AddEnumOption<PixelFormat>(*convert, "--pixel-format", "Pixel format of the result",
                               [&](auto format) { options.PixelFormat = format; });

    CLI::App* const formats = app.add_subcommand("formats", "List the file formats");

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : UsageFailed;
    }
    if (info->parsed()) {
        Tool::CurrentFile() = file;
        return Run([&] { Tool::RunInfo(file); });
    }
    if (convert->parsed()) {
        return Run([&] { Tool::RunConvert(options); });
    }
    return formats->parsed() ? Run(Tool::RunFormats) : UsageFailed;
}
