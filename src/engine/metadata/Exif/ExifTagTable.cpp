#include "metadata/Exif/ExifTagTable.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

// clang-format off
constexpr ExifTagInfo ImageTags[] = {
    {0x0100, ExifDataType::Long, 1, "ExifImageWidth", "Image width"},
    {0x0101, ExifDataType::Long, 1, "ExifImageHeight", "Image height"},
    {0x0102, ExifDataType::Short, ExifTagInfo::AnyCount, "ExifBitsPerSample", "Number of bits per component"},
    {0x0103, ExifDataType::Short, 1, "ExifCompression", "Compression scheme"},
    {0x0106, ExifDataType::Short, 1, "ExifPhotometricInterpretation", "Pixel composition"},
    {0x010E, ExifDataType::Ascii, ExifTagInfo::AnyCount, "ExifImageDescription", "Image title"},
    {0x010F, ExifDataType::Ascii, ExifTagInfo::AnyCount, "ExifMake", "Image input equipment manufacturer"},
    {0x0110, ExifDataType::Ascii, ExifTagInfo::AnyCount, "ExifModel", "Image input equipment model"},
    {0x0111, ExifDataType::Long, ExifTagInfo::AnyCount, "ExifStripOffsets", "Image data location"},
    {0x0112, ExifDataType::Short, 1, "ExifOrientation", "Orientation of image"},
    {0x0115, ExifDataType::Short, 1, "ExifSamplesPerPixel", "Number of components"},
    {0x0116, ExifDataType::Long, 1, "ExifRowsPerStrip", "Number of rows per strip"},
    {0x0117, ExifDataType::Long, ExifTagInfo::AnyCount, "ExifStripByteCounts", "Bytes per compressed strip"},
    {0x011A, ExifDataType::Rational, 1, "ExifXResolution", "Image resolution in width direction"},
    {0x011B, ExifDataType::Rational, 1, "ExifYResolution", "Image resolution in height direction"},
    {0x011C, ExifDataType::Short, 1, "ExifPlanarConfiguration", "Image data arrangement"},
    {0x0128, ExifDataType::Short, 1, "ExifResolutionUnit", "Unit of X and Y resolution"},
    {0x012D, ExifDataType::Short, 768, "ExifTransferFunction", "Transfer function"},
    {0x0131, ExifDataType::Ascii, ExifTagInfo::AnyCount, "ExifSoftware", "Software used"},
    {0x0132, ExifDataType::Ascii, 20, "ExifDateTime", "File change date and time"},
    {0x013B, ExifDataType::Ascii, ExifTagInfo::AnyCount, "ExifArtist", "Person who created the image"},
    {0x013E, ExifDataType::Rational, 2, "ExifWhitePoint", "White point chromaticity"},
    {0x013F, ExifDataType::Rational, 6, "ExifPrimaryChromaticities", "Chromaticities of primaries"},
    {0x0201, ExifDataType::Long, 1, "ExifJPEGInterchangeFormat", "Offset to JPEG SOI"},
    {0x0202, ExifDataType::Long, 1, "ExifJPEGInterchangeFormatLength", "Bytes of JPEG data"},
    {0x0211, ExifDataType::Rational, 3, "ExifYCbCrCoefficients", "Colour space transformation matrix coefficients"},
    {0x0212, ExifDataType::Short, 2, "ExifYCbCrSubSampling", "Subsampling ratio of Y to C"},
    {0x0213, ExifDataType::Short, 1, "ExifYCbCrPositioning", "Y and C positioning"},
    {0x0214, ExifDataType::Rational, 6, "ExifReferenceBlackWhite", "Pair of black and white reference values"},
    {0x8298, ExifDataType::Ascii, ExifTagInfo::AnyCount, "ExifCopyright", "Copyright holder"},
    {0x8769, ExifDataType::Long, 1, "ExifExifIFD", "Pointer to the Exif directory"},
    {0x8825, ExifDataType::Long, 1, "ExifGpsIFD", "Pointer to the GPS directory"},
};

constexpr ExifTagInfo ExifTags[] = {
    {0x829A, ExifDataType::Rational, 1, "ExifExposureTime", "Exposure time in seconds"},
    {0x829D, ExifDataType::Rational, 1, "ExifFNumber", "F number"},
    {0x8822, ExifDataType::Short, 1, "ExifExposureProgram", "Exposure program"},
    {0x8824, ExifDataType::Ascii, ExifTagInfo::AnyCount, "ExifSpectralSensitivity", "Spectral sensitivity"},
    {0x8827, ExifDataType::Short, ExifTagInfo::AnyCount, "ExifISOSpeedRatings", "ISO speed rating"},
    {0x8828, ExifDataType::Undefined, ExifTagInfo::AnyCount, "ExifOECF", "Optoelectric conversion factor"},
    {0x9000, ExifDataType::Undefined, 4, "ExifExifVersion", "Exif version"},
    {0x9003, ExifDataType::Ascii, 20, "ExifDateTimeOriginal", "Date and time of original data generation"},
    {0x9004, ExifDataType::Ascii, 20, "ExifDateTimeDigitized", "Date and time of digital data generation"},
    {0x9101, ExifDataType::Undefined, 4, "ExifComponentsConfiguration", "Meaning of each component"},
    {0x9102, ExifDataType::Rational, 1, "ExifCompressedBitsPerPixel", "Image compression mode"},
    {0x9201, ExifDataType::SignedRational, 1, "ExifShutterSpeed", "Shutter speed (APEX)"},
    {0x9202, ExifDataType::Rational, 1, "ExifApertureValue", "Aperture (APEX)"},
    {0x9203, ExifDataType::SignedRational, 1, "ExifBrightnessValue", "Brightness (APEX)"},
    {0x9204, ExifDataType::SignedRational, 1, "ExifExposureBiasValue", "Exposure bias (APEX)"},
    {0x9205, ExifDataType::Rational, 1, "ExifMaxApertureValue", "Maximum lens aperture (APEX)"},
    {0x9206, ExifDataType::Rational, 1, "ExifSubjectDistance", "Subject distance in metres"},
    {0x9207, ExifDataType::Short, 1, "ExifMeteringMode", "Metering mode"},
    {0x9208, ExifDataType::Short, 1, "ExifLightSource", "Light source"},
    {0x9209, ExifDataType::Short, 1, "ExifFlash", "Flash"},
    {0x920A, ExifDataType::Rational, 1, "ExifFocalLength", "Lens focal length in millimetres"},
    {0x927C, ExifDataType::Undefined, ExifTagInfo::AnyCount, "ExifMakerNote", "Manufacturer notes"},
    {0x9286, ExifDataType::Undefined, ExifTagInfo::AnyCount, "ExifUserComment", "User comments"},
    {0x9290, ExifDataType::Ascii, ExifTagInfo::AnyCount, "ExifSubSecTime", "Fractions of a second of the file change time"},
    {0x9291, ExifDataType::Ascii, ExifTagInfo::AnyCount, "ExifSubSecTimeOriginal", "Fractions of a second of the original time"},
    {0x9292, ExifDataType::Ascii, ExifTagInfo::AnyCount, "ExifSubSecTimeDigitized", "Fractions of a second of the digitizing time"},
    {0xA000, ExifDataType::Undefined, 4, "ExifFlashPixVersion", "Supported Flashpix version"},
    {0xA001, ExifDataType::Short, 1, "ExifColorSpace", "Colour space information"},
    {0xA002, ExifDataType::Long, 1, "ExifPixelXDimension", "Valid image width"},
    {0xA003, ExifDataType::Long, 1, "ExifPixelYDimension", "Valid image height"},
    {0xA004, ExifDataType::Ascii, 13, "ExifRelatedSoundFile", "Related audio file"},
    {0xA005, ExifDataType::Long, 1, "ExifInteroperabilityIFD", "Pointer to the interoperability directory"},
    {0xA20B, ExifDataType::Rational, 1, "ExifFlashEnergy", "Flash energy"},
    {0xA20C, ExifDataType::Undefined, ExifTagInfo::AnyCount, "ExifSpatialFrequencyResponse", "Spatial frequency response"},
    {0xA20E, ExifDataType::Rational, 1, "ExifFocalPlaneXResolution", "Focal plane X resolution"},
    {0xA20F, ExifDataType::Rational, 1, "ExifFocalPlaneYResolution", "Focal plane Y resolution"},
    {0xA210, ExifDataType::Short, 1, "ExifFocalPlaneResolutionUnit", "Focal plane resolution unit"},
    {0xA214, ExifDataType::Short, 2, "ExifSubjectLocation", "Subject location"},
    {0xA215, ExifDataType::Rational, 1, "ExifExposureIndex", "Exposure index"},
    {0xA217, ExifDataType::Short, 1, "ExifSensingMethod", "Sensing method"},
    {0xA300, ExifDataType::Undefined, 1, "ExifFileSource", "File source"},
    {0xA301, ExifDataType::Undefined, 1, "ExifSceneType", "Scene type"},
    {0xA302, ExifDataType::Undefined, ExifTagInfo::AnyCount, "ExifCFAPattern", "Colour filter array pattern"},
    {0xA401, ExifDataType::Short, 1, "ExifCustomRendered", "Custom image processing"},
    {0xA402, ExifDataType::Short, 1, "ExifExposureMode", "Exposure mode"},
    {0xA403, ExifDataType::Short, 1, "ExifWhiteBalance", "White balance"},
    {0xA404, ExifDataType::Rational, 1, "ExifDigitalZoomRatio", "Digital zoom ratio"},
    {0xA405, ExifDataType::Short, 1, "ExifFocalLengthIn35mmFilm", "Focal length in 35 mm film"},
    {0xA406, ExifDataType::Short, 1, "ExifSceneCaptureType", "Scene capture type"},
    {0xA407, ExifDataType::Short, 1, "ExifGainControl", "Gain control"},
    {0xA408, ExifDataType::Short, 1, "ExifContrast", "Contrast"},
    {0xA409, ExifDataType::Short, 1, "ExifSaturation", "Saturation"},
    {0xA40A, ExifDataType::Short, 1, "ExifSharpness", "Sharpness"},
    {0xA40B, ExifDataType::Undefined, ExifTagInfo::AnyCount, "ExifDeviceSettingDescription", "Device settings description"},
    {0xA40C, ExifDataType::Short, 1, "ExifSubjectDistanceRange", "Subject distance range"},
    {0xA420, ExifDataType::Ascii, 33, "ExifImageUniqueID", "Unique image ID"},
};

constexpr ExifTagInfo GpsTags[] = {
    {0x0000, ExifDataType::Byte, 4, "ExifGpsVersionID", "GPS tag version"},
    {0x0001, ExifDataType::Ascii, 2, "ExifGpsLatitudeRef", "North or south latitude"},
    {0x0002, ExifDataType::Rational, 3, "ExifGpsLatitude", "Latitude"},
    {0x0003, ExifDataType::Ascii, 2, "ExifGpsLongitudeRef", "East or west longitude"},
    {0x0004, ExifDataType::Rational, 3, "ExifGpsLongitude", "Longitude"},
    {0x0005, ExifDataType::Byte, 1, "ExifGpsAltitudeRef", "Altitude reference"},
    {0x0006, ExifDataType::Rational, 1, "ExifGpsAltitude", "Altitude in metres"},
    {0x0007, ExifDataType::Rational, 3, "ExifGpsTimeStamp", "GPS time (atomic clock)"},
    {0x0008, ExifDataType::Ascii, ExifTagInfo::AnyCount, "ExifGpsSatellites", "GPS satellites used for measurement"},
    {0x0009, ExifDataType::Ascii, 2, "ExifGpsStatus", "GPS receiver status"},
    {0x000A, ExifDataType::Ascii, 2, "ExifGpsMeasureMode", "GPS measurement mode"},
    {0x000B, ExifDataType::Rational, 1, "ExifGpsDOP", "Measurement precision"},
    {0x000C, ExifDataType::Ascii, 2, "ExifGpsSpeedRef", "Speed unit"},
    {0x000D, ExifDataType::Rational, 1, "ExifGpsSpeed", "Speed of GPS receiver"},
    {0x000E, ExifDataType::Ascii, 2, "ExifGpsTrackRef", "Reference for direction of movement"},
    {0x000F, ExifDataType::Rational, 1, "ExifGpsTrack", "Direction of movement"},
    {0x0010, ExifDataType::Ascii, 2, "ExifGpsImgDirectionRef", "Reference for direction of image"},
    {0x0011, ExifDataType::Rational, 1, "ExifGpsImgDirection", "Direction of image"},
    {0x0012, ExifDataType::Ascii, ExifTagInfo::AnyCount, "ExifGpsMapDatum", "Geodetic survey data used"},
    {0x0013, ExifDataType::Ascii, 2, "ExifGpsDestLatitudeRef", "North or south latitude of destination"},
    {0x0014, ExifDataType::Rational, 3, "ExifGpsDestLatitude", "Latitude of destination"},
    {0x0015, ExifDataType::Ascii, 2, "ExifGpsDestLongitudeRef", "East or west longitude of destination"},
    {0x0016, ExifDataType::Rational, 3, "ExifGpsDestLongitude", "Longitude of destination"},
    {0x0017, ExifDataType::Ascii, 2, "ExifGpsDestBearingRef", "Reference for bearing of destination"},
    {0x0018, ExifDataType::Rational, 1, "ExifGpsDestBearing", "Bearing of destination"},
    {0x0019, ExifDataType::Ascii, 2, "ExifGpsDestDistanceRef", "Unit of distance to destination"},
    {0x001A, ExifDataType::Rational, 1, "ExifGpsDestDistance", "Distance to destination"},
    {0x001B, ExifDataType::Undefined, ExifTagInfo::AnyCount, "ExifGpsProcessingMethod", "Name of GPS processing method"},
    {0x001C, ExifDataType::Undefined, ExifTagInfo::AnyCount, "ExifGpsAreaInformation", "Name of GPS area"},
    {0x001D, ExifDataType::Ascii, 11, "ExifGpsDateStamp", "GPS date"},
    {0x001E, ExifDataType::Short, 1, "ExifGpsDifferential", "GPS differential correction"},
};

constexpr ExifTagInfo InteroperabilityTags[] = {
    {0x0001, ExifDataType::Ascii, ExifTagInfo::AnyCount, "ExifInteroperabilityIndex", "Interoperability identification"},
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
