// Reads the input as a colour profile: what it tells, and conversions from it, to it and through it as a proof. A failure
// must be one of the library's own, and the pixels of the source must stay.

#include "Common/BitmapData.h"
#include "Common/ColorProfileUtils.h"
#include "Common/LcmsProfile.h"
#include "Common/SystemProfiles.h"
#include "ErrorHandling/Exceptions.h"
#include "colorconversion/ColorSpaceManager.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

using namespace ImagingFramework;

namespace {

using Profile = ColorSpaceManager::ProfileHandle;

constexpr std::uint32_t Width = 5;

void Convert(PixelFormat from, const Profile& source, PixelFormat to, const Profile& destination,
             const Profile& target = nullptr) {
    BitmapData raster(Width, 2, from);
    std::memset(raster.GetPixelsRef(), 0x5A, std::size_t{raster.GetStride()} * 2);
    raster.SetProfileFile(source);
    const BitmapData before(raster);
    ColorSpaceManager manager;
    std::unique_ptr<BitmapData> result;
    try {
        if (PixelFormatIsRgb(to)) {
            manager.SetRgbColorProfileFile(destination);
        } else if (PixelFormatIsCmyk(to)) {
            manager.SetCmykColorProfileFile(destination);
        } else {
            manager.SetGrayColorProfileFile(destination);
        }
        manager.SetTargetColorProfileFile(target);
        manager.TransformBitmapData(raster, to, result);
    } catch (const Exception&) {
        if (result != nullptr) {
            std::abort();
        }
    }
    if (std::memcmp(raster.GetPixelsRef(), before.GetPixelsRef(), std::size_t{raster.GetStride()} * 2) != 0) {
        std::abort();
    }
}

void Ask(const LcmsProfile& profile) {
    profile.GetDeviceClass();
    profile.GetName();
    profile.GetInfo();
    profile.GetColorSpace();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    static const Profile srgb = GetSRgbProfile();
    const Profile profile = CreateProfileByData({pData, size});
    try {
        Ask(LcmsProfile(profile->GetPath()));
        ValidateColorProfileConsistency(profile->GetPath());
    } catch (const Exception&) {
        return 0; // no conversion goes through what does not open
    }
    Convert(PixelFormat::Format24bppRgb, profile, PixelFormat::Format32bppArgb, srgb);
    Convert(PixelFormat::Format80bppAcmyk, profile, PixelFormat::Format24bppRgb, srgb);
    Convert(PixelFormat::Format8bppGrayScale, profile, PixelFormat::Format24bppRgb, srgb);
    Convert(PixelFormat::Format64bppArgb, srgb, PixelFormat::Format48bppRgb, profile);
    Convert(PixelFormat::Format24bppRgb, srgb, PixelFormat::Format32bppCmyk, profile);
    Convert(PixelFormat::Format24bppRgb, srgb, PixelFormat::Format16bppGrayScale, profile);
    Convert(PixelFormat::Format24bppRgb, srgb, PixelFormat::Format24bppRgb, srgb, profile);
    return 0;
}
