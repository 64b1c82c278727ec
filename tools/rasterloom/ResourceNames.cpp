#include "ResourceNames.h"

#include <cstdio>

namespace Tool {

namespace {

struct Entry {
    std::uint32_t Number;
    const char* Name;
};

constexpr Entry Names[] = {
    {0x03E9, "Print settings of the older system"},
    {0x03ED, "Resolution"},
    {0x03EE, "Names of alpha channels"},
    {0x03F0, "Caption"},
    {0x03F1, "Border"},
    {0x03F2, "Background colour"},
    {0x03F3, "Print flags"},
    {0x03F4, "Gray and multichannel halftoning"},
    {0x03F5, "Colour halftoning"},
    {0x03F6, "Duotone halftoning"},
    {0x03F7, "Gray and multichannel transfer"},
    {0x03F8, "Colour transfer"},
    {0x03F9, "Duotone transfer"},
    {0x0400, "Layer state"},
    {0x0402, "Layer groups"},
    {0x0404, "IPTC"},
    {0x0406, "JPEG quality"},
    {0x0408, "Grid and guides"},
    {0x0409, "Thumbnail of the older kind"},
    {0x040A, "Copyright flag"},
    {0x040B, "URL"},
    {0x040C, "Thumbnail"},
    {0x040D, "Global light angle"},
    {0x040F, "ICC profile"},
    {0x0410, "Watermark"},
    {0x0411, "ICC untagged flag"},
    {0x0414, "Seed of layer numbers"},
    {0x0416, "Indexed colour table count"},
    {0x0417, "Index of the transparent colour"},
    {0x0419, "Global light altitude"},
    {0x041A, "Slices"},
    {0x041B, "Workflow URL"},
    {0x041E, "List of URLs"},
    {0x0421, "Version"},
    {0x0422, "EXIF"},
    {0x0423, "EXIF, second part"},
    {0x0424, "XMP"},
    {0x0425, "Digest of the caption"},
    {0x0426, "Print scale"},
    {0x0428, "Pixel aspect ratio"},
    {0x042D, "Identifiers of selected layers"},
    {0x0430, "Enabled layer groups"},
    {0x043A, "Print information"},
    {0x043B, "Print style"},
    {0x0BB7, "Name of the clipping path"},
    {0x2710, "Print flags in detail"},
};

constexpr std::uint32_t FirstPath = 0x07D0;
constexpr std::uint32_t LastPath = 0x0BB6;

} // namespace

std::string ResourceName(std::uint32_t number) {
    for (const Entry& entry : Names) {
        if (entry.Number == number) {
            return entry.Name;
        }
    }
    char text[32];
    const bool isPath = number >= FirstPath && number <= LastPath;
    std::snprintf(text, sizeof text, isPath ? "Path 0x%04X" : "Resource 0x%04X", number);
    return text;
}

} // namespace Tool
