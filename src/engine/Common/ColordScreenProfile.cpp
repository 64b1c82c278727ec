#include "Common/DynamicLibrary.h"
#include "Common/ScreenProfile.h"

#include <cstdlib>
#include <string>

// colord is asked over the system bus, with the bus client of libsystemd, which is loaded when it is there and starts no
// threads. The declarations are the stable ones of its binary interface.

namespace ImagingFramework {

namespace {

struct Bus;
struct Message;

constexpr const char* Service = "org.freedesktop.ColorManager";
constexpr const char* ManagerPath = "/org/freedesktop/ColorManager";
constexpr const char* DeviceInterface = "org.freedesktop.ColorManager.Device";
constexpr const char* ProfileInterface = "org.freedesktop.ColorManager.Profile";
constexpr std::uint64_t AnswerMicroseconds = 2'000'000;

class ColordClient {
public:
    ColordClient() {
        const bool isLoaded = m_library.Find("sd_bus_open_system", m_open) && m_library.Find("sd_bus_flush_close_unref", m_close) &&
                              m_library.Find("sd_bus_set_method_call_timeout", m_setTimeout) &&
                              m_library.Find("sd_bus_call_method", m_call) &&
                              m_library.Find("sd_bus_get_property", m_getProperty) &&
                              m_library.Find("sd_bus_get_property_string", m_getString) &&
                              m_library.Find("sd_bus_message_read_strv", m_readTexts) &&
                              m_library.Find("sd_bus_message_unref", m_unref);
        if (isLoaded && m_open(&m_pBus) >= 0) {
            m_setTimeout(m_pBus, AnswerMicroseconds);
        } else {
            m_pBus = nullptr;
        }
    }
    ColordClient(const ColordClient&) = delete;
    ColordClient& operator=(const ColordClient&) = delete;
    ~ColordClient() {
        if (m_pBus != nullptr) {
            m_close(m_pBus);
        }
    }

    std::filesystem::path FindDisplayProfile() {
        for (const std::string& device : Displays()) {
            // The first profile of a device is the one in use.
            const std::vector<std::string> profiles = ProfilesOf(device);
            const std::filesystem::path file = profiles.empty() ? std::filesystem::path() : FileOf(profiles.front());
            if (!file.empty()) {
                return file;
            }
        }
        return {};
    }

private:
    std::vector<std::string> Displays() {
        Message* reply = nullptr;
        if (m_pBus == nullptr ||
            m_call(m_pBus, Service, ManagerPath, Service, "GetDevicesByKind", nullptr, &reply, "s", "display") < 0) {
            return {};
        }
        return TakeTexts(reply);
    }

    std::vector<std::string> ProfilesOf(const std::string& device) {
        Message* reply = nullptr;
        if (m_getProperty(m_pBus, Service, device.c_str(), DeviceInterface, "Profiles", nullptr, &reply, "ao") < 0) {
            return {};
        }
        return TakeTexts(reply);
    }

    std::filesystem::path FileOf(const std::string& profile) {
        char* name = nullptr;
        if (m_getString(m_pBus, Service, profile.c_str(), ProfileInterface, "Filename", nullptr, &name) < 0) {
            return {};
        }
        const std::filesystem::path file = name;
        std::free(name);
        return file;
    }

    /// The list of object paths that `reply` holds, which ends here.
    std::vector<std::string> TakeTexts(Message* reply) {
        std::vector<std::string> texts;
        char** list = nullptr;
        if (m_readTexts(reply, &list) >= 0 && list != nullptr) {
            for (char** text = list; *text != nullptr; ++text) {
                texts.emplace_back(*text);
                std::free(*text);
            }
            std::free(list);
        }
        m_unref(reply);
        return texts;
    }

    DynamicLibrary m_library{"libsystemd.so.0"};
    Bus* m_pBus = nullptr;
    int (*m_open)(Bus**) = nullptr;
    Bus* (*m_close)(Bus*) = nullptr;
    int (*m_setTimeout)(Bus*, std::uint64_t) = nullptr;
    int (*m_call)(Bus*, const char*, const char*, const char*, const char*, void*, Message**, const char*, ...) = nullptr;
    int (*m_getProperty)(Bus*, const char*, const char*, const char*, const char*, void*, Message**, const char*) = nullptr;
    int (*m_getString)(Bus*, const char*, const char*, const char*, const char*, void*, char**) = nullptr;
    int (*m_readTexts)(Message*, char***) = nullptr;
    Message* (*m_unref)(Message*) = nullptr;
};

} // namespace

std::filesystem::path FindColordScreenProfile() { return ColordClient().FindDisplayProfile(); }

} // namespace ImagingFramework
