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
    /// These three fail with `CmOpenProfileException` for a file that is no profile.
    virtual void SetSrcColorProfile(const std::string* pProfileName) = 0;
    /// The profile of the device that is simulated: with one, the transform is a proof.
    virtual void SetTargetColorProfile(const std::string* pProfileName) = 0;
    virtual void SetDestColorProfile(const std::string* pProfileName) = 0;
    virtual void SetColorTransformIntent(ColorTransformIntent intent) = 0;
    /// Alpha goes over unchanged; a destination with alpha gets an opaque one where the source has none. Source and
    /// destination do not overlap. Fails with `ArgumentNullPointerException` on null, `ArgumentOutOfRangeException` on
    /// a zero count, `NotInitializedException` when it is not ready, `UnsupportedPixelFormatException`,
    /// `CmTransformException` when the engine refuses.
    virtual void TransformScanline(const std::uint8_t* pSrcBuffer, PixelFormat sourceFormat, std::uint8_t* pDestBuffer,
                                   PixelFormat destinationFormat, std::uint32_t pixelCount) = 0;
    /// True for what `TransformScanline` takes: the six working formats, which are those with alpha, and maybe more.
    virtual bool IsFormatSupported(PixelFormat format) const = 0;
    /// True when both the source and the destination profile are open.
    virtual bool IsReady() const = 0;
    virtual ~CmsProvider() = default;

    // What a profile tells of itself. All fail with `CmOpenProfileException` for a file that is no profile; those with
    // a result by pointer fail with `ArgumentNullPointerException` (its name) on null. Texts are UTF-8, and empty where
    // the profile has none.

    /// The four characters of the profile's class, first character in the top byte.
    static std::uint32_t GetDeviceClass(const std::string& profileName);
    /// The colour space of the profile's device, as a code whose RGB, gray and CMYK values are those of `ColorSpace`.
    /// Fails with `UnsupportedPixelFormatException` for a space that has no code.
    static std::uint32_t GetProfileColorSpace(const std::string& profileName);
    /// Model and manufacturer of the device, else the description.
    static void GetProfileName(const std::string& profileName, std::string* pstrName);
    static void GetProfileDescription(const std::string& profileName, std::string* pstrDescription);
    /// Description and copyright, each on a line of its own.
    static void GetProfileInfo(const std::string& profileName, std::string* pstrInfo);
    static void GetProfileManufacturer(const std::string& profileName, std::string* pstrManufacturer);
    static void GetProfileModel(const std::string& profileName, std::string* pstrModel);
    static void GetProfileCopyright(const std::string& profileName, std::string* pstrCopyright);

    /// The system's folder of profiles. Fails with `ArgumentNullPointerException` ("pstrPath").
    static void GetColorProfilesDirectory(std::string* pstrPath);
    /// The system's sRGB profile, or one that the library made for this process. Fails as `GetColorProfilesDirectory`.
    static void GetSRgbFilePath(std::string* pstrPath);

protected:
    /// The first checks of `TransformScanline`: its pointers and the count.
    static void CheckScanline(const std::uint8_t* pSrcBuffer, const std::uint8_t* pDestBuffer, std::uint32_t pixelCount);
};

/// A new provider of `engine`, without profiles. Never null.
std::unique_ptr<CmsProvider> CreateCmsProvider(ColorManagementEngine engine);

} // namespace ImagingFramework
