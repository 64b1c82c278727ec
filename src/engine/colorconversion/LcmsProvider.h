#pragma once

#include "Common/LcmsProfile.h"
#include "MemoryManagement/MemPtr.h"
#include "colorconversion/CmsProvider.h"

#include <memory>
#include <string>

namespace ImagingFramework {

/// Colour management by Little CMS. Each provider has a context of its own, so providers may be at work on several
/// threads at once, each on one. The transform is made for the first run and kept as long as formats, profiles and
/// intent stay.
class LcmsProvider final : public CmsProvider {
public:
    LcmsProvider() = default;
    ~LcmsProvider() override;

    void SetSrcColorProfile(const std::string* pProfileName) override;
    void SetTargetColorProfile(const std::string* pProfileName) override;
    void SetDestColorProfile(const std::string* pProfileName) override;
    /// Any value is stored; one without a name fails with `CmTransformException` when it is used.
    void SetColorTransformIntent(ColorTransformIntent intent) override;
    void TransformScanline(const std::uint8_t* pSrcBuffer, PixelFormat sourceFormat, std::uint8_t* pDestBuffer,
                           PixelFormat destinationFormat, std::uint32_t pixelCount) override;
    /// Formats of whole channels in RGB, gray or CMYK, with a plain alpha or none.
    bool IsFormatSupported(PixelFormat format) const override;
    bool IsReady() const override { return m_pSource != nullptr && m_pDestination != nullptr; }

    /// Little CMS's name for the colour channels of `format`. Fails with `UnsupportedPixelFormatException`.
    static cmsUInt32Number TransformPixelFormatToLcmsPixelFormat(PixelFormat format);
    /// What Little CMS said of the first error since the last success; empty when it said nothing.
    std::string GetErrorText() const { return m_pContext ? m_pContext->GetErrorText() : std::string(); }

private:
    void OpenProfile(std::unique_ptr<LcmsProfile>& profile, const std::string* pProfileName);
    void DropTransform() noexcept;
    void CreateColorTransformHandle(cmsUInt32Number inputFormat, cmsUInt32Number outputFormat);
    const std::uint8_t* PrepareTransformationScanline(const std::uint8_t* pSrcBuffer, PixelFormat sourceFormat,
                                                      std::uint32_t pixelCount);
    void FillUpDestinationScanline(const std::uint8_t* pSrcBuffer, PixelFormat sourceFormat, std::uint8_t* pDestBuffer,
                                   PixelFormat destinationFormat, std::uint32_t pixelCount) const;

    std::shared_ptr<LcmsContext> m_pContext; ///< made with the first profile
    std::unique_ptr<LcmsProfile> m_pSource;
    std::unique_ptr<LcmsProfile> m_pDestination;
    std::unique_ptr<LcmsProfile> m_pTarget;
    cmsHTRANSFORM m_hTransform = nullptr;
    ColorTransformIntent m_enIntent = ColorTransformIntent::Perceptual;
    cmsUInt32Number m_uintInputFormat = 0;
    cmsUInt32Number m_uintOutputFormat = 0;
    std::uint64_t m_uintCapacity = 0;      ///< pixels that both work buffers hold
    MemPtr<std::uint8_t> m_sourceColors;   ///< one run without its alpha, for sources that have one
    MemPtr<std::uint8_t> m_convertedColors; ///< one run, for destinations with alpha
};

} // namespace ImagingFramework
