#pragma once

#include "Common/PixelFormat.h"
#include "colorconversion/ConversionTypes.h"

#include <cstdint>
#include <memory>
#include <string>

namespace ImagingFramework {

/// Turns runs of pixels from one ICC profile to another. Profiles are files, named in UTF-8; a null name drops the
/// profile.
class CmsProvider {
public:
    virtual void SetSrcColorProfile(const std::string* pProfileName) = 0;
    /// The profile of the device that is simulated: with one, the transform is a proof.
    virtual void SetTargetColorProfile(const std::string* pProfileName) = 0;
    virtual void SetDestColorProfile(const std::string* pProfileName) = 0;
    virtual void SetColorTransformIntent(ColorTransformIntent intent) = 0;
    /// Fails with `ArgumentNullPointerException` on null, `ArgumentOutOfRangeException` on a zero count,
    /// `NotInitializedException` when it is not ready, `CmTransformException` when the engine refuses.
    virtual void TransformScanline(const std::uint8_t* pSrcBuffer, PixelFormat sourceFormat, std::uint8_t* pDestBuffer,
                                   PixelFormat destinationFormat, std::uint32_t pixelCount) = 0;
    /// True when both the source and the destination profile are open.
    virtual bool IsReady() const = 0;
    virtual ~CmsProvider() = default;

    /// The colour space that a profile's header names, as a code whose RGB, gray and CMYK values are those of
    /// `ColorSpace`. Fails with `CmOpenProfileException` for a file that is no profile,
    /// `UnsupportedPixelFormatException` for a space that has no code.
    static std::uint32_t GetProfileColorSpace(const std::string& profileName);
};

/// A new provider of `engine`. Null when this build has none for it.
std::unique_ptr<CmsProvider> CreateCmsProvider(ColorManagementEngine engine);

} // namespace ImagingFramework
