#include "Common/SystemProfiles.h"

#include "Common/ColorProfileUtils.h"
#include "Common/LcmsProfile.h"
#include "Common/PixelFormat.h"
#include "ErrorHandling/Exceptions.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace ImagingFramework {

namespace {

namespace fs = std::filesystem;

constexpr const char* StandardDirectory = "/usr/share/color/icc";
constexpr const char* StandardDataDirectories = "/usr/local/share:/usr/share";
constexpr std::string_view SRgbNames[] = {
    "sRGB Color Space Profile.icm",       "sRGB.icc",
    "sRGB.icm",                           "sRGB2014.icc",
    "sRGB_IEC61966-2-1.icc",              "sRGB_IEC61966-2-1_no_black_scaling.icc",
    "sRGB_IEC61966-2-1_black_scaled.icc", "sRGB_v4_ICC_preference.icc",
};

std::string Environment(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// All places where profiles are looked for, whether they exist or not.
std::vector<fs::path> ProfileDirectories() {
    std::vector<fs::path> directories{StandardDirectory};
    std::string list = Environment("XDG_DATA_DIRS");
    list = (list.empty() ? StandardDataDirectories : list) + ":";
    for (std::size_t begin = 0, end; (end = list.find(':', begin)) != std::string::npos; begin = end + 1) {
        if (end > begin) {
            directories.push_back(fs::path(list.substr(begin, end - begin)) / "color/icc");
        }
    }
    fs::path home = Environment("XDG_DATA_HOME");
    if (home.empty() && !Environment("HOME").empty()) {
        home = fs::path(Environment("HOME")) / ".local/share";
    }
    if (!home.empty()) {
        directories.push_back(home / "color/icc");
        directories.push_back(home / "icc");
    }
    return directories;
}

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, Lower, Lower);
}

/// Files of the directory and of those right below it, in an order of their own that does not change.
std::vector<fs::path> ProfilesIn(const fs::path& directory) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::recursive_directory_iterator it(directory, fs::directory_options::skip_permission_denied, error), end;
         !error && it != end; it.increment(error)) {
        if (it.depth() > 0) {
            it.disable_recursion_pending();
        }
        std::error_code ignored;
        if (it->is_regular_file(ignored)) {
            files.push_back(it->path());
        }
    }
    std::ranges::sort(files);
    return files;
}

bool IsRgbProfile(const fs::path& file) {
    try {
        return LcmsProfile(file).GetColorSpace() == static_cast<std::uint32_t>(ColorSpace::Rgb);
    } catch (const Exception&) {
        return false;
    }
}

/// Empty when the system has none.
fs::path FindSRgbProfile() {
    std::vector<fs::path> files;
    for (const fs::path& directory : ProfileDirectories()) {
        std::ranges::copy(ProfilesIn(directory), std::back_inserter(files));
    }
    for (const std::string_view name : SRgbNames) {
        for (const fs::path& file : files) {
            if (EqualsIgnoringCase(file.filename().string(), name) && IsRgbProfile(file)) {
                return file;
            }
        }
    }
    return {};
}

/// The library's own sRGB as a profile of version 2.1, which every reader takes. The same bytes each time.
std::vector<std::uint8_t> MakeSRgbProfile() {
    constexpr std::size_t datePosition = 24;
    constexpr std::array<std::uint8_t, 12> date = {0x07, 0xCE, 0, 2, 0, 9, 0, 6, 0, 49, 0, 0}; // 1998-02-09 06:49
    constexpr cmsUInt32Number version = 0x02100000;
    const LcmsContext context;
    const cmsHPROFILE profile = cmsCreate_sRGBProfileTHR(context.Get());
    if (profile == nullptr) {
        throw MemoryException();
    }
    cmsSetEncodedICCversion(profile, version);
    cmsUInt32Number size = 0;
    std::vector<std::uint8_t> bytes;
    bool isSaved = cmsSaveProfileToMem(profile, nullptr, &size) != 0;
    if (isSaved) {
        bytes.resize(size);
        isSaved = cmsSaveProfileToMem(profile, bytes.data(), &size) != 0;
    }
    cmsCloseProfile(profile);
    if (!isSaved) {
        throw MemoryException();
    }
    std::ranges::copy(date, bytes.begin() + datePosition);
    return bytes;
}

} // namespace

fs::path GetSystemProfileDirectory() {
    const std::vector<fs::path> directories = ProfileDirectories();
    const auto found = std::ranges::find_if(directories, [](const fs::path& directory) {
        std::error_code ignored;
        return fs::is_directory(directory, ignored);
    });
    return found != directories.end() ? *found : directories.front();
}

namespace {

/// The profile of those systems that have none, as one temporary file of the process.
class GeneratedSRgbProfile {
public:
    std::shared_ptr<const ProfileFile> Get() {
        if (auto present = GetPresent()) {
            return present;
        }
        const std::lock_guard making(m_makingMutex);
        if (auto present = GetPresent()) {
            return present; // another thread was faster
        }
        auto made = CreateProfileByData(MakeSRgbProfile());
        const std::lock_guard guard(m_mutex);
        return m_profile = std::move(made);
    }

private:
    /// Null when there is none yet, and when whoever tidies the folder of temporary files has taken it away.
    std::shared_ptr<const ProfileFile> GetPresent() {
        std::shared_ptr<const ProfileFile> profile;
        {
            const std::lock_guard guard(m_mutex);
            profile = m_profile;
        }
        std::error_code ignored;
        return profile && fs::exists(profile->GetPath(), ignored) ? profile : nullptr;
    }

    std::mutex m_makingMutex;
    std::mutex m_mutex; ///< of the pointer alone: many threads may load pictures that ask for it
    std::shared_ptr<const ProfileFile> m_profile;
};

} // namespace

std::shared_ptr<const ProfileFile> GetSRgbProfile() {
    const fs::path found = FindSRgbProfile();
    if (!found.empty()) {
        return std::make_shared<const ProfileFile>(found);
    }
    static GeneratedSRgbProfile s_profile;
    return s_profile.Get();
}

} // namespace ImagingFramework
