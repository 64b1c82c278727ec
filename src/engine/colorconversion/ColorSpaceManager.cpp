#include "colorconversion/ColorSpaceManager.h"

#include "Common/Numeric.h"
#include "colorconversion/FixedPalettes.h"

#include <algorithm>
#include <cstring>

namespace ImagingFramework {

namespace {

void CheckUnitRange(const char* name, double value) {
    if (!(value >= 0.0 && value <= 1.0)) {
        throw ArgumentOutOfRangeException(name, value, 0.0, 1.0);
    }
}

bool IsInSpace(const std::string& profile, ColorSpace space) {
    try {
        return CmsProvider::GetProfileColorSpace(profile) == static_cast<std::uint32_t>(space);
    } catch (const UnsupportedPixelFormatException&) {
        return false; // a space that no pixel format has
    }
}

void VerifyThatProfileMatchesColorspace(const std::string* pProfile, ColorSpace space) {
    if (pProfile != nullptr && !IsInSpace(*pProfile, space)) {
        throw CmUnappropriateProfileException();
    }
}

ColorSpaceManager::ProfileHandle ToHandle(const std::string* pProfileName) {
    return pProfileName != nullptr ? std::make_shared<const ProfileFile>(*pProfileName) : nullptr;
}

/// The name of a profile file for those who take a pointer to one.
class NameOf {
public:
    explicit NameOf(const ColorSpaceManager::ProfileHandle& profile)
        : m_strName(profile ? profile->GetPath().string() : std::string()), m_pName(profile ? &m_strName : nullptr) {}
    NameOf(const NameOf&) = delete;
    NameOf& operator=(const NameOf&) = delete;
    operator const std::string*() const { return m_pName; } // NOLINT(google-explicit-constructor)

private:
    std::string m_strName;
    const std::string* m_pName;
};

/// The format without alpha in which a single colour is converted.
PixelFormat ColorFormat(ColorSpace space) {
    switch (space) {
    case ColorSpace::Rgb:
        return PixelFormat::Format48bppRgb;
    case ColorSpace::GrayScale:
        return PixelFormat::Format16bppGrayScale;
    case ColorSpace::Cmyk:
        return PixelFormat::Format64bppCmyk;
    default:
        throw UnsupportedPixelFormatException();
    }
}

} // namespace

// --- Settings

void ColorSpaceManager::SetProfile(ProfileHandle& held, ProfileHandle profile, ColorSpace space) {
    held.reset();
    VerifyThatProfileMatchesColorspace(NameOf(profile), space);
    held = std::move(profile);
}

void ColorSpaceManager::SetRgbColorProfile(const std::string* pProfileName) {
    SetRgbColorProfileFile(ToHandle(pProfileName));
}

void ColorSpaceManager::SetGrayColorProfile(const std::string* pProfileName) {
    SetGrayColorProfileFile(ToHandle(pProfileName));
}

void ColorSpaceManager::SetCmykColorProfile(const std::string* pProfileName) {
    SetCmykColorProfileFile(ToHandle(pProfileName));
}

void ColorSpaceManager::SetTargetColorProfile(const std::string* pProfileName) {
    SetTargetColorProfileFile(ToHandle(pProfileName));
}

void ColorSpaceManager::SetRgbColorProfileFile(ProfileHandle profile) {
    SetProfile(m_rgbProfile, std::move(profile), ColorSpace::Rgb);
}

void ColorSpaceManager::SetGrayColorProfileFile(ProfileHandle profile) {
    SetProfile(m_grayProfile, std::move(profile), ColorSpace::GrayScale);
}

void ColorSpaceManager::SetCmykColorProfileFile(ProfileHandle profile) {
    SetProfile(m_cmykProfile, std::move(profile), ColorSpace::Cmyk);
}

void ColorSpaceManager::SetTargetColorProfileFile(ProfileHandle profile) { m_targetProfile = std::move(profile); }

void ColorSpaceManager::SetDitheringIntensity(double intensity) {
    CheckUnitRange("intensity", intensity);
    m_ditheringIntensity = intensity;
}

void ColorSpaceManager::SetConvertAlpha(double alpha) {
    CheckUnitRange("alpha", alpha);
    m_convertAlpha = alpha;
}

// --- Static mappings

void ColorSpaceManager::FillPalette(ColorMap& colorMap, ColorMapType type, bool withAlpha) {
    FillFixedPalette(colorMap, type, withAlpha);
}

PixelFormat ColorSpaceManager::GetInteractionPixelFormat(PixelFormat format) {
    const bool isKnown = std::ranges::count(AllPixelFormats(), format) != 0;
    // No link takes the alpha out of 16-bit channels.
    if (!isKnown || format == PixelFormat::Format64bppPArgb) {
        throw UnsupportedPixelFormatException();
    }
    return PixelFormatAddAlpha(PixelFormatDiscardAlpha(format));
}

PixelFormat ColorSpaceManager::GetExtendedPixelFormat(PixelFormat format) {
    switch (format) {
    case PixelFormat::Format32bppArgb:
        return PixelFormat::Format64bppArgb;
    case PixelFormat::Format16bppAGrayScale:
        return PixelFormat::Format32bppAGrayScale;
    case PixelFormat::Format40bppAcmyk:
        return PixelFormat::Format80bppAcmyk;
    default:
        throw UnsupportedPixelFormatException();
    }
}

PixelFormat ColorSpaceManager::GetSimplePixelFormat(PixelFormat format) {
    switch (format) {
    case PixelFormat::Format64bppArgb:
        return PixelFormat::Format32bppArgb;
    case PixelFormat::Format32bppAGrayScale:
        return PixelFormat::Format16bppAGrayScale;
    case PixelFormat::Format80bppAcmyk:
        return PixelFormat::Format40bppAcmyk;
    default:
        throw UnsupportedPixelFormatException();
    }
}

// --- The chain

ChainLinkParameters ColorSpaceManager::LinkParameters(PixelFormat sourceFormat, PixelFormat destinationFormat) const {
    ChainLinkParameters parameters;
    parameters.PixelCount = m_uintPixelCount;
    parameters.SourceFormat = sourceFormat;
    parameters.DestinationFormat = destinationFormat;
    parameters.Alpha = static_cast<std::uint16_t>(std::clamp(TruncateToInt32(m_convertAlpha * 65535.0), 0, 65535));
    return parameters;
}

const ColorSpaceManager::ProfileHandle& ColorSpaceManager::DestinationProfile(PixelFormat destinationFormat) const {
    switch (PixelFormatColorSpace(destinationFormat)) {
    case ColorSpace::GrayScale:
        return m_grayProfile;
    case ColorSpace::Cmyk:
        return m_cmykProfile;
    default:
        return m_rgbProfile;
    }
}

/// The provider for the colour space step. It is not ready where a profile is missing on either side, when the formula
/// of the link is what is wanted.
std::unique_ptr<CmsProvider> ColorSpaceManager::CreateProvider(PixelFormat sourceFormat,
                                                               PixelFormat destinationFormat) {
    const ProfileHandle& destinationProfile = DestinationProfile(destinationFormat);
    const std::string* const pSource = m_sourceProfile ? &*m_sourceProfile : nullptr;
    const NameOf destination(destinationProfile);
    VerifyThatProfileMatchesColorspace(pSource, PixelFormatColorSpace(sourceFormat));
    VerifyThatProfileMatchesColorspace(destination, PixelFormatColorSpace(destinationFormat));
    m_resultProfile = m_sourceProfile ? destinationProfile : nullptr;
    std::unique_ptr<CmsProvider> provider = CreateCmsProvider(m_engine);
    provider->SetSrcColorProfile(pSource);
    provider->SetDestColorProfile(destination);
    provider->SetTargetColorProfile(NameOf(m_targetProfile));
    provider->SetColorTransformIntent(m_intent);
    return provider;
}

void ColorSpaceManager::CreateTransformChain(PixelFormat sourceFormat, PixelFormat destinationFormat,
                                             std::unique_ptr<ColorTransformChain>* ppTransformChain) {
    if (ppTransformChain == nullptr) {
        throw ArgumentNullPointerException("ppTransformChain");
    }
    auto chain = std::make_unique<ColorTransformChain>();
    const PixelFormat sourceWorking = GetInteractionPixelFormat(sourceFormat);
    const PixelFormat destinationWorking = GetInteractionPixelFormat(destinationFormat);
    m_resultProfile.reset();
    if (sourceFormat == destinationFormat && m_engine == ColorManagementEngine::None) {
        chain->AddEqualChainLink(LinkParameters(sourceFormat, destinationFormat));
        *ppTransformChain = std::move(chain);
        return;
    }
    // The colour space changes at the depth of the source, and the depth after it.
    PixelFormat middle = destinationWorking;
    if (PixelFormatIsExtended(sourceFormat) && !PixelFormatIsExtended(destinationFormat)) {
        middle = GetExtendedPixelFormat(destinationWorking);
    } else if (!PixelFormatIsExtended(sourceFormat) && PixelFormatIsExtended(destinationFormat)) {
        middle = GetSimplePixelFormat(destinationWorking);
    }
    if (sourceFormat != sourceWorking) {
        ChainLinkParameters parameters = LinkParameters(sourceFormat, sourceWorking);
        parameters.SourceColorMap = &m_sourceColorMap;
        chain->AddChainLink(std::move(parameters));
    }
    ChainLinkParameters spaceStep = LinkParameters(sourceWorking, middle);
    if (m_engine != ColorManagementEngine::None) {
        spaceStep.Provider = CreateProvider(sourceFormat, destinationFormat);
    }
    // Made even when the format stays: the provider rides on it.
    chain->AddChainLink(std::move(spaceStep));
    if (middle != destinationWorking) {
        ChainLinkParameters parameters = LinkParameters(middle, destinationWorking);
        parameters.QuantizationTo8bBitsUsed = m_bitsUsed;
        parameters.QuantizationTo8bOffset = m_offset;
        parameters.QuantizationTo8bScale = m_scale;
        chain->AddChainLink(std::move(parameters));
    }
    if (destinationFormat != destinationWorking) {
        ChainLinkParameters parameters = LinkParameters(destinationWorking, destinationFormat);
        parameters.DestinationColorMap = &m_destinationColorMap;
        parameters.Dithering = m_ditheringType;
        parameters.DitheringIntensity =
            static_cast<std::uint32_t>(std::min(100, TruncateToInt32(m_ditheringIntensity * 100.0)));
        parameters.PaletteAlphaThreshold = m_paletteAlphaThreshold;
        parameters.UsePaletteAlphaThreshold = m_bUsePaletteAlphaThreshold;
        chain->AddChainLink(std::move(parameters));
    }
    *ppTransformChain = std::move(chain);
}

// --- Background

void ColorSpaceManager::InitializeAlphaBlend(PixelFormat sourceFormat, PixelFormat destinationFormat,
                                             std::uint32_t pixelCount) {
    m_pExpandChain.reset();
    m_blend = AlphaBlend(sourceFormat, m_bBlendWithBackground ? destinationFormat : sourceFormat, m_backgroundColor);
    if (!m_blend.IsActive()) {
        return;
    }
    m_blendScratch.AllocateCount(CheckedStride(pixelCount, m_blend.GetBlendedFormat(), 1));
    if (m_blend.GetInputFormat() != sourceFormat) {
        auto chain = std::make_unique<ColorTransformChain>();
        chain->AddChainLink(LinkParameters(sourceFormat, m_blend.GetInputFormat()));
        m_expandScratch.AllocateCount(CheckedStride(pixelCount, m_blend.GetInputFormat(), 1));
        m_pExpandChain = std::move(chain);
    }
}

/// The scanline as it enters the chain.
const std::uint8_t* ColorSpaceManager::BlendScanline(const std::uint8_t* pSrcScanline) {
    if (!m_blend.IsActive()) {
        return pSrcScanline;
    }
    if (m_pExpandChain) {
        m_pExpandChain->ApplyScanlineTransform(pSrcScanline, m_expandScratch.Get());
        pSrcScanline = m_expandScratch.Get();
    }
    m_blend.Apply(pSrcScanline, m_blendScratch.Get(), m_uintPixelCount);
    return m_blendScratch.Get();
}

// --- Scanlines and colours

/// What a raster and a stream of scanlines have in common. The chain is built last, so a failure leaves none.
void ColorSpaceManager::BeginConversion(std::uint32_t pixelCount, PixelFormat sourceFormat,
                                        PixelFormat destinationFormat, const ColorMap* pSourceColorMap,
                                        const std::string* pProfileName) {
    m_pChain.reset();
    m_uintPixelCount = pixelCount;
    // A format that no chain takes is refused before anything is made for it.
    GetInteractionPixelFormat(sourceFormat);
    GetInteractionPixelFormat(destinationFormat);
    InitializeAlphaBlend(sourceFormat, destinationFormat, pixelCount);
    if (PixelFormatIsIndexed(sourceFormat)) {
        m_sourceColorMap = *pSourceColorMap;
    } else {
        m_sourceColorMap.Empty();
    }
    m_sourceProfile = pProfileName != nullptr ? ProfileName(*pProfileName) : ProfileName();
    CreateTransformChain(m_blend.GetBlendedFormat(), destinationFormat, &m_pChain);
}

void ColorSpaceManager::InitializePerScanlineHandling(std::uint32_t pixelCount, PixelFormat sourceFormat,
                                                      const ColorMap* sourceColorMap, const std::string* profileName,
                                                      PixelFormat destinationFormat) {
    if (pixelCount == 0) {
        throw ArgumentException("uintPixelCount", "the value must be more than 0");
    }
    if (PixelFormatIsIndexed(sourceFormat) && (sourceColorMap == nullptr || sourceColorMap->IsEmpty())) {
        throw ArgumentException("pSrcColorMap", "source palette must be presented");
    }
    if (PixelFormatIsIndexed(destinationFormat)) {
        if (m_colorMapType != ColorMapType::Custom) {
            throw ArgumentException("color map type", "color map must be custom");
        }
        if (m_customColorMap.IsEmpty()) {
            throw ArgumentException("custom color map", "custom color map must be presented");
        }
        m_destinationColorMap = m_customColorMap;
    }
    BeginConversion(pixelCount, sourceFormat, destinationFormat, sourceColorMap, profileName);
}

void ColorSpaceManager::TransformScanline(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) {
    if (!m_pChain) {
        throw NotInitializedException("ColorSpaceManager");
    }
    if (pSrcScanline == nullptr) {
        throw ArgumentNullPointerException("pSrcScanline");
    }
    if (pDestScanline == nullptr) {
        throw ArgumentNullPointerException("pDestScanline");
    }
    m_pChain->ApplyScanlineTransform(BlendScanline(pSrcScanline), pDestScanline);
}

void ColorSpaceManager::TransformScanline(std::uint32_t pixelCount, const std::uint8_t* pSrcScanline,
                                          const ColorMap* sourceColorMap, PixelFormat sourceFormat,
                                          const std::string* profileName, std::uint8_t* pDestScanline,
                                          PixelFormat destinationFormat) {
    InitializePerScanlineHandling(pixelCount, sourceFormat, sourceColorMap, profileName, destinationFormat);
    TransformScanline(pSrcScanline, pDestScanline);
}

void ColorSpaceManager::TransformColor(const Channels& channels, ColorSpace sourceColorSpace,
                                       const std::string* profileName, Channels& result,
                                       ColorSpace destinationColorSpace) {
    const PixelFormat sourceFormat = ColorFormat(sourceColorSpace);
    const PixelFormat destinationFormat = ColorFormat(destinationColorSpace);
    // A colour is stored as a pixel of words is, alpha behind the colours.
    std::array<std::uint8_t, sizeof(Channels)> source{};
    std::array<std::uint8_t, sizeof(Channels)> destination{};
    std::memcpy(source.data(), channels.data(), sizeof(Channels));
    TransformScanline(1, source.data(), nullptr, sourceFormat, profileName, destination.data(), destinationFormat);
    const std::uint16_t alpha = channels[PixelFormatColorChannelCount(sourceFormat)];
    Channels converted;
    std::memcpy(converted.data(), destination.data(), sizeof(Channels));
    converted[PixelFormatColorChannelCount(destinationFormat)] = alpha;
    result = converted;
}

} // namespace ImagingFramework
