#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ImagingFramework {

/// A namespace of XMP properties. There is one object per URI in a process, which lives as long as that, so namespaces
/// are compared by address. The prefix belongs to one URI alone.
class XMPNamespace {
public:
    XMPNamespace(std::string uri, std::string prefix, std::size_t index)
        : m_strUri(std::move(uri)), m_strPrefix(std::move(prefix)), m_uintIndex(index) {}
    XMPNamespace(const XMPNamespace&) = delete;
    XMPNamespace& operator=(const XMPNamespace&) = delete;

    const std::string& GetURI() const noexcept { return m_strUri; }
    /// Without a colon.
    const std::string& GetPrefix() const noexcept { return m_strPrefix; }
    /// Its place among the registered ones, in the order in which they became known.
    std::size_t GetIndex() const noexcept { return m_uintIndex; }

    /// The namespace of the URI, which becomes known if it is not. A prefix that belongs to another URI is told from it
    /// by a number; without a prefix it is "defpref".
    ///
    /// Fails with `ArgumentException` ("uri" or "prefix") for what XML cannot hold, and with `UnexpectedException` when
    /// the process knows too many namespaces: what packets of strangers bring along is never forgotten, so it is
    /// bounded.
    static const XMPNamespace& Register(std::string_view uri, std::string_view prefix);
    /// The same for exactly this prefix; null when the URI has another one or the prefix is another URI's.
    static const XMPNamespace* RegisterExactly(std::string_view uri, std::string_view prefix);
    /// Null when it is not known.
    static const XMPNamespace* FindByUri(std::string_view uri);
    static const XMPNamespace* FindByPrefix(std::string_view prefix);
    /// Those from the index `first` on.
    static std::vector<const XMPNamespace*> GetRegistered(std::size_t first = 0);

    /// The namespaces of XML and RDF themselves, whose names mean something of their own.
    static const XMPNamespace& Xml();
    static const XMPNamespace& Rdf();

private:
    std::string m_strUri;
    std::string m_strPrefix;
    std::size_t m_uintIndex;
};

} // namespace ImagingFramework
