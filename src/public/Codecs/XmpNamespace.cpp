#include <Corvane/Rasterloom/Codecs/XmpNamespace.h>

#include "CallEngine.h"
#include "metadata/Xmp/XMPNamespace.h"

#include <Corvane/Rasterloom/Host/Errors.h>

#include <memory>
#include <mutex>
#include <vector>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

/// The public objects of the engine's namespaces, each at the place that its own has there.
class XmpNamespaceList {
public:
    static const XmpNamespace* Get(const engine::XMPNamespace& ns) {
        const std::lock_guard guard(s_pNamespaceMutex);
        Refresh();
        return s_pNamespaces[ns.GetIndex()].get();
    }
    static const XmpNamespace* Get(std::int32_t index) {
        const std::lock_guard guard(s_pNamespaceMutex);
        Refresh();
        const bool isInside = index >= 0 && static_cast<std::size_t>(index) < s_pNamespaces.size();
        return isInside ? s_pNamespaces[static_cast<std::size_t>(index)].get() : nullptr;
    }
    static std::size_t GetCount() {
        const std::lock_guard guard(s_pNamespaceMutex);
        Refresh();
        return s_pNamespaces.size();
    }

private:
    static void Refresh() {
        for (const engine::XMPNamespace* const ns : engine::XMPNamespace::GetRegistered(s_pNamespaces.size())) {
            s_pNamespaces.push_back(std::unique_ptr<XmpNamespace>(new XmpNamespace(ns)));
        }
    }

    static inline std::mutex s_pNamespaceMutex;
    static inline std::vector<std::unique_ptr<XmpNamespace>> s_pNamespaces;
};

const XmpNamespace* XmpNamespace::_FromEngine(const engine::XMPNamespace* ns) {
    return XmpNamespaceList::Get(*ns);
}

const XmpNamespace* XmpNamespace::AddNamespace(std::string_view uri, std::string_view prefix) {
    const engine::XMPNamespace* const ns =
        CallEngine([&] { return engine::XMPNamespace::RegisterExactly(uri, prefix); });
    if (ns == nullptr) {
        throw Host::ArgumentException("The namespace has another prefix, or the prefix belongs to another namespace.",
                                      "prefix");
    }
    return _FromEngine(ns);
}

const XmpNamespace* XmpNamespace::GetNamespaceByUri(std::string_view uri) {
    const engine::XMPNamespace* const ns = engine::XMPNamespace::FindByUri(uri);
    return ns != nullptr ? _FromEngine(ns) : nullptr;
}

const XmpNamespace* XmpNamespace::GetNamespaceByPrefix(std::string_view prefix) {
    const engine::XMPNamespace* const ns = engine::XMPNamespace::FindByPrefix(prefix);
    return ns != nullptr ? _FromEngine(ns) : nullptr;
}

const XmpNamespace* XmpNamespace::GetNamespaceByIndex(std::int32_t index) {
    const XmpNamespace* const ns = XmpNamespaceList::Get(index);
    if (ns == nullptr) {
        throw Host::ArgumentOutOfRangeException("index");
    }
    return ns;
}

std::int32_t XmpNamespace::get_NamespaceCount() {
    return static_cast<std::int32_t>(XmpNamespaceList::GetCount());
}

const std::string& XmpNamespace::get_Uri() const noexcept {
    return m_pNamespace->GetURI();
}

const std::string& XmpNamespace::get_Prefix() const noexcept {
    return m_pNamespace->GetPrefix();
}

} // namespace Corvane::Rasterloom::Codecs
