#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace ImagingFramework {
class XMPNamespace;
}

namespace Corvane::Rasterloom::Codecs {

/// A namespace of XMP properties: a URI, and the prefix that stands for it in qualified names such as "dc:title". There
/// is one object for each URI in a process, which lives as long as the process, so namespaces are compared by address.
///
/// The standard namespaces are known from the beginning, and a namespace that a packet declares is known from then on.
/// All calls may come from several threads.
class RASTERLOOM_API XmpNamespace {
public:
    XmpNamespace(const XmpNamespace&) = delete;
    XmpNamespace& operator=(const XmpNamespace&) = delete;

    /// Makes a namespace known, or gives the known one. The prefix is given without a colon. Fails with
    /// `Host::ArgumentException` when the URI has another prefix, when the prefix is another URI's, and for texts that
    /// XML cannot hold there, and with `UnexpectedException` when the process knows too many.
    static const XmpNamespace* AddNamespace(std::string_view uri, std::string_view prefix);
    /// The namespace of a URI. This and the next give null for one that is not known.
    static const XmpNamespace* GetNamespaceByUri(std::string_view uri);
    /// The namespace of a prefix without its colon.
    static const XmpNamespace* GetNamespaceByPrefix(std::string_view prefix);
    /// In the order in which they became known. Fails with `Host::ArgumentOutOfRangeException` ("index").
    static const XmpNamespace* GetNamespaceByIndex(std::int32_t index);
    /// How many are known to the process.
    static std::int32_t get_NamespaceCount();

    /// As it stands in packets.
    const std::string& get_Uri() const noexcept;
    /// Without a colon.
    const std::string& get_Prefix() const noexcept;

    /// Internal: the object for the engine's, which must not be null.
    static const XmpNamespace* _FromEngine(const ImagingFramework::XMPNamespace* ns);
    const ImagingFramework::XMPNamespace& get__InternalNamespace() const noexcept { return *m_pNamespace; }

private:
    friend class XmpNamespaceList;
    explicit XmpNamespace(const ImagingFramework::XMPNamespace* ns) noexcept : m_pNamespace(ns) {}

    const ImagingFramework::XMPNamespace* m_pNamespace;
};

} // namespace Corvane::Rasterloom::Codecs
