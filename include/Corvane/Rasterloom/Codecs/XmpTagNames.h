#pragma once

#include <string_view>

namespace Corvane::Rasterloom::Codecs {

/// The qualified names of the standard properties. The name of a constant is that of the schema and that of the
/// property.
class XmpTagNames {
public:
    XmpTagNames() = delete;

    /// Dublin Core: the qualified name of a property.
    static constexpr std::string_view DCContributor = "dc:contributor";
    static constexpr std::string_view DCCoverage = "dc:coverage";
    static constexpr std::string_view DCCreator = "dc:creator";
    static constexpr std::string_view DCDate = "dc:date";
    static constexpr std::string_view DCDescription = "dc:description";
    static constexpr std::string_view DCFormat = "dc:format";
    static constexpr std::string_view DCIdentifier = "dc:identifier";
    static constexpr std::string_view DCLanguage = "dc:language";
    static constexpr std::string_view DCPublisher = "dc:publisher";
    static constexpr std::string_view DCRelation = "dc:relation";
    static constexpr std::string_view DCRights = "dc:rights";
    static constexpr std::string_view DCSource = "dc:source";
    static constexpr std::string_view DCSubject = "dc:subject";
    static constexpr std::string_view DCTitle = "dc:title";
    static constexpr std::string_view DCType = "dc:type";

    /// XMP basic: the qualified name of a property.
    static constexpr std::string_view XmpAdvisory = "xmp:Advisory";
    static constexpr std::string_view XmpBaseURL = "xmp:BaseURL";
    static constexpr std::string_view XmpCreateDate = "xmp:CreateDate";
    static constexpr std::string_view XmpCreatorTool = "xmp:CreatorTool";
    static constexpr std::string_view XmpIdentifier = "xmp:Identifier";
    static constexpr std::string_view XmpLabel = "xmp:Label";
    static constexpr std::string_view XmpMetadataDate = "xmp:MetadataDate";
    static constexpr std::string_view XmpModifyDate = "xmp:ModifyDate";
    static constexpr std::string_view XmpNickname = "xmp:Nickname";
    static constexpr std::string_view XmpRating = "xmp:Rating";
    static constexpr std::string_view XmpThumbnails = "xmp:Thumbnails";

    /// Qualifiers of identifiers: the qualified name of a property.
    static constexpr std::string_view XmpIdqScheme = "xmpidq:Scheme";

    /// Rights management: the qualified name of a property.
    static constexpr std::string_view XmpRightsCertificate = "xmpRights:Certificate";
    static constexpr std::string_view XmpRightsMarked = "xmpRights:Marked";
    static constexpr std::string_view XmpRightsOwner = "xmpRights:Owner";
    static constexpr std::string_view XmpRightsUsageTerms = "xmpRights:UsageTerms";
    static constexpr std::string_view XmpRightsWebStatement = "xmpRights:WebStatement";

    /// Media management: the qualified name of a property.
    static constexpr std::string_view XmpMMDerivedFrom = "xmpMM:DerivedFrom";
    static constexpr std::string_view XmpMMDocumentID = "xmpMM:DocumentID";
    static constexpr std::string_view XmpMMHistory = "xmpMM:History";
    static constexpr std::string_view XmpMMManagedFrom = "xmpMM:ManagedFrom";
    static constexpr std::string_view XmpMMManager = "xmpMM:Manager";
    static constexpr std::string_view XmpMMManageTo = "xmpMM:ManageTo";
    static constexpr std::string_view XmpMMManageUI = "xmpMM:ManageUI";
    static constexpr std::string_view XmpMMManagerVariant = "xmpMM:ManagerVariant";
    static constexpr std::string_view XmpMMRenditionClass = "xmpMM:RenditionClass";
    static constexpr std::string_view XmpMMRenditionParams = "xmpMM:RenditionParams";
    static constexpr std::string_view XmpMMVersionID = "xmpMM:VersionID";
    static constexpr std::string_view XmpMMVersions = "xmpMM:Versions";
    static constexpr std::string_view XmpMMLastURL = "xmpMM:LastURL";
    static constexpr std::string_view XmpMMRenditionOf = "xmpMM:RenditionOf";
    static constexpr std::string_view XmpMMSaveID = "xmpMM:SaveID";

    /// Basic job tickets: the qualified name of a property.
    static constexpr std::string_view XmpBJJobRef = "xmpBJ:JobRef";

    /// Paged text: the qualified name of a property.
    static constexpr std::string_view XmpTPgMaxPageSize = "xmpTPg:MaxPageSize";
    static constexpr std::string_view XmpTPgNPages = "xmpTPg:NPages";
    static constexpr std::string_view XmpTPgFonts = "xmpTPg:Fonts";
    static constexpr std::string_view XmpTPgColorants = "xmpTPg:Colorants";
    static constexpr std::string_view XmpTPgPlateNames = "xmpTPg:PlateNames";

    /// Dynamic media: the qualified name of a property.
    static constexpr std::string_view XmpDMProjectRef = "xmpDM:projectRef";
    static constexpr std::string_view XmpDMVideoFrameRate = "xmpDM:videoFrameRate";
    static constexpr std::string_view XmpDMVideoFrameSize = "xmpDM:videoFrameSize";
    static constexpr std::string_view XmpDMVideoPixelAspectRatio = "xmpDM:videoPixelAspectRatio";
    static constexpr std::string_view XmpDMVideoPixelDepth = "xmpDM:videoPixelDepth";
    static constexpr std::string_view XmpDMVideoColorSpace = "xmpDM:videoColorSpace";
    static constexpr std::string_view XmpDMVideoAlphaMode = "xmpDM:videoAlphaMode";
    static constexpr std::string_view XmpDMVideoAlphaPremultipleColor = "xmpDM:videoAlphaPremultipleColor";
    static constexpr std::string_view XmpDMVideoAlphaUnityIsTransparent = "xmpDM:videoAlphaUnityIsTransparent";
    static constexpr std::string_view XmpDMVideoCompressor = "xmpDM:videoCompressor";
    static constexpr std::string_view XmpDMPullDown = "xmpDM:pullDown";
    static constexpr std::string_view XmpDMAudioSampleRate = "xmpDM:audioSampleRate";
    static constexpr std::string_view XmpDMAudioSampleType = "xmpDM:audioSampleType";
    static constexpr std::string_view XmpDMAudioChannelType = "xmpDM:audioChannelType";
    static constexpr std::string_view XmpDMAudioCompressor = "xmpDM:audioCompressor";
    static constexpr std::string_view XmpDMSpeakerPlacement = "xmpDM:speakerPlacement";
    static constexpr std::string_view XmpDMFileDataRate = "xmpDM:fileDataRate";
    static constexpr std::string_view XmpDMTapeName = "xmpDM:tapeName";
    static constexpr std::string_view XmpDMAltTapeName = "xmpDM:altTapeName";
    static constexpr std::string_view XmpDMStartTimecode = "xmpDM:startTimecode";
    static constexpr std::string_view XmpDMAltTimecode = "xmpDM:altTimecode";
    static constexpr std::string_view XmpDMDuration = "xmpDM:duration";
    static constexpr std::string_view XmpDMScene = "xmpDM:scene";
    static constexpr std::string_view XmpDMShotName = "xmpDM:shotName";
    static constexpr std::string_view XmpDMShotDate = "xmpDM:shotDate";
    static constexpr std::string_view XmpDMShotLocation = "xmpDM:shotLocation";
    static constexpr std::string_view XmpDMLogComment = "xmpDM:logComment";
    static constexpr std::string_view XmpDMMarkers = "xmpDM:markers";
    static constexpr std::string_view XmpDMContributedMedia = "xmpDM:contributedMedia";
    static constexpr std::string_view XmpDMAbsPeakAudioFilePath = "xmpDM:absPeakAudioFilePath";
    static constexpr std::string_view XmpDMRelativePeakAudioFilePath = "xmpDM:relativePeakAudioFilePath";
    static constexpr std::string_view XmpDMVideoModDate = "xmpDM:videoModDate";
    static constexpr std::string_view XmpDMAudioModDate = "xmpDM:audioModDate";
    static constexpr std::string_view XmpDMMetadataModDate = "xmpDM:metadataModDate";
    static constexpr std::string_view XmpDMArtist = "xmpDM:artist";
    static constexpr std::string_view XmpDMAlbum = "xmpDM:album";
    static constexpr std::string_view XmpDMTrackNumber = "xmpDM:trackNumber";
    static constexpr std::string_view XmpDMGenre = "xmpDM:genre";
    static constexpr std::string_view XmpDMCopyright = "xmpDM:copyright";
    static constexpr std::string_view XmpDMReleaseDate = "xmpDM:releaseDate";
    static constexpr std::string_view XmpDMComposer = "xmpDM:composer";
    static constexpr std::string_view XmpDMEngineer = "xmpDM:engineer";
    static constexpr std::string_view XmpDMTempo = "xmpDM:tempo";
    static constexpr std::string_view XmpDMInstrument = "xmpDM:instrument";
    static constexpr std::string_view XmpDMIntroTime = "xmpDM:introTime";
    static constexpr std::string_view XmpDMOutCue = "xmpDM:outCue";
    static constexpr std::string_view XmpDMRelativeTimestamp = "xmpDM:relativeTimestamp";
    static constexpr std::string_view XmpDMLoop = "xmpDM:loop";
    static constexpr std::string_view XmpDMNumberOfBeats = "xmpDM:numberOfBeats";
    static constexpr std::string_view XmpDMKey = "xmpDM:key";
    static constexpr std::string_view XmpDMStretchMode = "xmpDM:stretchMode";
    static constexpr std::string_view XmpDMTimeScaleParams = "xmpDM:timeScaleParams";
    static constexpr std::string_view XmpDMResampleParams = "xmpDM:resampleParams";
    static constexpr std::string_view XmpDMBeatSpliceParams = "xmpDM:beatSpliceParams";
    static constexpr std::string_view XmpDMTimeSignature = "xmpDM:timeSignature";
    static constexpr std::string_view XmpDMScaleType = "xmpDM:scaleType";

    /// PDF: the qualified name of a property.
    static constexpr std::string_view PdfKeywords = "pdf:Keywords";
    static constexpr std::string_view PdfPDFVersion = "pdf:PDFVersion";
    static constexpr std::string_view PdfProducer = "pdf:Producer";

    /// Photoshop: the qualified name of a property.
    static constexpr std::string_view PhotoshopAuthorsPosition = "photoshop:AuthorsPosition";
    static constexpr std::string_view PhotoshopCaptionWriter = "photoshop:CaptionWriter";
    static constexpr std::string_view PhotoshopCategory = "photoshop:Category";
    static constexpr std::string_view PhotoshopCity = "photoshop:City";
    static constexpr std::string_view PhotoshopCountry = "photoshop:Country";
    static constexpr std::string_view PhotoshopCredit = "photoshop:Credit";
    static constexpr std::string_view PhotoshopDateCreated = "photoshop:DateCreated";
    static constexpr std::string_view PhotoshopHeadline = "photoshop:Headline";
    static constexpr std::string_view PhotoshopInstructions = "photoshop:Instructions";
    static constexpr std::string_view PhotoshopSource = "photoshop:Source";
    static constexpr std::string_view PhotoshopState = "photoshop:State";
    static constexpr std::string_view PhotoshopSupplementalCategories = "photoshop:SupplementalCategories";
    static constexpr std::string_view PhotoshopTransmissionReference = "photoshop:TransmissionReference";
    static constexpr std::string_view PhotoshopUrgency = "photoshop:Urgency";

    /// Camera raw settings: the qualified name of a property.
    static constexpr std::string_view CrsAutoBrightness = "crs:AutoBrightness";
    static constexpr std::string_view CrsAutoContrast = "crs:AutoContrast";
    static constexpr std::string_view CrsAutoExposure = "crs:AutoExposure";
    static constexpr std::string_view CrsAutoShadows = "crs:AutoShadows";
    static constexpr std::string_view CrsBlueHue = "crs:BlueHue";
    static constexpr std::string_view CrsBlueSaturation = "crs:BlueSaturation";
    static constexpr std::string_view CrsBrightness = "crs:Brightness";
    static constexpr std::string_view CrsCameraProfile = "crs:CameraProfile";
    static constexpr std::string_view CrsChromaticAberrationB = "crs:ChromaticAberrationB";
    static constexpr std::string_view CrsChromaticAberrationR = "crs:ChromaticAberrationR";
    static constexpr std::string_view CrsColorNoiseReduction = "crs:ColorNoiseReduction";
    static constexpr std::string_view CrsContrast = "crs:Contrast";
    static constexpr std::string_view CrsCropTop = "crs:CropTop";
    static constexpr std::string_view CrsCropLeft = "crs:CropLeft";
    static constexpr std::string_view CrsCropBottom = "crs:CropBottom";
    static constexpr std::string_view CrsCropRight = "crs:CropRight";
    static constexpr std::string_view CrsCropAngle = "crs:CropAngle";
    static constexpr std::string_view CrsCropWidth = "crs:CropWidth";
    static constexpr std::string_view CrsCropHeight = "crs:CropHeight";
    static constexpr std::string_view CrsCropUnits = "crs:CropUnits";
    static constexpr std::string_view CrsExposure = "crs:Exposure";
    static constexpr std::string_view CrsGreenHue = "crs:GreenHue";
    static constexpr std::string_view CrsGreenSaturation = "crs:GreenSaturation";
    static constexpr std::string_view CrsHasCrop = "crs:HasCrop";
    static constexpr std::string_view CrsHasSettings = "crs:HasSettings";
    static constexpr std::string_view CrsLuminanceSmoothing = "crs:LuminanceSmoothing";
    static constexpr std::string_view CrsRawFileName = "crs:RawFileName";
    static constexpr std::string_view CrsRedHue = "crs:RedHue";
    static constexpr std::string_view CrsRedSaturation = "crs:RedSaturation";
    static constexpr std::string_view CrsSaturation = "crs:Saturation";
    static constexpr std::string_view CrsShadows = "crs:Shadows";
    static constexpr std::string_view CrsShadowTint = "crs:ShadowTint";
    static constexpr std::string_view CrsSharpness = "crs:Sharpness";
    static constexpr std::string_view CrsTemperature = "crs:Temperature";
    static constexpr std::string_view CrsTint = "crs:Tint";
    static constexpr std::string_view CrsToneCurve = "crs:ToneCurve";
    static constexpr std::string_view CrsToneCurveName = "crs:ToneCurveName";
    static constexpr std::string_view CrsVersion = "crs:Version";
    static constexpr std::string_view CrsVignetteAmount = "crs:VignetteAmount";
    static constexpr std::string_view CrsVignetteMidpoint = "crs:VignetteMidpoint";
    static constexpr std::string_view CrsWhiteBalance = "crs:WhiteBalance";

    /// TIFF: the qualified name of a property.
    static constexpr std::string_view TiffImageWidth = "tiff:ImageWidth";
    static constexpr std::string_view TiffImageLength = "tiff:ImageLength";
    static constexpr std::string_view TiffBitsPerSample = "tiff:BitsPerSample";
    static constexpr std::string_view TiffCompression = "tiff:Compression";
    static constexpr std::string_view TiffPhotometricInterpretation = "tiff:PhotometricInterpretation";
    static constexpr std::string_view TiffOrientation = "tiff:Orientation";
    static constexpr std::string_view TiffSamplesPerPixel = "tiff:SamplesPerPixel";
    static constexpr std::string_view TiffPlanarConfiguration = "tiff:PlanarConfiguration";
    static constexpr std::string_view TiffYCbCrSubSampling = "tiff:YCbCrSubSampling";
    static constexpr std::string_view TiffYCbCrPositioning = "tiff:YCbCrPositioning";
    static constexpr std::string_view TiffXResolution = "tiff:XResolution";
    static constexpr std::string_view TiffYResolution = "tiff:YResolution";
    static constexpr std::string_view TiffResolutionUnit = "tiff:ResolutionUnit";
    static constexpr std::string_view TiffTransferFunction = "tiff:TransferFunction";
    static constexpr std::string_view TiffWhitePoint = "tiff:WhitePoint";
    static constexpr std::string_view TiffPrimaryChromaticities = "tiff:PrimaryChromaticities";
    static constexpr std::string_view TiffYCbCrCoefficients = "tiff:YCbCrCoefficients";
    static constexpr std::string_view TiffReferenceBlackWhite = "tiff:ReferenceBlackWhite";
    static constexpr std::string_view TiffDateTime = "tiff:DateTime";
    static constexpr std::string_view TiffImageDescription = "tiff:ImageDescription";
    static constexpr std::string_view TiffMake = "tiff:Make";
    static constexpr std::string_view TiffModel = "tiff:Model";
    static constexpr std::string_view TiffSoftware = "tiff:Software";
    static constexpr std::string_view TiffArtist = "tiff:Artist";
    static constexpr std::string_view TiffCopyright = "tiff:Copyright";

    /// Exif: the qualified name of a property.
    static constexpr std::string_view ExifExifVersion = "exif:ExifVersion";
    static constexpr std::string_view ExifFlashpixVersion = "exif:FlashpixVersion";
    static constexpr std::string_view ExifColorSpace = "exif:ColorSpace";
    static constexpr std::string_view ExifComponentsConfiguration = "exif:ComponentsConfiguration";
    static constexpr std::string_view ExifCompressedBitsPerPixel = "exif:CompressedBitsPerPixel";
    static constexpr std::string_view ExifPixelXDimension = "exif:PixelXDimension";
    static constexpr std::string_view ExifPixelYDimension = "exif:PixelYDimension";
    static constexpr std::string_view ExifUserComment = "exif:UserComment";
    static constexpr std::string_view ExifRelatedSoundFile = "exif:RelatedSoundFile";
    static constexpr std::string_view ExifDateTimeOriginal = "exif:DateTimeOriginal";
    static constexpr std::string_view ExifDateTimeDigitized = "exif:DateTimeDigitized";
    static constexpr std::string_view ExifExposureTime = "exif:ExposureTime";
    static constexpr std::string_view ExifFNumber = "exif:FNumber";
    static constexpr std::string_view ExifExposureProgram = "exif:ExposureProgram";
    static constexpr std::string_view ExifSpectralSensitivity = "exif:SpectralSensitivity";
    static constexpr std::string_view ExifISOSpeedRatings = "exif:ISOSpeedRatings";
    static constexpr std::string_view ExifOECF = "exif:OECF";
    static constexpr std::string_view ExifShutterSpeedValue = "exif:ShutterSpeedValue";
    static constexpr std::string_view ExifApertureValue = "exif:ApertureValue";
    static constexpr std::string_view ExifBrightnessValue = "exif:BrightnessValue";
    static constexpr std::string_view ExifExposureBiasValue = "exif:ExposureBiasValue";
    static constexpr std::string_view ExifMaxApertureValue = "exif:MaxApertureValue";
    static constexpr std::string_view ExifSubjectDistance = "exif:SubjectDistance";
    static constexpr std::string_view ExifMeteringMode = "exif:MeteringMode";
    static constexpr std::string_view ExifLightSource = "exif:LightSource";
    static constexpr std::string_view ExifFlash = "exif:Flash";
    static constexpr std::string_view ExifFocalLength = "exif:FocalLength";
    static constexpr std::string_view ExifSubjectArea = "exif:SubjectArea";
    static constexpr std::string_view ExifFlashEnergy = "exif:FlashEnergy";
    static constexpr std::string_view ExifSpatialFrequencyResponse = "exif:SpatialFrequencyResponse";
    static constexpr std::string_view ExifFocalPlaneXResolution = "exif:FocalPlaneXResolution";
    static constexpr std::string_view ExifFocalPlaneYResolution = "exif:FocalPlaneYResolution";
    static constexpr std::string_view ExifFocalPlaneResolutionUnit = "exif:FocalPlaneResolutionUnit";
    static constexpr std::string_view ExifSubjectLocation = "exif:SubjectLocation";
    static constexpr std::string_view ExifExposureIndex = "exif:ExposureIndex";
    static constexpr std::string_view ExifSensingMethod = "exif:SensingMethod";
    static constexpr std::string_view ExifFileSource = "exif:FileSource";
    static constexpr std::string_view ExifSceneType = "exif:SceneType";
    static constexpr std::string_view ExifCFAPattern = "exif:CFAPattern";
    static constexpr std::string_view ExifCustomRendered = "exif:CustomRendered";
    static constexpr std::string_view ExifExposureMode = "exif:ExposureMode";
    static constexpr std::string_view ExifWhiteBalance = "exif:WhiteBalance";
    static constexpr std::string_view ExifDigitalZoomRatio = "exif:DigitalZoomRatio";
    static constexpr std::string_view ExifFocalLengthIn35mmFilm = "exif:FocalLengthIn35mmFilm";
    static constexpr std::string_view ExifSceneCaptureType = "exif:SceneCaptureType";
    static constexpr std::string_view ExifGainControl = "exif:GainControl";
    static constexpr std::string_view ExifContrast = "exif:Contrast";
    static constexpr std::string_view ExifSaturation = "exif:Saturation";
    static constexpr std::string_view ExifSharpness = "exif:Sharpness";
    static constexpr std::string_view ExifDeviceSettingDescription = "exif:DeviceSettingDescription";
    static constexpr std::string_view ExifSubjectDistanceRange = "exif:SubjectDistanceRange";
    static constexpr std::string_view ExifImageUniqueID = "exif:ImageUniqueID";
    static constexpr std::string_view ExifGPSVersionID = "exif:GPSVersionID";
    static constexpr std::string_view ExifGPSLatitude = "exif:GPSLatitude";
    static constexpr std::string_view ExifGPSLongitude = "exif:GPSLongitude";
    static constexpr std::string_view ExifGPSAltitudeRef = "exif:GPSAltitudeRef";
    static constexpr std::string_view ExifGPSAltitude = "exif:GPSAltitude";
    static constexpr std::string_view ExifGPSTimeStamp = "exif:GPSTimeStamp";
    static constexpr std::string_view ExifGPSSatellites = "exif:GPSSatellites";
    static constexpr std::string_view ExifGPSStatus = "exif:GPSStatus";
    static constexpr std::string_view ExifGPSMeasureMode = "exif:GPSMeasureMode";
    static constexpr std::string_view ExifGPSDOP = "exif:GPSDOP";
    static constexpr std::string_view ExifGPSSpeedRef = "exif:GPSSpeedRef";
    static constexpr std::string_view ExifGPSSpeed = "exif:GPSSpeed";
    static constexpr std::string_view ExifGPSTrackRef = "exif:GPSTrackRef";
    static constexpr std::string_view ExifGPSTrack = "exif:GPSTrack";
    static constexpr std::string_view ExifGPSImgDirectionRef = "exif:GPSImgDirectionRef";
    static constexpr std::string_view ExifGPSImgDirection = "exif:GPSImgDirection";
    static constexpr std::string_view ExifGPSMapDatum = "exif:GPSMapDatum";
    static constexpr std::string_view ExifGPSDestLatitude = "exif:GPSDestLatitude";
    static constexpr std::string_view ExifGPSDestLongitude = "exif:GPSDestLongitude";
    static constexpr std::string_view ExifGPSDestBearingRef = "exif:GPSDestBearingRef";
    static constexpr std::string_view ExifGPSDestBearing = "exif:GPSDestBearing";
    static constexpr std::string_view ExifGPSDestDistanceRef = "exif:GPSDestDistanceRef";
    static constexpr std::string_view ExifGPSDestDistance = "exif:GPSDestDistance";
    static constexpr std::string_view ExifGPSProcessingMethod = "exif:GPSProcessingMethod";
    static constexpr std::string_view ExifGPSAreaInformation = "exif:GPSAreaInformation";
    static constexpr std::string_view ExifGPSDifferential = "exif:GPSDifferential";

    /// Additional Exif properties: the qualified name of a property.
    static constexpr std::string_view AuxLens = "aux:Lens";
    static constexpr std::string_view AuxSerialNumber = "aux:SerialNumber";
};

} // namespace Corvane::Rasterloom::Codecs
