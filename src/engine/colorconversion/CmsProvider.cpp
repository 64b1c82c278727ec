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

} // namespace

std::uint32_t CmsProvider::GetDeviceClass(const std::string& profileName) {
    return LcmsProfile(profileName).GetDeviceClass();
}

std::uint32_t CmsProvider::GetProfileColorSpace(const std::string& profileName) {
    return LcmsProfile(profileName).GetColorSpace();
}

void CmsProvider::GetProfileName(const std::string& profileName, std::string* pstrName) {
    Require(pstrName, "pstrName") = LcmsProfile(profileName).GetName();
}

void CmsProvider::GetProfileDescription(const std::string& profileName, std::string* pstrDescription) {
    Require(pstrDescription, "pstrDescription") = LcmsProfile(profileName).GetDescription();
}

void CmsProvider::GetProfileInfo(const std::string& profileName, std::string* pstrInfo) {
    Require(pstrInfo, "pstrInfo") = LcmsProfile(profileName).GetInfo();
}

void CmsProvider::GetProfileManufacturer(const std::string& profileName, std::string* pstrManufacturer) {
    Require(pstrManufacturer, "pstrManufacturer") = LcmsProfile(profileName).GetManufacturer();
}

void CmsProvider::GetProfileModel(const std::string& profileName, std::string* pstrModel) {
    Require(pstrModel, "pstrModel") = LcmsProfile(profileName).GetModel();
}

void CmsProvider::GetProfileCopyright(const std::string& profileName, std::string* pstrCopyright) {
    Require(pstrCopyright, "pstrCopyright") = LcmsProfile(profileName).GetCopyright();
}

void CmsProvider::GetColorProfilesDirectory(std::string* pstrPath) {
    Require(pstrPath, "pstrPath") = GetSystemProfileDirectory().string();
}

void CmsProvider::GetSRgbFilePath(std::string* pstrPath) {
    Require(pstrPath, "pstrPath") = GetSRgbProfile()->GetPath().string();
}

std::unique_ptr<CmsProvider> CreateCmsProvider(ColorManagementEngine engine) {
    if (engine == ColorManagementEngine::AdobeCmm) {
        return std::make_unique<IcmProvider>();
    }
    return std::make_unique<LcmsProvider>();
}

} // namespace ImagingFramework
