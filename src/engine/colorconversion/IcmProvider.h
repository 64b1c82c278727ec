#pragma once

#include "colorconversion/CmsProvider.h"

namespace ImagingFramework {

/// Stands for the platform's own colour management with the Adobe module. This platform has neither, so a provider that
/// has its profiles fails with `CmAdobeModuleLoadException` where it would convert; one that has not leaves the
/// conversion to the library's formulas, as every provider does.
class IcmProvider final : public CmsProvider {
public:
    /// Whether the module can be had: it cannot.
    static bool IsAdobeCmmAccessible() noexcept { return false; }

    void SetSrcColorProfile(const std::string* pProfileName) override { m_bSource = Open(pProfileName); }
    void SetTargetColorProfile(const std::string* pProfileName) override { Open(pProfileName); }
    void SetDestColorProfile(const std::string* pProfileName) override { m_bDestination = Open(pProfileName); }
    void SetColorTransformIntent(ColorTransformIntent) override {}
    void TransformScanline(const std::uint8_t* pSrcBuffer, PixelFormat sourceFormat, std::uint8_t* pDestBuffer,
                           PixelFormat destinationFormat, std::uint32_t pixelCount) override;
    bool IsFormatSupported(PixelFormat format) const override;
    bool IsReady() const override { return m_bSource && m_bDestination; }

private:
    static bool Open(const std::string* pProfileName);

    bool m_bSource = false;
    bool m_bDestination = false;
};

} // namespace ImagingFramework
