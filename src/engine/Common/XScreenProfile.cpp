#include "Common/DynamicLibrary.h"
#include "Common/ScreenProfile.h"

#include <cstdlib>
#include <cstring>
#include <memory>

// Spoken with libxcb, which is loaded when it is there: it tells failures by its results, where the older library ends
// the whole process. The declarations are the stable ones of its binary interface.

namespace ImagingFramework {

namespace {

struct Connection;
struct Setup;
struct Cookie {
    unsigned int Sequence;
};
struct Screen {
    std::uint32_t Root; ///< the first field of many
};
struct ScreenIterator {
    Screen* pData;
    int Remaining;
    int Index;
};
struct AtomReply {
    std::uint8_t ResponseType;
    std::uint8_t Padding;
    std::uint16_t Sequence;
    std::uint32_t Length;
    std::uint32_t Atom;
};
struct PropertyReply;

constexpr std::uint32_t AnyPropertyType = 0;
/// In units of four bytes.
constexpr std::uint32_t LongestProfile = 1U << 22;
constexpr const char* ProfileProperty = "_ICC_PROFILE";

struct FreeReply {
    void operator()(void* pReply) const { std::free(pReply); }
};

class XClient {
public:
    bool Load() {
        return m_library.Find("xcb_connect", m_connect) && m_library.Find("xcb_disconnect", m_disconnect) &&
               m_library.Find("xcb_connection_has_error", m_hasError) && m_library.Find("xcb_get_setup", m_getSetup) &&
               m_library.Find("xcb_setup_roots_iterator", m_roots) &&
               m_library.Find("xcb_intern_atom", m_internAtom) &&
               m_library.Find("xcb_intern_atom_reply", m_internAtomReply) &&
               m_library.Find("xcb_get_property", m_getProperty) &&
               m_library.Find("xcb_get_property_reply", m_getPropertyReply) &&
               m_library.Find("xcb_get_property_value", m_propertyValue) &&
               m_library.Find("xcb_get_property_value_length", m_propertyLength);
    }

    std::vector<std::uint8_t> ReadProfile() {
        // Never null, but with an error where there is no server.
        m_pConnection = m_connect(nullptr, nullptr);
        std::vector<std::uint8_t> bytes;
        if (m_hasError(m_pConnection) == 0) {
            const ScreenIterator screens = m_roots(m_getSetup(m_pConnection));
            if (screens.Remaining > 0) {
                bytes = ReadProperty(screens.pData->Root);
            }
        }
        m_disconnect(m_pConnection);
        return bytes;
    }

private:
    std::vector<std::uint8_t> ReadProperty(std::uint32_t window) {
        const Cookie asked = m_internAtom(m_pConnection, 1, static_cast<std::uint16_t>(std::strlen(ProfileProperty)),
                                          ProfileProperty);
        const std::unique_ptr<AtomReply, FreeReply> atom(m_internAtomReply(m_pConnection, asked, nullptr));
        if (!atom || atom->Atom == 0) {
            return {};
        }
        const Cookie wanted =
            m_getProperty(m_pConnection, 0, window, atom->Atom, AnyPropertyType, 0, LongestProfile);
        const std::unique_ptr<PropertyReply, FreeReply> property(m_getPropertyReply(m_pConnection, wanted, nullptr));
        if (!property) {
            return {};
        }
        const auto* const first = static_cast<const std::uint8_t*>(m_propertyValue(property.get()));
        const int length = m_propertyLength(property.get());
        return length > 0 ? std::vector<std::uint8_t>(first, first + length) : std::vector<std::uint8_t>();
    }

    DynamicLibrary m_library{"libxcb.so.1"};
    Connection* m_pConnection = nullptr;
    Connection* (*m_connect)(const char*, int*) = nullptr;
    void (*m_disconnect)(Connection*) = nullptr;
    int (*m_hasError)(Connection*) = nullptr;
    const Setup* (*m_getSetup)(Connection*) = nullptr;
    ScreenIterator (*m_roots)(const Setup*) = nullptr;
    Cookie (*m_internAtom)(Connection*, std::uint8_t, std::uint16_t, const char*) = nullptr;
    AtomReply* (*m_internAtomReply)(Connection*, Cookie, void**) = nullptr;
    Cookie (*m_getProperty)(Connection*, std::uint8_t, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
                            std::uint32_t) = nullptr;
    PropertyReply* (*m_getPropertyReply)(Connection*, Cookie, void**) = nullptr;
    void* (*m_propertyValue)(const PropertyReply*) = nullptr;
    int (*m_propertyLength)(const PropertyReply*) = nullptr;
};

} // namespace

std::vector<std::uint8_t> ReadXScreenProfile() {
    if (std::getenv("DISPLAY") == nullptr) {
        return {};
    }
    XClient client;
    return client.Load() ? client.ReadProfile() : std::vector<std::uint8_t>();
}

} // namespace ImagingFramework
