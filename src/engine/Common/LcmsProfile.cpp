#include "Common/LcmsProfile.h"

#include "Common/ColorProfileUtils.h"
#include "Common/ProfileCost.h"
#include "ErrorHandling/Exceptions.h"

#include <utility>
#include <vector>

namespace ImagingFramework {

namespace {

// Positions in the header. Signatures are read there as the numbers that they are: the library's own type for them does
// not hold every number.
constexpr std::size_t DeviceClassPosition = 12;
constexpr std::size_t ColorSpacePosition = 16;

struct SpaceCode {
    std::uint32_t Signature;
    std::uint32_t Code;
};

constexpr SpaceCode SpaceCodes[] = {
    {cmsSigRgbData, 0x01000000},  {cmsSigGrayData, 0x12000000}, {cmsSigCmykData, 0x14000000},
    {cmsSigLabData, 0x18000000},  {cmsSigXYZData, 0x21000000},  {cmsSigLuvData, 0x22000000},
    {cmsSigYCbCrData, 0x24000000}, {cmsSigYxyData, 0x28000000},  {cmsSigHsvData, 0x41000000},
    {cmsSigHlsData, 0x42000000},  {cmsSigCmyData, 0x44000000},
};

std::uint32_t ReadSignature(std::span<const std::uint8_t> bytes, std::size_t position) {
    std::uint32_t code = 0;
    for (const std::uint8_t byte : bytes.subspan(position, 4)) {
        code = code << 8 | byte;
    }
    return code;
}

constexpr char32_t Replacement = 0xFFFD;

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

/// The library gives a code point in each wide character.
std::string ToUtf8(std::span<const wchar_t> points) {
    static_assert(sizeof(wchar_t) == sizeof(char32_t));
    std::string text;
    for (const wchar_t wide : points) {
        const auto point = static_cast<char32_t>(wide);
        if (point == 0) {
            break;
        }
        AppendUtf8(text, (point >= 0xD800 && point < 0xE000) || point > 0x10FFFF ? Replacement : point);
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
    m_uintDeviceClass = ReadSignature(bytes, DeviceClassPosition);
    m_uintColorSpace = ReadSignature(bytes, ColorSpacePosition);
    m_bHasTexts = HasRoomForTexts(bytes);
}

LcmsProfile::~LcmsProfile() { cmsCloseProfile(m_hProfile); }

std::uint32_t LcmsProfile::GetColorSpace() const {
    for (const SpaceCode& space : SpaceCodes) {
        if (space.Signature == m_uintColorSpace) {
            return space.Code;
        }
    }
    throw UnsupportedPixelFormatException();
}

std::string LcmsProfile::GetText(cmsInfoType type) const {
    if (!m_bHasTexts) {
        return {};
    }
    const cmsUInt32Number size = cmsGetProfileInfo(m_hProfile, type, "en", "US", nullptr, 0);
    std::vector<wchar_t> text(size / sizeof(wchar_t) + 1);
    cmsGetProfileInfo(m_hProfile, type, "en", "US", text.data(),
                      static_cast<cmsUInt32Number>(text.size() * sizeof(wchar_t)));
    return ToUtf8(text);
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
