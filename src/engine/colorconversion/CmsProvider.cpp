#include "colorconversion/CmsProvider.h"

#include "Common/LcmsProfile.h"
#include "Common/SystemProfiles.h"
#include "ErrorHandling/Exceptions.h"
#include "colorconversion/IcmProvider.h"
#include "colorconversion/LcmsProvider.h"

namespace ImagingFramework {

namespace {

std::string& Require(std::string* pResult, const char* name) {
    if (pResult == nullptr) {
        throw ArgumentNullPointerException(name);
    }
    return *pResult;
}

/// Puts what `question` answers into the result, which is checked before the file is opened.
void Answer(std::string* pResult, const char* name, const std::string& profileName,
            std::string (LcmsProfile::*question)() const) {
    std::string& result = Require(pResult, name);
    result = (LcmsProfile(profileName).*question)();
}

} // namespace

void CmsProvider::CheckScanline(const std::uint8_t* pSrcBuffer, const std::uint8_t* pDestBuffer, std::uint32_t pixelCount) {
    if (pSrcBuffer == nullptr || pDestBuffer == nullptr) {
        throw ArgumentNullPointerException(pSrcBuffer == nullptr ? "pSrcBuffer" : "pDestBuffer");
    }
    if (pixelCount == 0) {
        throw ArgumentOutOfRangeException("uintPixelCount");
    }
}

std::uint32_t CmsProvider::GetDeviceClass(const std::string& profileName) {
    return LcmsProfile(profileName).GetDeviceClass();
}

std::uint32_t CmsProvider::GetProfileColorSpace(const std::string& profileName) {
    return LcmsProfile(profileName).GetColorSpace();
}

void CmsProvider::GetProfileName(const std::string& profileName, std::string* pstrName) {
    Answer(pstrName, "pstrName", profileName, &LcmsProfile::GetName);
}

void CmsProvider::GetProfileDescription(const std::string& profileName, std::string* pstrDescription) {
    Answer(pstrDescription, "pstrDescription", profileName, &LcmsProfile::GetDescription);
}

void CmsProvider::GetProfileInfo(const std::string& profileName, std::string* pstrInfo) {
    Answer(pstrInfo, "pstrInfo", profileName, &LcmsProfile::GetInfo);
}

void CmsProvider::GetProfileManufacturer(const std::string& profileName, std::string* pstrManufacturer) {
    Answer(pstrManufacturer, "pstrManufacturer", profileName, &LcmsProfile::GetManufacturer);
}

void CmsProvider::GetProfileModel(const std::string& profileName, std::string* pstrModel) {
    Answer(pstrModel, "pstrModel", profileName, &LcmsProfile::GetModel);
}

void CmsProvider::GetProfileCopyright(const std::string& profileName, std::string* pstrCopyright) {
    Answer(pstrCopyright, "pstrCopyright", profileName, &LcmsProfile::GetCopyright);
}

void CmsProvider::GetColorProfilesDirectory(std::string* pstrPath) {
    std::string& path = Require(pstrPath, "pstrPath");
    path = GetSystemProfileDirectory().string();
}

void CmsProvider::GetSRgbFilePath(std::string* pstrPath) {
    std::string& path = Require(pstrPath, "pstrPath");
    path = GetSRgbProfile()->GetPath().string();
}

std::unique_ptr<CmsProvider> CreateCmsProvider(ColorManagementEngine engine) {
    if (engine == ColorManagementEngine::AdobeCmm) {
        return std::make_unique<IcmProvider>();
    }
    return std::make_unique<LcmsProvider>();
}

} // namespace ImagingFramework
