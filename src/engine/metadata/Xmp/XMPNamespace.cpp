#include "metadata/Xmp/XMPNamespace.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Xmp/XmpText.h"

#include <deque>
#include <mutex>
#include <unordered_map>

namespace ImagingFramework {

namespace {

constexpr std::string_view DefaultPrefix = "defpref";
/// Of URIs, prefixes and what it takes to keep them.
constexpr std::size_t MaxRegistrySize = std::size_t{16} << 20;
constexpr std::size_t SizeOfEntry = 256;

class Registry {
public:
    static Registry& Instance() {
        static Registry s_instance;
        return s_instance;
    }

    const XMPNamespace& Register(std::string_view uri, std::string_view prefix) {
        const std::lock_guard guard(m_mutex);
        const XMPNamespace* const known = Find(m_byUri, uri);
        return known != nullptr ? *known : AddFromOutside(uri, FreePrefix(prefix));
    }
    const XMPNamespace* RegisterExactly(std::string_view uri, std::string_view prefix) {
        const std::lock_guard guard(m_mutex);
        if (const XMPNamespace* const known = Find(m_byUri, uri)) {
            return known->GetPrefix() == prefix ? known : nullptr;
        }
        return m_byPrefix.contains(prefix) ? nullptr : &AddFromOutside(uri, prefix);
    }
    const XMPNamespace* FindByUri(std::string_view uri) {
        const std::lock_guard guard(m_mutex);
        return Find(m_byUri, uri);
    }
    const XMPNamespace* FindByPrefix(std::string_view prefix) {
        const std::lock_guard guard(m_mutex);
        return Find(m_byPrefix, prefix);
    }
    std::vector<const XMPNamespace*> GetRegistered(std::size_t first) {
        const std::lock_guard guard(m_mutex);
        std::vector<const XMPNamespace*> namespaces;
        for (; first < m_namespaces.size(); ++first) {
            namespaces.push_back(&m_namespaces[first]);
        }
        return namespaces;
    }

private:
    using Index = std::unordered_map<std::string_view, const XMPNamespace*>;

    Registry() {
#define RASTERLOOM_XMP_NAMESPACE(Prefix, Uri) Add(Uri, Prefix);
#include "metadata/Xmp/XmpNamespaces.def"
#undef RASTERLOOM_XMP_NAMESPACE
    }

    static const XMPNamespace* Find(const Index& index, std::string_view key) {
        const auto found = index.find(key);
        return found != index.end() ? found->second : nullptr;
    }
    const XMPNamespace& AddFromOutside(std::string_view uri, std::string_view prefix) {
        const std::size_t size = uri.size() + prefix.size() + SizeOfEntry;
        if (size > MaxRegistrySize - m_uintSize) {
            throw UnexpectedException("There are too many XMP namespaces.");
        }
        m_uintSize += size;
        return Add(uri, prefix);
    }
    const XMPNamespace& Add(std::string_view uri, std::string_view prefix) {
        const XMPNamespace& added =
            m_namespaces.emplace_back(std::string(uri), std::string(prefix), m_namespaces.size());
        m_byUri.emplace(added.GetURI(), &added);
        m_byPrefix.emplace(added.GetPrefix(), &added);
        return added;
    }
    std::string FreePrefix(std::string_view prefix) {
        std::string free(prefix);
        while (m_byPrefix.contains(free)) {
            free = std::string(prefix) + "_" + std::to_string(++m_takenPrefixes[std::string(prefix)]) + "_";
        }
        return free;
    }

    std::mutex m_mutex;
    std::deque<XMPNamespace> m_namespaces; ///< never moves what it holds
    Index m_byUri;
    Index m_byPrefix;
    std::unordered_map<std::string, std::uint32_t> m_takenPrefixes;
    std::size_t m_uintSize = 0;
};

void RequireWritable(std::string_view uri, std::string_view prefix) {
    // XML reserves the name and the URI of its own declarations.
    if (uri.empty() || !IsXmlText(uri) || uri.find('\n') != uri.npos || uri == "http://www.w3.org/2000/xmlns/") {
        throw ArgumentException("uri");
    }
    if (!IsXmlName(prefix) || prefix == "xmlns") {
        throw ArgumentException("prefix");
    }
}

} // namespace

const XMPNamespace& XMPNamespace::Register(std::string_view uri, std::string_view prefix) {
    if (prefix.empty()) {
        prefix = DefaultPrefix;
    }
    RequireWritable(uri, prefix);
    return Registry::Instance().Register(uri, prefix);
}

const XMPNamespace* XMPNamespace::RegisterExactly(std::string_view uri, std::string_view prefix) {
    RequireWritable(uri, prefix);
    return Registry::Instance().RegisterExactly(uri, prefix);
}

const XMPNamespace* XMPNamespace::FindByUri(std::string_view uri) {
    return Registry::Instance().FindByUri(uri);
}

const XMPNamespace* XMPNamespace::FindByPrefix(std::string_view prefix) {
    return Registry::Instance().FindByPrefix(prefix);
}

std::vector<const XMPNamespace*> XMPNamespace::GetRegistered(std::size_t first) {
    return Registry::Instance().GetRegistered(first);
}

const XMPNamespace& XMPNamespace::Xml() {
    static const XMPNamespace& s_xml = *FindByPrefix("xml");
    return s_xml;
}

const XMPNamespace& XMPNamespace::Rdf() {
    static const XMPNamespace& s_rdf = *FindByPrefix("rdf");
    return s_rdf;
}

} // namespace ImagingFramework
