#include "Common/LcmsProfile.h"

#include "Common/ColorProfileUtils.h"
#include "Common/ProfileCost.h"
#include "ErrorHandling/Exceptions.h"

#include <utility>
#include <vector>

namespace ImagingFramework {

namespace {

struct SpaceCode {
    cmsColorSpaceSignature Signature;
    std::uint32_t Code;
};

constexpr SpaceCode SpaceCodes[] = {
    {cmsSigRgbData, 0x01000000},  {cmsSigGrayData, 0x12000000}, {cmsSigCmykData, 0x14000000},
    {cmsSigLabData, 0x18000000},  {cmsSigXYZData, 0x21000000},  {cmsSigLuvData, 0x22000000},
    {cmsSigYCbCrData, 0x24000000}, {cmsSigYxyData, 0x28000000},  {cmsSigHsvData, 0x41000000},
    {cmsSigHlsData, 0x42000000},  {cmsSigCmyData, 0x44000000},
};

constexpr char32_t Replacement = 0xFFFD;

bool IsSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xE000; }

void AppendUtf8(std::string& text, char32_t point) {
    const auto tail = [&](int shift) { text.push_back(static_cast<char>(0x80 | ((point >> shift) & 0x3F))); };
    if (point < 0x80) {
        text.push_back(static_cast<char>(point));
    } else if (point < 0x800) {
        text.push_back(static_cast<char>(0xC0 | (point >> 6)));
        tail(0);
    } else if (point < 0x10000) {
        text.push_back(static_cast<char>(0xE0 | (point >> 12)));
        tail(6);
        tail(0);
    } else {
        text.push_back(static_cast<char>(0xF0 | (point >> 18)));
        tail(12);
        tail(6);
        tail(0);
    }
}

/// The library keeps one unit of UTF-16 in each wide character, of whatever size that is.
std::string ToUtf8(std::span<const wchar_t> units) {
    std::string text;
    for (std::size_t i = 0; i < units.size() && units[i] != 0; ++i) {
        auto point = static_cast<char32_t>(units[i]);
        const char32_t next = i + 1 < units.size() ? static_cast<char32_t>(units[i + 1]) : 0;
        if (point >= 0xD800 && point < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            point = 0x10000 + ((point - 0xD800) << 10) + (next - 0xDC00);
            ++i;
        }
        AppendUtf8(text, IsSurrogate(point) || point > 0x10FFFF ? Replacement : point);
    }
    return text;
}

} // namespace

LcmsProfile::LcmsProfile(const std::filesystem::path& fileName)
    : LcmsProfile(std::make_shared<LcmsContext>(), fileName) {}

LcmsProfile::LcmsProfile(std::shared_ptr<LcmsContext> context, const std::filesystem::path& fileName)
    : m_pContext(std::move(context)) {
    try {
        if (GetProfileDataSize(&fileName) > LcmsContext::MemoryLimit) {
            throw CmOpenProfileException();
        }
        Open(GetProfileData(&fileName));
    } catch (const ApplicationException&) {
        throw CmOpenProfileException(fileName.string());
    } catch (const IoException&) {
        throw CmOpenProfileException(fileName.string());
    }
}

LcmsProfile::LcmsProfile(std::shared_ptr<LcmsContext> context, std::span<const std::uint8_t> bytes)
    : m_pContext(std::move(context)) {
    Open(bytes);
}

void LcmsProfile::Open(std::span<const std::uint8_t> bytes) {
    if (!IsProfileCostBounded(bytes)) {
        throw CmOpenProfileException();
    }
    m_hProfile = cmsOpenProfileFromMemTHR(m_pContext->Get(), bytes.data(), static_cast<cmsUInt32Number>(bytes.size()));
    if (m_hProfile == nullptr) {
        throw CmOpenProfileException();
    }
}

LcmsProfile::~LcmsProfile() { cmsCloseProfile(m_hProfile); }

std::uint32_t LcmsProfile::GetColorSpace() const {
    const cmsColorSpaceSignature signature = cmsGetColorSpace(m_hProfile);
    for (const SpaceCode& space : SpaceCodes) {
        if (space.Signature == signature) {
            return space.Code;
        }
    }
    throw UnsupportedPixelFormatException();
}

std::uint32_t LcmsProfile::GetDeviceClass() const { return static_cast<std::uint32_t>(cmsGetDeviceClass(m_hProfile)); }

std::string LcmsProfile::GetText(cmsInfoType type) const {
    const cmsUInt32Number size = cmsGetProfileInfo(m_hProfile, type, "en", "US", nullptr, 0);
    std::vector<wchar_t> units(size / sizeof(wchar_t) + 1);
    cmsGetProfileInfo(m_hProfile, type, "en", "US", units.data(),
                      static_cast<cmsUInt32Number>(units.size() * sizeof(wchar_t)));
    return ToUtf8(units);
}

std::string LcmsProfile::GetDescription() const { return GetText(cmsInfoDescription); }
std::string LcmsProfile::GetManufacturer() const { return GetText(cmsInfoManufacturer); }
std::string LcmsProfile::GetModel() const { return GetText(cmsInfoModel); }
std::string LcmsProfile::GetCopyright() const { return GetText(cmsInfoCopyright); }

std::string LcmsProfile::GetName() const {
    const std::string model = GetModel();
    const std::string manufacturer = GetManufacturer();
    if (model.empty() && manufacturer.empty()) {
        return GetDescription();
    }
    if (model.empty() || manufacturer.empty() || model == manufacturer) {
        return model.empty() ? manufacturer : model;
    }
    return model + " - " + manufacturer;
}

std::string LcmsProfile::GetInfo() const {
    std::string info;
    for (const std::string& line : {GetDescription(), GetCopyright()}) {
        if (!line.empty()) {
            info += line + "\r\n";
        }
    }
    return info;
}

} // namespace ImagingFramework
