#include "metadata/Exif/ExifWords.h"

#include <algorithm>
#include <tuple>

namespace ImagingFramework {

namespace {

// clang-format off
constexpr ExifWord Words[] = {
    {{0x0103, ExifIfd::MainImage}, 1, "Uncompressed"},
    {{0x0103, ExifIfd::MainImage}, 6, "JPEG compression"},
    {{0x0106, ExifIfd::MainImage}, 0, "White is zero"},
    {{0x0106, ExifIfd::MainImage}, 1, "Black is zero"},
    {{0x0106, ExifIfd::MainImage}, 2, "RGB"},
    {{0x0106, ExifIfd::MainImage}, 3, "Palette"},
    {{0x0106, ExifIfd::MainImage}, 4, "Transparency mask"},
    {{0x0106, ExifIfd::MainImage}, 5, "Cmyk"},
    {{0x0106, ExifIfd::MainImage}, 6, "YCbCr"},
    {{0x0106, ExifIfd::MainImage}, 8, "CIE Lab"},
    {{0x0112, ExifIfd::MainImage}, 1, "Top left"},
    {{0x0112, ExifIfd::MainImage}, 2, "Top right"},
    {{0x0112, ExifIfd::MainImage}, 3, "Bottom right"},
    {{0x0112, ExifIfd::MainImage}, 4, "Bottom left"},
    {{0x0112, ExifIfd::MainImage}, 5, "Left top"},
    {{0x0112, ExifIfd::MainImage}, 6, "Right top"},
    {{0x0112, ExifIfd::MainImage}, 7, "Right bottom"},
    {{0x0112, ExifIfd::MainImage}, 8, "Left bottom"},
    {{0x011C, ExifIfd::MainImage}, 1, "Chunky"},
    {{0x011C, ExifIfd::MainImage}, 2, "Planar"},
    {{0x0128, ExifIfd::MainImage}, 1, "None"},
    {{0x0128, ExifIfd::MainImage}, 2, "Inch"},
    {{0x0128, ExifIfd::MainImage}, 3, "Centimetre"},
    {{0x0213, ExifIfd::MainImage}, 1, "Centred"},
    {{0x0213, ExifIfd::MainImage}, 2, "Co-sited"},
    {{0x8822, ExifIfd::Exif}, 0, "Not defined"},
    {{0x8822, ExifIfd::Exif}, 1, "Manual"},
    {{0x8822, ExifIfd::Exif}, 2, "Normal program"},
    {{0x8822, ExifIfd::Exif}, 3, "Aperture priority"},
    {{0x8822, ExifIfd::Exif}, 4, "Shutter priority"},
    {{0x8822, ExifIfd::Exif}, 5, "Creative program"},
    {{0x8822, ExifIfd::Exif}, 6, "Action program"},
    {{0x8822, ExifIfd::Exif}, 7, "Portrait mode"},
    {{0x8822, ExifIfd::Exif}, 8, "Landscape mode"},
    {{0x9207, ExifIfd::Exif}, 0, "Unknown"},
    {{0x9207, ExifIfd::Exif}, 1, "Average"},
    {{0x9207, ExifIfd::Exif}, 2, "Centre-weighted average"},
    {{0x9207, ExifIfd::Exif}, 3, "Spot"},
    {{0x9207, ExifIfd::Exif}, 4, "Multi-spot"},
    {{0x9207, ExifIfd::Exif}, 5, "Pattern"},
    {{0x9207, ExifIfd::Exif}, 6, "Partial"},
    {{0x9207, ExifIfd::Exif}, 255, "Other"},
    {{0x9208, ExifIfd::Exif}, 0, "Unknown"},
    {{0x9208, ExifIfd::Exif}, 1, "Daylight"},
    {{0x9208, ExifIfd::Exif}, 2, "Fluorescent"},
    {{0x9208, ExifIfd::Exif}, 3, "Tungsten"},
    {{0x9208, ExifIfd::Exif}, 4, "Flash"},
    {{0x9208, ExifIfd::Exif}, 9, "Fine weather"},
    {{0x9208, ExifIfd::Exif}, 10, "Cloudy weather"},
    {{0x9208, ExifIfd::Exif}, 11, "Shade"},
    {{0x9208, ExifIfd::Exif}, 12, "Daylight fluorescent"},
    {{0x9208, ExifIfd::Exif}, 13, "Day white fluorescent"},
    {{0x9208, ExifIfd::Exif}, 14, "Cool white fluorescent"},
    {{0x9208, ExifIfd::Exif}, 15, "White fluorescent"},
    {{0x9208, ExifIfd::Exif}, 17, "Standard light A"},
    {{0x9208, ExifIfd::Exif}, 18, "Standard light B"},
    {{0x9208, ExifIfd::Exif}, 19, "Standard light C"},
    {{0x9208, ExifIfd::Exif}, 20, "D55"},
    {{0x9208, ExifIfd::Exif}, 21, "D65"},
    {{0x9208, ExifIfd::Exif}, 22, "D75"},
    {{0x9208, ExifIfd::Exif}, 23, "D50"},
    {{0x9208, ExifIfd::Exif}, 24, "ISO studio tungsten"},
    {{0x9208, ExifIfd::Exif}, 255, "Other light source"},
    {{0xA001, ExifIfd::Exif}, 1, "sRGB"},
    {{0xA001, ExifIfd::Exif}, 65535, "Uncalibrated"},
    {{0xA210, ExifIfd::Exif}, 1, "None"},
    {{0xA210, ExifIfd::Exif}, 2, "Inch"},
    {{0xA210, ExifIfd::Exif}, 3, "Centimetre"},
    {{0xA217, ExifIfd::Exif}, 1, "Not defined"},
    {{0xA217, ExifIfd::Exif}, 2, "One-chip colour area sensor"},
    {{0xA217, ExifIfd::Exif}, 3, "Two-chip colour area sensor"},
    {{0xA217, ExifIfd::Exif}, 4, "Three-chip colour area sensor"},
    {{0xA217, ExifIfd::Exif}, 5, "Colour sequential area sensor"},
    {{0xA217, ExifIfd::Exif}, 7, "Trilinear sensor"},
    {{0xA217, ExifIfd::Exif}, 8, "Colour sequential linear sensor"},
    {{0xA300, ExifIfd::Exif}, 3, "Digital still camera"},
    {{0xA301, ExifIfd::Exif}, 1, "Directly photographed"},
    {{0xA401, ExifIfd::Exif}, 0, "Normal process"},
    {{0xA401, ExifIfd::Exif}, 1, "Custom process"},
    {{0xA402, ExifIfd::Exif}, 0, "Auto exposure"},
    {{0xA402, ExifIfd::Exif}, 1, "Manual exposure"},
    {{0xA402, ExifIfd::Exif}, 2, "Auto bracket"},
    {{0xA403, ExifIfd::Exif}, 0, "Auto white balance"},
    {{0xA403, ExifIfd::Exif}, 1, "Manual white balance"},
    {{0xA406, ExifIfd::Exif}, 0, "Standard"},
    {{0xA406, ExifIfd::Exif}, 1, "Landscape"},
    {{0xA406, ExifIfd::Exif}, 2, "Portrait"},
    {{0xA406, ExifIfd::Exif}, 3, "Night scene"},
    {{0xA407, ExifIfd::Exif}, 0, "None"},
    {{0xA407, ExifIfd::Exif}, 1, "Low gain up"},
    {{0xA407, ExifIfd::Exif}, 2, "High gain up"},
    {{0xA407, ExifIfd::Exif}, 3, "Low gain down"},
    {{0xA407, ExifIfd::Exif}, 4, "High gain down"},
    {{0xA408, ExifIfd::Exif}, 0, "Normal"},
    {{0xA408, ExifIfd::Exif}, 1, "Soft"},
    {{0xA408, ExifIfd::Exif}, 2, "Hard"},
    {{0xA409, ExifIfd::Exif}, 0, "Normal"},
    {{0xA409, ExifIfd::Exif}, 1, "Low saturation"},
    {{0xA409, ExifIfd::Exif}, 2, "High saturation"},
    {{0xA40A, ExifIfd::Exif}, 0, "Normal"},
    {{0xA40A, ExifIfd::Exif}, 1, "Soft"},
    {{0xA40A, ExifIfd::Exif}, 2, "Hard"},
    {{0xA40C, ExifIfd::Exif}, 0, "Unknown"},
    {{0xA40C, ExifIfd::Exif}, 1, "Macro"},
    {{0xA40C, ExifIfd::Exif}, 2, "Close view"},
    {{0xA40C, ExifIfd::Exif}, 3, "Distant view"},
    {{0x0001, ExifIfd::Gps}, 'N', "North latitude"},
    {{0x0001, ExifIfd::Gps}, 'S', "South latitude"},
    {{0x0003, ExifIfd::Gps}, 'E', "East longitude"},
    {{0x0003, ExifIfd::Gps}, 'W', "West longitude"},
    {{0x0005, ExifIfd::Gps}, 0, "Above sea level"},
    {{0x0005, ExifIfd::Gps}, 1, "Below sea level"},
    {{0x0009, ExifIfd::Gps}, 'A', "Measurement in progress"},
    {{0x0009, ExifIfd::Gps}, 'V', "Measurement interoperability"},
    {{0x000A, ExifIfd::Gps}, '2', "Two-dimensional measurement"},
    {{0x000A, ExifIfd::Gps}, '3', "Three-dimensional measurement"},
    {{0x000C, ExifIfd::Gps}, 'K', "Kilometres per hour"},
    {{0x000C, ExifIfd::Gps}, 'M', "Miles per hour"},
    {{0x000C, ExifIfd::Gps}, 'N', "Knots"},
    {{0x000E, ExifIfd::Gps}, 'M', "Magnetic direction"},
    {{0x000E, ExifIfd::Gps}, 'T', "True direction"},
    {{0x0010, ExifIfd::Gps}, 'M', "Magnetic direction"},
    {{0x0010, ExifIfd::Gps}, 'T', "True direction"},
    {{0x0013, ExifIfd::Gps}, 'N', "North latitude"},
    {{0x0013, ExifIfd::Gps}, 'S', "South latitude"},
    {{0x0015, ExifIfd::Gps}, 'E', "East longitude"},
    {{0x0015, ExifIfd::Gps}, 'W', "West longitude"},
    {{0x0017, ExifIfd::Gps}, 'M', "Magnetic direction"},
    {{0x0017, ExifIfd::Gps}, 'T', "True direction"},
    {{0x0019, ExifIfd::Gps}, 'K', "Kilometres"},
    {{0x0019, ExifIfd::Gps}, 'M', "Miles"},
    {{0x0019, ExifIfd::Gps}, 'N', "Nautical miles"},
    {{0x001E, ExifIfd::Gps}, 0, "Without correction"},
    {{0x001E, ExifIfd::Gps}, 1, "Differential correction applied"},
    {{0x0001, ExifIfd::Interoperability}, 0x523033, "Option file (Adobe RGB)"}, // "R03"
    {{0x0001, ExifIfd::Interoperability}, 0x523938, "Basic file (sRGB)"}, // "R98"
    {{0x0001, ExifIfd::Interoperability}, 0x54484D, "Thumbnail file"}, // "THM"
};
// clang-format on

constexpr auto OrderOf(ExifTagPlace place, std::uint32_t value) noexcept {
    return std::tuple(place.Ifd, place.Tag, value);
}

constexpr auto OrderOfWord(const ExifWord& word) noexcept { return OrderOf(word.Place, word.Value); }

static_assert(std::ranges::is_sorted(Words, {}, OrderOfWord));

} // namespace

std::span<const ExifWord> GetExifWords() noexcept { return Words; }

std::string_view FindExifWord(ExifTagPlace place, std::uint32_t value) noexcept {
    if (place.Ifd == ExifIfd::Thumbnail) {
        place.Ifd = ExifIfd::MainImage;
    }
    const auto order = OrderOf(place, value);
    const auto* const pFound = std::ranges::lower_bound(Words, order, {}, OrderOfWord);
    return pFound != std::end(Words) && OrderOfWord(*pFound) == order ? pFound->Text : std::string_view();
}

} // namespace ImagingFramework
