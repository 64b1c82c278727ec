#pragma once

#include <cstdint>

namespace ImagingFramework {

/// The directories of an EXIF block.
enum class ExifIfd : std::uint32_t {
    MainImage = 0,
    Thumbnail = 1,
    Exif = 2, ///< exposure and camera
    Gps = 3,
    Interoperability = 4,
};

inline constexpr std::uint32_t ExifIfdCount = 5;

/// The type of a tag's values, in the numbering of the EXIF file format.
enum class ExifDataType : std::uint16_t {
    Byte = 1,
    Ascii = 2,
    Short = 3,
    Long = 4,
    Rational = 5, ///< two unsigned 32-bit numbers
    Undefined = 7,
    SignedLong = 9,
    SignedRational = 10,
};

/// Bytes of one value. Fails with `ArgumentException` ("type") for a number that is no type.
std::uint32_t ExifDataTypeSize(ExifDataType type);

/// Tags that the block's own structure consists of, and those that the library looks at by itself.
namespace ExifTagId {
inline constexpr std::uint16_t ImageWidth = 0x0100;
inline constexpr std::uint16_t ImageHeight = 0x0101;
inline constexpr std::uint16_t BitsPerSample = 0x0102;
inline constexpr std::uint16_t Compression = 0x0103;
inline constexpr std::uint16_t PhotometricInterpretation = 0x0106;
inline constexpr std::uint16_t StripOffsets = 0x0111;
inline constexpr std::uint16_t SamplesPerPixel = 0x0115;
inline constexpr std::uint16_t RowsPerStrip = 0x0116;
inline constexpr std::uint16_t StripByteCounts = 0x0117;
inline constexpr std::uint16_t XResolution = 0x011A;
inline constexpr std::uint16_t YResolution = 0x011B;
inline constexpr std::uint16_t PlanarConfiguration = 0x011C;
inline constexpr std::uint16_t ResolutionUnit = 0x0128;
inline constexpr std::uint16_t JpegInterchangeFormat = 0x0201;
inline constexpr std::uint16_t JpegInterchangeFormatLength = 0x0202;
inline constexpr std::uint16_t YCbCrSubSampling = 0x0212;
inline constexpr std::uint16_t YCbCrPositioning = 0x0213;
inline constexpr std::uint16_t PhotoshopResources = 0x8649;
inline constexpr std::uint16_t ExifIfdPointer = 0x8769;
inline constexpr std::uint16_t GpsIfdPointer = 0x8825;
inline constexpr std::uint16_t MakerNote = 0x927C;
inline constexpr std::uint16_t ColorSpace = 0xA001;
inline constexpr std::uint16_t InteroperabilityIfdPointer = 0xA005;
} // namespace ExifTagId

} // namespace ImagingFramework
