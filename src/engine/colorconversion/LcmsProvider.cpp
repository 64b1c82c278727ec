#include "colorconversion/LcmsProvider.h"

#include "ErrorHandling/Exceptions.h"
#include "colorconversion/SampleAccess.h"
#include "colorconversion/VectorKernels.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

struct LcmsIntent {
    cmsUInt32Number Intent;
    cmsUInt32Number Flags;
};

LcmsIntent ToLcms(ColorTransformIntent intent) {
    switch (intent) {
    case ColorTransformIntent::Saturation:
        return {INTENT_SATURATION, 0};
    case ColorTransformIntent::RelativeColorimetric:
        return {INTENT_RELATIVE_COLORIMETRIC, 0};
    case ColorTransformIntent::Perceptual:
        return {INTENT_PERCEPTUAL, 0};
    case ColorTransformIntent::AbsoluteColorimetric:
        return {INTENT_ABSOLUTE_COLORIMETRIC, 0};
    case ColorTransformIntent::RelativeColorimetricBpc:
        return {INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_BLACKPOINTCOMPENSATION};
    default:
        throw CmTransformException();
    }
}

/// Each channel a byte or a word, and nothing beside them in the pixel but a plain alpha.
bool IsPlain(PixelFormat format) {
    if (!PixelFormatIsWholeChannel(format) || HasFlag(format, PixelFormatFlag::Premultiplied)) {
        return false;
    }
    return PixelFormatSize(format) == PixelFormatChannelCount(format) * (PixelFormatIsExtended(format) ? 16U : 8U);
}

std::uint32_t PixelBytes(PixelFormat format) { return PixelFormatSize(format) / 8; }

std::uint32_t ColorBytes(PixelFormat format) {
    return PixelFormatColorChannelCount(format) * (PixelFormatIsExtended(format) ? 2U : 1U);
}

/// What the work buffers have to hold for a pixel: four channels of 16 bits.
constexpr std::uint64_t LargestColorBytes = 8;

template <class Source, class Destination>
void CopyAlpha(const std::uint8_t* source, std::size_t sourceChannels, std::uint8_t* destination,
               std::size_t destinationChannels, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto alpha = LoadSample<Source>(source, i * sourceChannels + sourceChannels - 1);
        constexpr int shift = 8 * (static_cast<int>(sizeof(Destination)) - static_cast<int>(sizeof(Source)));
        const auto value = static_cast<Destination>(shift >= 0 ? alpha << std::max(shift, 0) : alpha >> std::max(-shift, 0));
        StoreSample(destination, i * destinationChannels + destinationChannels - 1, value);
    }
}

} // namespace

LcmsProvider::~LcmsProvider() { DropTransform(); }

void LcmsProvider::DropTransform() noexcept {
    if (m_hTransform != nullptr) {
        cmsDeleteTransform(m_hTransform);
        m_hTransform = nullptr;
    }
}

void LcmsProvider::OpenProfile(std::unique_ptr<LcmsProfile>& profile, const std::string* pProfileName) {
    DropTransform();
    profile.reset();
    if (pProfileName == nullptr) {
        return;
    }
    if (!m_pContext) {
        m_pContext = std::make_shared<LcmsContext>();
    }
    profile = std::make_unique<LcmsProfile>(m_pContext, *pProfileName);
}

void LcmsProvider::SetSrcColorProfile(const std::string* pProfileName) { OpenProfile(m_pSource, pProfileName); }
void LcmsProvider::SetTargetColorProfile(const std::string* pProfileName) { OpenProfile(m_pTarget, pProfileName); }
void LcmsProvider::SetDestColorProfile(const std::string* pProfileName) { OpenProfile(m_pDestination, pProfileName); }

void LcmsProvider::SetColorTransformIntent(ColorTransformIntent intent) {
    DropTransform();
    m_enIntent = intent;
}

bool LcmsProvider::IsFormatSupported(PixelFormat format) const {
    return IsPlain(format) && (PixelFormatIsRgb(format) || PixelFormatIsGrayscale(format) || PixelFormatIsCmyk(format));
}

cmsUInt32Number LcmsProvider::TransformPixelFormatToLcmsPixelFormat(PixelFormat format) {
    if (!IsPlain(format)) {
        throw UnsupportedPixelFormatException();
    }
    const bool isExtended = PixelFormatIsExtended(format);
    switch (PixelFormatColorSpace(format)) {
    case ColorSpace::Rgb:
        return isExtended ? TYPE_BGR_16 : TYPE_BGR_8;
    case ColorSpace::GrayScale:
        return isExtended ? TYPE_GRAY_16 : TYPE_GRAY_8;
    case ColorSpace::Cmyk:
        return isExtended ? TYPE_KYMC_16 : TYPE_KYMC_8;
    default:
        throw UnsupportedPixelFormatException();
    }
}

void LcmsProvider::CreateColorTransformHandle(cmsUInt32Number inputFormat, cmsUInt32Number outputFormat) {
    if (m_hTransform != nullptr && m_uintInputFormat == inputFormat && m_uintOutputFormat == outputFormat) {
        return;
    }
    if (!IsReady()) {
        throw NotInitializedException("color management provider");
    }
    DropTransform();
    const LcmsIntent intent = ToLcms(m_enIntent);
    // The one-pixel cache costs more than it saves, and changes no result.
    const cmsUInt32Number flags = intent.Flags | cmsFLAGS_NOCACHE;
    m_pContext->ClearError();
    m_hTransform =
        m_pTarget != nullptr
            ? cmsCreateProofingTransformTHR(m_pContext->Get(), m_pSource->Get(), inputFormat, m_pDestination->Get(),
                                            outputFormat, m_pTarget->Get(), intent.Intent, intent.Intent,
                                            flags | cmsFLAGS_SOFTPROOFING)
            : cmsCreateTransformTHR(m_pContext->Get(), m_pSource->Get(), inputFormat, m_pDestination->Get(),
                                    outputFormat, intent.Intent, flags);
    if (m_hTransform == nullptr) {
        throw CmTransformException();
    }
    m_pContext->ClearError(); // a transform that was made all the same makes up for it
    m_uintInputFormat = inputFormat;
    m_uintOutputFormat = outputFormat;
}

/// The colours alone; the source itself where it has no alpha.
const std::uint8_t* LcmsProvider::PrepareTransformationScanline(const std::uint8_t* pSrcBuffer,
                                                                PixelFormat sourceFormat, std::uint32_t pixelCount) {
    if (!PixelFormatHasAlpha(sourceFormat)) {
        return pSrcBuffer;
    }
    VectorKernels::RepackPixels(pSrcBuffer, PixelBytes(sourceFormat), m_sourceColors.Get(), ColorBytes(sourceFormat), 0,
                                pixelCount);
    return m_sourceColors.Get();
}

/// Puts the converted colours and the alpha of the source together.
void LcmsProvider::FillUpDestinationScanline(const std::uint8_t* pSrcBuffer, PixelFormat sourceFormat,
                                             std::uint8_t* pDestBuffer, PixelFormat destinationFormat,
                                             std::uint32_t pixelCount) const {
    constexpr std::uint16_t opaque = 0xFFFF;
    VectorKernels::RepackPixels(m_convertedColors.Get(), ColorBytes(destinationFormat), pDestBuffer,
                                PixelBytes(destinationFormat), opaque, pixelCount);
    if (!PixelFormatHasAlpha(sourceFormat)) {
        return;
    }
    const bool isWideSource = PixelFormatIsExtended(sourceFormat);
    const bool isWideDestination = PixelFormatIsExtended(destinationFormat);
    const auto copy = isWideSource
                          ? (isWideDestination ? CopyAlpha<std::uint16_t, std::uint16_t> : CopyAlpha<std::uint16_t, std::uint8_t>)
                          : (isWideDestination ? CopyAlpha<std::uint8_t, std::uint16_t> : CopyAlpha<std::uint8_t, std::uint8_t>);
    copy(pSrcBuffer, PixelFormatChannelCount(sourceFormat), pDestBuffer, PixelFormatChannelCount(destinationFormat),
         pixelCount);
}

void LcmsProvider::TransformScanline(const std::uint8_t* pSrcBuffer, PixelFormat sourceFormat,
                                     std::uint8_t* pDestBuffer, PixelFormat destinationFormat,
                                     std::uint32_t pixelCount) {
    CheckScanline(pSrcBuffer, pDestBuffer, pixelCount);
    CreateColorTransformHandle(TransformPixelFormatToLcmsPixelFormat(sourceFormat),
                               TransformPixelFormatToLcmsPixelFormat(destinationFormat));
    const bool hasAlpha = PixelFormatHasAlpha(destinationFormat);
    if ((hasAlpha || PixelFormatHasAlpha(sourceFormat)) && m_uintCapacity < pixelCount) {
        m_sourceColors.AllocateCount(pixelCount * LargestColorBytes);
        m_convertedColors.AllocateCount(pixelCount * LargestColorBytes);
        m_uintCapacity = pixelCount;
    }
    const std::uint8_t* const colors = PrepareTransformationScanline(pSrcBuffer, sourceFormat, pixelCount);
    cmsDoTransform(m_hTransform, colors, hasAlpha ? m_convertedColors.Get() : pDestBuffer, pixelCount);
    if (hasAlpha) {
        FillUpDestinationScanline(pSrcBuffer, sourceFormat, pDestBuffer, destinationFormat, pixelCount);
    }
    if (!m_pContext->GetErrorText().empty()) {
        throw CmException(Exception::DefaultHresult, m_pContext->GetErrorText());
    }
}

} // namespace ImagingFramework
