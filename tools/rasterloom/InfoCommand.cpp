#include "InfoCommand.h"

#include "Files.h"
#include "Metadata.h"
#include "MetadataReport.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/FormatReader.h>
#include <Corvane/Rasterloom/Codecs/Frame.h>
#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/EnumNames.h>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace Tool {

using namespace Corvane::Rasterloom;

namespace {

using Note = std::function<void(const std::string&)>;

Json DescribePalette(ColorPalette& palette) {
    bool gray = true;
    bool alpha = false;
    for (const RgbColor& entry : palette.Export()) {
        gray = gray && entry.get_R() == entry.get_G() && entry.get_G() == entry.get_B();
        alpha = alpha || entry.get_A() != 255;
    }
    return {
        {"entries", palette.get_Count()}, {"gray", gray}, {"type", ToString(palette.get_Type())}, {"hasAlpha", alpha}};
}

Json DescribeProfile(ColorProfile& profile) {
    return {{"description", profile.get_Description()},
            {"colorSpace", ToString(profile.get_ColorSpace())},
            {"class", ToString(profile.get_DeviceClass())}};
}

Json DescribeFrame(Codecs::IFrame& frame, const Note& note) {
    Json described = {
        {"width", frame.get_Width()},
        {"height", frame.get_Height()},
        {"pixelFormat", ToString(frame.get_PixelFormat())},
        {"colorSpace", ToString(frame.get_ColorSpace())},
        {"bitsPerPixel", frame.get_BitsPerPixel()},
        {"hasAlpha", frame.get_HasAlpha()},
        {"horizontalResolution", frame.get_HorizontalResolution()},
        {"verticalResolution", frame.get_VerticalResolution()},
    };
    if (frame.get_IsIndexed()) {
        // The palette comes with the pixels alone.
        try {
            Bitmap bitmap;
            frame.GetBitmap(&bitmap);
            described["palette"] = DescribePalette(*bitmap.get_Palette());
        } catch (const std::exception& exception) {
            note(std::string("the palette cannot be read: ") + exception.what());
        }
    }
    if (const auto profile = frame.get_ColorProfile()) {
        described["profile"] = DescribeProfile(*profile);
    }
    return described;
}

Json DescribeFile(const std::filesystem::path& file, bool withMetadata, const Note& note) {
    const auto reader = OpenPicture(file);
    Json frames = Json::array();
    for (std::int32_t index = 0; index < reader->get_FrameCount(); ++index) {
        frames.push_back(DescribeFrame(*reader->LoadFrame(index), note));
    }
    Json described = {{"file", file.string()},
                      {"format", reader->get_FormatName()},
                      {"description", reader->get_FormatDescription()},
                      {"mimeType", reader->get_MimeType()},
                      {"frames", std::move(frames)}};
    if (withMetadata) {
        described["metadata"] = DescribeMetadata(ReadMetadata(*reader, note), note);
    }
    return described;
}

void PrintLine(Console& console, const char* label, const std::string& text) {
    char padded[32];
    std::snprintf(padded, sizeof padded, "  %-12s ", label);
    console.Print(padded + text);
}

void PrintFrame(Console& console, const Json& frame) {
    const auto text = [](const Json& object, const char* key) { return object.at(key).get<std::string>(); };
    const auto number = [](const Json& object, const char* key) {
        return std::to_string(object.at(key).get<std::int32_t>());
    };
    PrintLine(console, "size", number(frame, "width") + " x " + number(frame, "height"));
    PrintLine(console, "pixels",
              text(frame, "pixelFormat") + ", " + text(frame, "colorSpace") + ", " + number(frame, "bitsPerPixel") +
                  " bits" + (frame.at("hasAlpha").get<bool>() ? ", with alpha" : ""));
    char resolution[64];
    std::snprintf(resolution, sizeof resolution, "%.2f x %.2f dpi", frame.at("horizontalResolution").get<double>(),
                  frame.at("verticalResolution").get<double>());
    PrintLine(console, "resolution", resolution);
    if (frame.contains("palette")) {
        const Json& palette = frame.at("palette");
        PrintLine(console, "palette",
                  number(palette, "entries") + " entries, " + (palette.at("gray").get<bool>() ? "gray" : "colours") +
                      ", " + text(palette, "type") + (palette.at("hasAlpha").get<bool>() ? ", with alpha" : ""));
    }
    if (frame.contains("profile")) {
        const Json& profile = frame.at("profile");
        PrintLine(console, "profile",
                  text(profile, "description") + ", " + text(profile, "colorSpace") + ", " + text(profile, "class"));
    }
}

void PrintMetadata(Console& console, const Json& metadata) {
    constexpr std::size_t nameWidth = 40;
    for (const MetadataSection& section : ListMetadata(metadata)) {
        console.Print("  " + section.Title);
        for (const auto& [name, value] : section.Lines) {
            std::string padded = "    " + name;
            padded.resize(std::max(padded.size(), nameWidth), ' ');
            console.Print(padded + " " + value);
        }
    }
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
    if (file.contains("metadata")) {
        PrintMetadata(console, file.at("metadata"));
    }
}

} // namespace

bool RunInfo(const std::vector<std::filesystem::path>& files, const InfoChoices& choices, Console& console) {
    bool complete = true;
    Json all = Json::array();
    for (const std::filesystem::path& file : files) {
        try {
            all.push_back(
                DescribeFile(file, choices.Metadata, [&](const std::string& text) { console.Note(file, text); }));
            if (!choices.Json) {
                PrintFile(console, all.back());
            }
        } catch (const std::exception& exception) {
            console.Fail(file, exception.what());
            complete = false;
        }
    }
    if (choices.Json) {
        // Names of files and texts of metadata may hold any bytes; those that are no text are shown as such.
        console.PrintText(all.dump(2, ' ', false, Json::error_handler_t::replace));
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
