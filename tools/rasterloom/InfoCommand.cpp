#include "InfoCommand.h"

#include "Files.h"

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/FormatReader.h>
#include <Corvane/Rasterloom/Codecs/Frame.h>
#include <Corvane/Rasterloom/EnumNames.h>

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace Tool {

using namespace Corvane::Rasterloom;
using Json = nlohmann::ordered_json;

namespace {

Json DescribeFrame(Codecs::IFrame& frame) {
    return {
        {"width", frame.get_Width()},
        {"height", frame.get_Height()},
        {"pixelFormat", ToString(frame.get_PixelFormat())},
        {"colorSpace", ToString(frame.get_ColorSpace())},
        {"bitsPerPixel", frame.get_BitsPerPixel()},
        {"hasAlpha", frame.get_HasAlpha()},
        {"horizontalResolution", frame.get_HorizontalResolution()},
        {"verticalResolution", frame.get_VerticalResolution()},
    };
}

Json DescribeFile(const std::filesystem::path& file) {
    const auto reader = OpenPicture(file);
    Json frames = Json::array();
    for (std::int32_t index = 0; index < reader->get_FrameCount(); ++index) {
        frames.push_back(DescribeFrame(*reader->LoadFrame(index)));
    }
    return {{"file", file.string()},
            {"format", reader->get_FormatName()},
            {"description", reader->get_FormatDescription()},
            {"mimeType", reader->get_MimeType()},
            {"frames", std::move(frames)}};
}

void PrintLine(Console& console, const char* label, const std::string& text) {
    char padded[32];
    std::snprintf(padded, sizeof padded, "  %-12s ", label);
    console.Print(padded + text);
}

void PrintFrame(Console& console, const Json& frame) {
    const auto text = [&](const char* key) { return frame.at(key).get<std::string>(); };
    const auto number = [&](const char* key) { return std::to_string(frame.at(key).get<std::int32_t>()); };
    PrintLine(console, "size", number("width") + " x " + number("height"));
    PrintLine(console, "pixels", text("pixelFormat") + ", " + text("colorSpace") + ", " + number("bitsPerPixel") +
                                     " bits" + (frame.at("hasAlpha").get<bool>() ? ", with alpha" : ""));
    char resolution[64];
    std::snprintf(resolution, sizeof resolution, "%.2f x %.2f dpi", frame.at("horizontalResolution").get<double>(),
                  frame.at("verticalResolution").get<double>());
    PrintLine(console, "resolution", resolution);
}

void PrintFile(Console& console, const Json& file) {
    console.Print(file.at("file").get<std::string>() + ": " + file.at("description").get<std::string>());
    const Json& frames = file.at("frames");
    for (std::size_t index = 0; index < frames.size(); ++index) {
        if (frames.size() > 1) {
            console.Print(" frame " + std::to_string(index + 1) + " of " + std::to_string(frames.size()));
        }
        PrintFrame(console, frames[index]);
    }
}

} // namespace

bool RunInfo(const std::vector<std::filesystem::path>& files, bool json, Console& console) {
    bool complete = true;
    Json all = Json::array();
    for (const std::filesystem::path& file : files) {
        try {
            all.push_back(DescribeFile(file));
        } catch (const std::exception& exception) {
            console.Fail(file, exception.what());
            complete = false;
            continue;
        }
        if (!json) {
            PrintFile(console, all.back());
        }
    }
    if (json) {
        // A name of a file may hold any bytes; those that are no text are shown as such.
        console.Print(all.dump(2, ' ', false, Json::error_handler_t::replace));
    }
    return complete;
}

void RunFormats(Console& console) {
    const auto loads = Codecs::FormatManager::SupportedMediaFormatsForLoad();
    const auto saves = Codecs::FormatManager::SupportedMediaFormatsForSave();
    const auto holds = [](const auto& list, auto value) { return std::ranges::find(list, value) != list.end(); };
    auto all = loads;
    std::ranges::copy_if(saves, std::back_inserter(all), [&](auto value) { return !holds(loads, value); });
    const auto print = [&](const char* name, const char* load, const char* save, const char* files, const char* text) {
        char line[256];
        std::snprintf(line, sizeof line, "%-10s %-5s %-5s %-24s %s", name, load, save, files, text);
        console.Print(line);
    };
    print("format", "load", "save", "files", "description");
    for (const auto format : all) {
        print(Codecs::FormatManager::GetFormatName(format).c_str(), holds(loads, format) ? "yes" : "no",
              holds(saves, format) ? "yes" : "no", Codecs::FormatManager::GetFilterString(format).c_str(),
              Codecs::FormatManager::GetFormatDescription(format).c_str());
    }
}

} // namespace Tool
