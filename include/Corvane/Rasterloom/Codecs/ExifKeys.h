#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Codecs {

/// The keys of the tags that EXIF 2.2 defines: 0xF0000000 + directory * 0x10000 + tag. The directories are 0 for the
/// image, 1 for the thumbnail, 2 for exposure and camera, 3 for the position, 4 for interoperability. Tags that have no
/// name here are reached by the same arithmetic.
struct ExifKeys {
    /// The thumbnail itself.
    static constexpr std::uint32_t Thumbnail = 0xF00FF00F;

    /// The image: the key of the tag of that name.
    static constexpr std::uint32_t ImageWidth = 0xF0000100;
    static constexpr std::uint32_t ImageHeight = 0xF0000101;
    static constexpr std::uint32_t ImageLength = ImageHeight; ///< its name in the standard
    static constexpr std::uint32_t BitsPerSample = 0xF0000102;
    static constexpr std::uint32_t Compression = 0xF0000103;
    static constexpr std::uint32_t PhotometricInterpretation = 0xF0000106;
    static constexpr std::uint32_t ImageDescription = 0xF000010E;
    static constexpr std::uint32_t Make = 0xF000010F;
    static constexpr std::uint32_t Model = 0xF0000110;
    static constexpr std::uint32_t StripOffsets = 0xF0000111;
    static constexpr std::uint32_t Orientation = 0xF0000112;
    static constexpr std::uint32_t SamplesPerPixel = 0xF0000115;
    static constexpr std::uint32_t RowsPerStrip = 0xF0000116;
    static constexpr std::uint32_t StripByteCounts = 0xF0000117;
    static constexpr std::uint32_t XResolution = 0xF000011A;
    static constexpr std::uint32_t YResolution = 0xF000011B;
    static constexpr std::uint32_t PlanarConfiguration = 0xF000011C;
    static constexpr std::uint32_t ResolutionUnit = 0xF0000128;
    static constexpr std::uint32_t TransferFunction = 0xF000012D;
    static constexpr std::uint32_t Software = 0xF0000131;
    static constexpr std::uint32_t DateTime = 0xF0000132;
    static constexpr std::uint32_t Artist = 0xF000013B;
    static constexpr std::uint32_t WhitePoint = 0xF000013E;
    static constexpr std::uint32_t PrimaryChromaticities = 0xF000013F;
    static constexpr std::uint32_t JPEGInterchangeFormat = 0xF0000201;
    static constexpr std::uint32_t JPEGInterchangeFormatLength = 0xF0000202;
    static constexpr std::uint32_t YCbCrCoefficients = 0xF0000211;
    static constexpr std::uint32_t YCbCrSubSampling = 0xF0000212;
    static constexpr std::uint32_t YCbCrPositioning = 0xF0000213;
    static constexpr std::uint32_t ReferenceBlackWhite = 0xF0000214;
    static constexpr std::uint32_t Copyright = 0xF0008298;
    static constexpr std::uint32_t ExifIFD = 0xF0008769;
    static constexpr std::uint32_t GpsIFD = 0xF0008825;

    /// The thumbnail: the key of the tag of that name.
    static constexpr std::uint32_t ThumbnailWidth = 0xF0010100;
    static constexpr std::uint32_t ThumbnailHeight = 0xF0010101;
    static constexpr std::uint32_t ThumbnailBitsPerSample = 0xF0010102;
    static constexpr std::uint32_t ThumbnailCompression = 0xF0010103;
    static constexpr std::uint32_t ThumbnailPhotometricInterpretation = 0xF0010106;
    static constexpr std::uint32_t ThumbnailImageDescription = 0xF001010E;
    static constexpr std::uint32_t ThumbnailMake = 0xF001010F;
    static constexpr std::uint32_t ThumbnailModel = 0xF0010110;
    static constexpr std::uint32_t ThumbnailStripOffsets = 0xF0010111;
    static constexpr std::uint32_t ThumbnailOrientation = 0xF0010112;
    static constexpr std::uint32_t ThumbnailSamplesPerPixel = 0xF0010115;
    static constexpr std::uint32_t ThumbnailRowsPerStrip = 0xF0010116;
    static constexpr std::uint32_t ThumbnailStripByteCounts = 0xF0010117;
    static constexpr std::uint32_t ThumbnailXResolution = 0xF001011A;
    static constexpr std::uint32_t ThumbnailYResolution = 0xF001011B;
    static constexpr std::uint32_t ThumbnailPlanarConfiguration = 0xF001011C;
    static constexpr std::uint32_t ThumbnailResolutionUnit = 0xF0010128;
    static constexpr std::uint32_t ThumbnailTransferFunction = 0xF001012D;
    static constexpr std::uint32_t ThumbnailSoftware = 0xF0010131;
    static constexpr std::uint32_t ThumbnailDateTime = 0xF0010132;
    static constexpr std::uint32_t ThumbnailArtist = 0xF001013B;
    static constexpr std::uint32_t ThumbnailWhitePoint = 0xF001013E;
    static constexpr std::uint32_t ThumbnailPrimaryChromaticities = 0xF001013F;
    static constexpr std::uint32_t ThumbnailJPEGInterchangeFormat = 0xF0010201;
    static constexpr std::uint32_t ThumbnailJPEGInterchangeFormatLength = 0xF0010202;
    static constexpr std::uint32_t ThumbnailYCbCrCoefficients = 0xF0010211;
    static constexpr std::uint32_t ThumbnailYCbCrSubSampling = 0xF0010212;
    static constexpr std::uint32_t ThumbnailYCbCrPositioning = 0xF0010213;
    static constexpr std::uint32_t ThumbnailReferenceBlackWhite = 0xF0010214;
    static constexpr std::uint32_t ThumbnailCopyright = 0xF0018298;
    static constexpr std::uint32_t ThumbnailExifIFD = 0xF0018769;
    static constexpr std::uint32_t ThumbnailGpsIFD = 0xF0018825;

    /// Exposure and camera: the key of the tag of that name.
    static constexpr std::uint32_t ExposureTime = 0xF002829A;
    static constexpr std::uint32_t FNumber = 0xF002829D;
    static constexpr std::uint32_t ExposureProgram = 0xF0028822;
    static constexpr std::uint32_t SpectralSensitivity = 0xF0028824;
    static constexpr std::uint32_t ISOSpeedRatings = 0xF0028827;
    static constexpr std::uint32_t OECF = 0xF0028828;
    static constexpr std::uint32_t ExifVersion = 0xF0029000;
    static constexpr std::uint32_t DateTimeOriginal = 0xF0029003;
    static constexpr std::uint32_t DateTimeDigitized = 0xF0029004;
    static constexpr std::uint32_t ComponentsConfiguration = 0xF0029101;
    static constexpr std::uint32_t CompressedBitsPerPixel = 0xF0029102;
    static constexpr std::uint32_t ShutterSpeed = 0xF0029201;
    static constexpr std::uint32_t ApertureValue = 0xF0029202;
    static constexpr std::uint32_t BrightnessValue = 0xF0029203;
    static constexpr std::uint32_t ExposureBiasValue = 0xF0029204;
    static constexpr std::uint32_t MaxApertureValue = 0xF0029205;
    static constexpr std::uint32_t SubjectDistance = 0xF0029206;
    static constexpr std::uint32_t MeteringMode = 0xF0029207;
    static constexpr std::uint32_t LightSource = 0xF0029208;
    static constexpr std::uint32_t Flash = 0xF0029209;
    static constexpr std::uint32_t FocalLength = 0xF002920A;
    static constexpr std::uint32_t MakerNote = 0xF002927C;
    static constexpr std::uint32_t UserComment = 0xF0029286;
    static constexpr std::uint32_t SubSecTime = 0xF0029290;
    static constexpr std::uint32_t SubSecTimeOriginal = 0xF0029291;
    static constexpr std::uint32_t SubSecTimeDigitized = 0xF0029292;
    static constexpr std::uint32_t FlashPixVersion = 0xF002A000;
    static constexpr std::uint32_t ColorSpace = 0xF002A001;
    static constexpr std::uint32_t PixelXDimension = 0xF002A002;
    static constexpr std::uint32_t PixelYDimension = 0xF002A003;
    static constexpr std::uint32_t RelatedSoundFile = 0xF002A004;
    static constexpr std::uint32_t InteroperabilityIFD = 0xF002A005;
    static constexpr std::uint32_t FlashEnergy = 0xF002A20B;
    static constexpr std::uint32_t SpatialFrequencyResponse = 0xF002A20C;
    static constexpr std::uint32_t FocalPlaneXResolution = 0xF002A20E;
    static constexpr std::uint32_t FocalPlaneYResolution = 0xF002A20F;
    static constexpr std::uint32_t FocalPlaneResolutionUnit = 0xF002A210;
    static constexpr std::uint32_t SubjectLocation = 0xF002A214;
    static constexpr std::uint32_t ExposureIndex = 0xF002A215;
    static constexpr std::uint32_t SensingMethod = 0xF002A217;
    static constexpr std::uint32_t FileSource = 0xF002A300;
    static constexpr std::uint32_t SceneType = 0xF002A301;
    static constexpr std::uint32_t CFAPattern = 0xF002A302;
    static constexpr std::uint32_t CustomRendered = 0xF002A401;
    static constexpr std::uint32_t ExposureMode = 0xF002A402;
    static constexpr std::uint32_t WhiteBalance = 0xF002A403;
    static constexpr std::uint32_t DigitalZoomRatio = 0xF002A404;
    static constexpr std::uint32_t FocalLengthIn35mmFilm = 0xF002A405;
    static constexpr std::uint32_t SceneCaptureType = 0xF002A406;
    static constexpr std::uint32_t GainControl = 0xF002A407;
    static constexpr std::uint32_t Contrast = 0xF002A408;
    static constexpr std::uint32_t Saturation = 0xF002A409;
    static constexpr std::uint32_t Sharpness = 0xF002A40A;
    static constexpr std::uint32_t DeviceSettingDescription = 0xF002A40B;
    static constexpr std::uint32_t SubjectDistanceRange = 0xF002A40C;
    static constexpr std::uint32_t ImageUniqueID = 0xF002A420;

    /// The position: the key of the tag of that name.
    static constexpr std::uint32_t GpsVersionID = 0xF0030000;
    static constexpr std::uint32_t GpsLatitudeRef = 0xF0030001;
    static constexpr std::uint32_t GpsLatitude = 0xF0030002;
    static constexpr std::uint32_t GpsLongitudeRef = 0xF0030003;
    static constexpr std::uint32_t GpsLongitude = 0xF0030004;
    static constexpr std::uint32_t GpsAltitudeRef = 0xF0030005;
    static constexpr std::uint32_t GpsAltitude = 0xF0030006;
    static constexpr std::uint32_t GpsTimeStamp = 0xF0030007;
    static constexpr std::uint32_t GpsSatellites = 0xF0030008;
    static constexpr std::uint32_t GpsStatus = 0xF0030009;
    static constexpr std::uint32_t GpsMeasureMode = 0xF003000A;
    static constexpr std::uint32_t GpsDOP = 0xF003000B;
    static constexpr std::uint32_t GpsSpeedRef = 0xF003000C;
    static constexpr std::uint32_t GpsSpeed = 0xF003000D;
    static constexpr std::uint32_t GpsTrackRef = 0xF003000E;
    static constexpr std::uint32_t GpsTrack = 0xF003000F;
    static constexpr std::uint32_t GpsImgDirectionRef = 0xF0030010;
    static constexpr std::uint32_t GpsImgDirection = 0xF0030011;
    static constexpr std::uint32_t GpsMapDatum = 0xF0030012;
    static constexpr std::uint32_t GpsDestLatitudeRef = 0xF0030013;
    static constexpr std::uint32_t GpsDestLatitude = 0xF0030014;
    static constexpr std::uint32_t GpsDestLongitudeRef = 0xF0030015;
    static constexpr std::uint32_t GpsDestLongitude = 0xF0030016;
    static constexpr std::uint32_t GpsDestBearingRef = 0xF0030017;
    static constexpr std::uint32_t GpsDestBearing = 0xF0030018;
    static constexpr std::uint32_t GpsDestDistanceRef = 0xF0030019;
    static constexpr std::uint32_t GpsDestDistance = 0xF003001A;
    static constexpr std::uint32_t GpsProcessingMethod = 0xF003001B;
    static constexpr std::uint32_t GpsAreaInformation = 0xF003001C;
    static constexpr std::uint32_t GpsDateStamp = 0xF003001D;
    static constexpr std::uint32_t GpsDifferential = 0xF003001E;

    /// Interoperability: the key of the tag of that name.
    static constexpr std::uint32_t InteroperabilityIndex = 0xF0040001;
};

} // namespace Corvane::Rasterloom::Codecs
