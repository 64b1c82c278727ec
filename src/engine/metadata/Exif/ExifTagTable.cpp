#include "metadata/Exif/ExifTagTable.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

using Type = ExifDataType;
constexpr std::uint32_t Any = ExifTagInfo::AnyCount;

// clang-format off
constexpr ExifTagInfo ImageTags[] = {
    {0x0100, Type::Long, 1, "ExifImageWidth", "Image width"},
    {0x0101, Type::Long, 1, "ExifImageHeight", "Image height"},
    {0x0102, Type::Short, Any, "ExifBitsPerSample", "Number of bits per component"},
    {0x0103, Type::Short, 1, "ExifCompression", "Compression scheme"},
    {0x0106, Type::Short, 1, "ExifPhotometricInterpretation", "Pixel composition"},
    {0x010E, Type::Ascii, Any, "ExifImageDescription", "Image title"},
    {0x010F, Type::Ascii, Any, "ExifMake", "Image input equipment manufacturer"},
    {0x0110, Type::Ascii, Any, "ExifModel", "Image input equipment model"},
    {0x0111, Type::Long, Any, "ExifStripOffsets", "Image data location"},
    {0x0112, Type::Short, 1, "ExifOrientation", "Orientation of image"},
    {0x0115, Type::Short, 1, "ExifSamplesPerPixel", "Number of components"},
    {0x0116, Type::Long, 1, "ExifRowsPerStrip", "Number of rows per strip"},
    {0x0117, Type::Long, Any, "ExifStripByteCounts", "Bytes per compressed strip"},
    {0x011A, Type::Rational, 1, "ExifXResolution", "Image resolution in width direction"},
    {0x011B, Type::Rational, 1, "ExifYResolution", "Image resolution in height direction"},
    {0x011C, Type::Short, 1, "ExifPlanarConfiguration", "Image data arrangement"},
    {0x0128, Type::Short, 1, "ExifResolutionUnit", "Unit of X and Y resolution"},
    {0x012D, Type::Short, 768, "ExifTransferFunction", "Transfer function"},
    {0x0131, Type::Ascii, Any, "ExifSoftware", "Software used"},
    {0x0132, Type::Ascii, 20, "ExifDateTime", "File change date and time"},
    {0x013B, Type::Ascii, Any, "ExifArtist", "Person who created the image"},
    {0x013E, Type::Rational, 2, "ExifWhitePoint", "White point chromaticity"},
    {0x013F, Type::Rational, 6, "ExifPrimaryChromaticities", "Chromaticities of primaries"},
    {0x0201, Type::Long, 1, "ExifJPEGInterchangeFormat", "Offset to JPEG SOI"},
    {0x0202, Type::Long, 1, "ExifJPEGInterchangeFormatLength", "Bytes of JPEG data"},
    {0x0211, Type::Rational, 3, "ExifYCbCrCoefficients", "Colour space transformation matrix coefficients"},
    {0x0212, Type::Short, 2, "ExifYCbCrSubSampling", "Subsampling ratio of Y to C"},
    {0x0213, Type::Short, 1, "ExifYCbCrPositioning", "Y and C positioning"},
    {0x0214, Type::Rational, 6, "ExifReferenceBlackWhite", "Pair of black and white reference values"},
    {0x8298, Type::Ascii, Any, "ExifCopyright", "Copyright holder"},
    {0x8769, Type::Long, 1, "ExifExifIFD", "Pointer to the Exif directory"},
    {0x8825, Type::Long, 1, "ExifGpsIFD", "Pointer to the GPS directory"},
};

constexpr ExifTagInfo ExifTags[] = {
    {0x829A, Type::Rational, 1, "ExifExposureTime", "Exposure time in seconds"},
    {0x829D, Type::Rational, 1, "ExifFNumber", "F number"},
    {0x8822, Type::Short, 1, "ExifExposureProgram", "Exposure program"},
    {0x8824, Type::Ascii, Any, "ExifSpectralSensitivity", "Spectral sensitivity"},
    {0x8827, Type::Short, Any, "ExifISOSpeedRatings", "ISO speed rating"},
    {0x8828, Type::Undefined, Any, "ExifOECF", "Optoelectric conversion factor"},
    {0x9000, Type::Undefined, 4, "ExifExifVersion", "Exif version"},
    {0x9003, Type::Ascii, 20, "ExifDateTimeOriginal", "Date and time of original data generation"},
    {0x9004, Type::Ascii, 20, "ExifDateTimeDigitized", "Date and time of digital data generation"},
    {0x9101, Type::Undefined, 4, "ExifComponentsConfiguration", "Meaning of each component"},
    {0x9102, Type::Rational, 1, "ExifCompressedBitsPerPixel", "Image compression mode"},
    {0x9201, Type::SignedRational, 1, "ExifShutterSpeed", "Shutter speed (APEX)"},
    {0x9202, Type::Rational, 1, "ExifApertureValue", "Aperture (APEX)"},
    {0x9203, Type::SignedRational, 1, "ExifBrightnessValue", "Brightness (APEX)"},
    {0x9204, Type::SignedRational, 1, "ExifExposureBiasValue", "Exposure bias (APEX)"},
    {0x9205, Type::Rational, 1, "ExifMaxApertureValue", "Maximum lens aperture (APEX)"},
    {0x9206, Type::Rational, 1, "ExifSubjectDistance", "Subject distance in metres"},
    {0x9207, Type::Short, 1, "ExifMeteringMode", "Metering mode"},
    {0x9208, Type::Short, 1, "ExifLightSource", "Light source"},
    {0x9209, Type::Short, 1, "ExifFlash", "Flash"},
    {0x920A, Type::Rational, 1, "ExifFocalLength", "Lens focal length in millimetres"},
    {0x927C, Type::Undefined, Any, "ExifMakerNote", "Manufacturer notes"},
    {0x9286, Type::Undefined, Any, "ExifUserComment", "User comments"},
    {0x9290, Type::Ascii, Any, "ExifSubSecTime", "Fractions of a second of the file change time"},
    {0x9291, Type::Ascii, Any, "ExifSubSecTimeOriginal", "Fractions of a second of the original time"},
    {0x9292, Type::Ascii, Any, "ExifSubSecTimeDigitized", "Fractions of a second of the digitizing time"},
    {0xA000, Type::Undefined, 4, "ExifFlashPixVersion", "Supported Flashpix version"},
    {0xA001, Type::Short, 1, "ExifColorSpace", "Colour space information"},
    {0xA002, Type::Long, 1, "ExifPixelXDimension", "Valid image width"},
    {0xA003, Type::Long, 1, "ExifPixelYDimension", "Valid image height"},
    {0xA004, Type::Ascii, 13, "ExifRelatedSoundFile", "Related audio file"},
    {0xA005, Type::Long, 1, "ExifInteroperabilityIFD", "Pointer to the interoperability directory"},
    {0xA20B, Type::Rational, 1, "ExifFlashEnergy", "Flash energy"},
    {0xA20C, Type::Undefined, Any, "ExifSpatialFrequencyResponse", "Spatial frequency response"},
    {0xA20E, Type::Rational, 1, "ExifFocalPlaneXResolution", "Focal plane X resolution"},
    {0xA20F, Type::Rational, 1, "ExifFocalPlaneYResolution", "Focal plane Y resolution"},
    {0xA210, Type::Short, 1, "ExifFocalPlaneResolutionUnit", "Focal plane resolution unit"},
    {0xA214, Type::Short, 2, "ExifSubjectLocation", "Subject location"},
    {0xA215, Type::Rational, 1, "ExifExposureIndex", "Exposure index"},
    {0xA217, Type::Short, 1, "ExifSensingMethod", "Sensing method"},
    {0xA300, Type::Undefined, 1, "ExifFileSource", "File source"},
    {0xA301, Type::Undefined, 1, "ExifSceneType", "Scene type"},
    {0xA302, Type::Undefined, Any, "ExifCFAPattern", "Colour filter array pattern"},
    {0xA401, Type::Short, 1, "ExifCustomRendered", "Custom image processing"},
    {0xA402, Type::Short, 1, "ExifExposureMode", "Exposure mode"},
    {0xA403, Type::Short, 1, "ExifWhiteBalance", "White balance"},
    {0xA404, Type::Rational, 1, "ExifDigitalZoomRatio", "Digital zoom ratio"},
    {0xA405, Type::Short, 1, "ExifFocalLengthIn35mmFilm", "Focal length in 35 mm film"},
    {0xA406, Type::Short, 1, "ExifSceneCaptureType", "Scene capture type"},
    {0xA407, Type::Short, 1, "ExifGainControl", "Gain control"},
    {0xA408, Type::Short, 1, "ExifContrast", "Contrast"},
    {0xA409, Type::Short, 1, "ExifSaturation", "Saturation"},
    {0xA40A, Type::Short, 1, "ExifSharpness", "Sharpness"},
    {0xA40B, Type::Undefined, Any, "ExifDeviceSettingDescription", "Device settings description"},
    {0xA40C, Type::Short, 1, "ExifSubjectDistanceRange", "Subject distance range"},
    {0xA420, Type::Ascii, 33, "ExifImageUniqueID", "Unique image ID"},
};

constexpr ExifTagInfo GpsTags[] = {
    {0x0000, Type::Byte, 4, "ExifGpsVersionID", "GPS tag version"},
    {0x0001, Type::Ascii, 2, "ExifGpsLatitudeRef", "North or south latitude"},
    {0x0002, Type::Rational, 3, "ExifGpsLatitude", "Latitude"},
    {0x0003, Type::Ascii, 2, "ExifGpsLongitudeRef", "East or west longitude"},
    {0x0004, Type::Rational, 3, "ExifGpsLongitude", "Longitude"},
    {0x0005, Type::Byte, 1, "ExifGpsAltitudeRef", "Altitude reference"},
    {0x0006, Type::Rational, 1, "ExifGpsAltitude", "Altitude in metres"},
    {0x0007, Type::Rational, 3, "ExifGpsTimeStamp", "GPS time (atomic clock)"},
    {0x0008, Type::Ascii, Any, "ExifGpsSatellites", "GPS satellites used for measurement"},
    {0x0009, Type::Ascii, 2, "ExifGpsStatus", "GPS receiver status"},
    {0x000A, Type::Ascii, 2, "ExifGpsMeasureMode", "GPS measurement mode"},
    {0x000B, Type::Rational, 1, "ExifGpsDOP", "Measurement precision"},
    {0x000C, Type::Ascii, 2, "ExifGpsSpeedRef", "Speed unit"},
    {0x000D, Type::Rational, 1, "ExifGpsSpeed", "Speed of GPS receiver"},
    {0x000E, Type::Ascii, 2, "ExifGpsTrackRef", "Reference for direction of movement"},
    {0x000F, Type::Rational, 1, "ExifGpsTrack", "Direction of movement"},
    {0x0010, Type::Ascii, 2, "ExifGpsImgDirectionRef", "Reference for direction of image"},
    {0x0011, Type::Rational, 1, "ExifGpsImgDirection", "Direction of image"},
    {0x0012, Type::Ascii, Any, "ExifGpsMapDatum", "Geodetic survey data used"},
    {0x0013, Type::Ascii, 2, "ExifGpsDestLatitudeRef", "North or south latitude of destination"},
    {0x0014, Type::Rational, 3, "ExifGpsDestLatitude", "Latitude of destination"},
    {0x0015, Type::Ascii, 2, "ExifGpsDestLongitudeRef", "East or west longitude of destination"},
    {0x0016, Type::Rational, 3, "ExifGpsDestLongitude", "Longitude of destination"},
    {0x0017, Type::Ascii, 2, "ExifGpsDestBearingRef", "Reference for bearing of destination"},
    {0x0018, Type::Rational, 1, "ExifGpsDestBearing", "Bearing of destination"},
    {0x0019, Type::Ascii, 2, "ExifGpsDestDistanceRef", "Unit of distance to destination"},
    {0x001A, Type::Rational, 1, "ExifGpsDestDistance", "Distance to destination"},
    {0x001B, Type::Undefined, Any, "ExifGpsProcessingMethod", "Name of GPS processing method"},
    {0x001C, Type::Undefined, Any, "ExifGpsAreaInformation", "Name of GPS area"},
    {0x001D, Type::Ascii, 11, "ExifGpsDateStamp", "GPS date"},
    {0x001E, Type::Short, 1, "ExifGpsDifferential", "GPS differential correction"},
};

constexpr ExifTagInfo InteroperabilityTags[] = {
    {0x0001, Type::Ascii, Any, "ExifInteroperabilityIndex", "Interoperability identification"},
};
// clang-format on

} // namespace

std::span<const ExifTagInfo> GetExifTagTable(ExifIfd ifd) noexcept {
    switch (ifd) {
    case ExifIfd::Exif:
        return ExifTags;
    case ExifIfd::Gps:
        return GpsTags;
    case ExifIfd::Interoperability:
        return InteroperabilityTags;
    default:
        return ImageTags;
    }
}

const ExifTagInfo* FindExifTagInfo(std::uint16_t tag, ExifIfd ifd) noexcept {
    const std::span<const ExifTagInfo> table = GetExifTagTable(ifd);
    const auto found = std::ranges::lower_bound(table, tag, {}, &ExifTagInfo::Tag);
    return found != table.end() && found->Tag == tag ? &*found : nullptr;
}

} // namespace ImagingFramework
