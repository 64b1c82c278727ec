#pragma once

#include "Common/LcmsContext.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

namespace ImagingFramework {

/// An ICC profile as Little CMS has it open, with its questions. The file is read whole at the start and not kept open.
class LcmsProfile {
public:
    /// The first two fail with `CmOpenProfileException` for a file that cannot be read or is no profile.
    explicit LcmsProfile(const std::filesystem::path& fileName);
    LcmsProfile(std::shared_ptr<LcmsContext> context, const std::filesystem::path& fileName);
    /// Fails with `CmOpenProfileException` when the bytes are no profile.
    LcmsProfile(std::shared_ptr<LcmsContext> context, std::span<const std::uint8_t> bytes);
    LcmsProfile(const LcmsProfile&) = delete;
    LcmsProfile& operator=(const LcmsProfile&) = delete;
    ~LcmsProfile();

    cmsHPROFILE Get() const noexcept { return m_hProfile; }

    /// The colour space of the device as a code whose RGB, gray and CMYK values are those of `ColorSpace`. Fails with
    /// `UnsupportedPixelFormatException` for a space that has no code.
    std::uint32_t GetColorSpace() const;
    /// The four characters of the profile's class.
    std::uint32_t GetDeviceClass() const noexcept { return m_uintDeviceClass; }

    /// Texts are UTF-8, in English where there are several languages; empty where the profile has none, and all of them
    /// when one is damaged so that it claims more languages than there is room for.

    /// Model and manufacturer of the device, else the description.
    std::string GetName() const;
    std::string GetDescription() const;
    std::string GetManufacturer() const;
    std::string GetModel() const;
    std::string GetCopyright() const;
    /// Description and copyright, each on a line of its own.
    std::string GetInfo() const;

private:
    void Open(std::span<const std::uint8_t> bytes);
    std::string GetText(cmsInfoType type) const;

    std::shared_ptr<LcmsContext> m_pContext;
    cmsHPROFILE m_hProfile = nullptr;
    std::uint32_t m_uintDeviceClass = 0;
    std::uint32_t m_uintColorSpace = 0;
    bool m_bHasTexts = false;
};

} // namespace ImagingFramework
