#include "Commands.h"

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/FormatReader.h>
#include <Corvane/Rasterloom/Codecs/Frame.h>
#include <Corvane/Rasterloom/EnumNames.h>

#include <cstdio>

namespace Tool {

using namespace Corvane::Rasterloom;

namespace {

void PrintLine(const char* label, const std::string& text) { std::printf("  %-12s %s\n", label, text.c_str()); }

void PrintFrame(Codecs::IFrame& frame) {
    PrintLine("size", std::to_string(frame.get_Width()) + " x " + std::to_string(frame.get_Height()));
    PrintLine("pixels", std::string(ToString(frame.get_PixelFormat())) + ", " +
                            std::string(ToString(frame.get_ColorSpace())) + ", " +
                            std::to_string(frame.get_BitsPerPixel()) + " bits" +
                            (frame.get_HasAlpha() ? ", with alpha" : ""));
    char resolution[64];
    std::snprintf(resolution, sizeof resolution, "%.2f x %.2f dpi", static_cast<double>(frame.get_HorizontalResolution()),
                  static_cast<double>(frame.get_VerticalResolution()));
    PrintLine("resolution", resolution);
}

} // namespace

void RunInfo(const std::filesystem::path& file) {
    const auto reader = Codecs::FormatManager::CreateFormatReader(file);
    std::printf("%s: %s\n", file.c_str(), reader->get_FormatDescription().c_str());
    const std::int32_t count = reader->get_FrameCount();
    for (std::int32_t index = 0; index < count; ++index) {
        if (count > 1) {
            std::printf(" frame %d of %d\n", index + 1, count);
        }
        PrintFrame(*reader->LoadFrame(index));
    }
}

void RunFormats() {
    const auto loads = Codecs::FormatManager::SupportedMediaFormatsForLoad();
    const auto saves = Codecs::FormatManager::SupportedMediaFormatsForSave();
    const auto holds = [](const auto& list, auto value) { return std::find(list.begin(), list.end(), value) != list.end(); };
    auto all = loads;
    std::copy_if(saves.begin(), saves.end(), std::back_inserter(all), [&](auto value) { return !holds(loads, value); });
    std::printf("%-10s %-5s %-5s %-24s %s\n", "format", "load", "save", "files", "description");
    for (const auto format : all) {
        std::printf("%-10s %-5s %-5s %-24s %s\n", Codecs::FormatManager::GetFormatName(format).c_str(),
                    holds(loads, format) ? "yes" : "no", holds(saves, format) ? "yes" : "no",
                    Codecs::FormatManager::GetFilterString(format).c_str(),
                    Codecs::FormatManager::GetFormatDescription(format).c_str());
    }
}

} // namespace Tool
