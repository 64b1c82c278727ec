#include <Corvane/Rasterloom/Codecs/XmpNode.h>

#include "CallEngine.h"
#include "ObjectGuard.h"
#include "metadata/Xmp/XmpText.h"

#include <Corvane/Rasterloom/Exceptions.h>

#include <algorithm>
#include <new>

namespace Corvane::Rasterloom::Codecs {

namespace {

/// The prefix and the rest of a name.
struct NameParts {
    explicit NameParts(std::string_view name) : Colon(name.find(':')) {
        Prefix = name.substr(0, HasColon() ? Colon : 0);
        Local = HasColon() ? name.substr(Colon + 1) : name;
    }
    bool HasColon() const { return Colon != std::string_view::npos; }

    std::size_t Colon;
    std::string_view Prefix;
    std::string_view Local;
};

std::string Checked(std::string_view name) {
    XmpNode::CheckName(name);
    return std::string(name);
}

std::string CheckedIn(const XmpNamespace* ns, std::string_view name) {
    return Checked(XmpNode::GetQualifiedName(ns, name));
}

} // namespace

XmpNode::XmpNode(XmpNodeType nodeType) : m_enNodeType(nodeType) {}

XmpNode::XmpNode(XmpNodeType nodeType, std::string_view name)
    : m_enNodeType(nodeType), m_strName(Checked(name)), m_pNamespace(GetNamespaceByQualifiedName(name)) {}

XmpNode::XmpNode(XmpNodeType nodeType, const XmpNamespace* ns, std::string_view name)
    : m_enNodeType(nodeType), m_strName(CheckedIn(ns, name)), m_pNamespace(ns) {}

XmpNode::~XmpNode() = default;

void XmpNode::CheckNotDisposed() const {
    if (get__IsDisposed()) {
        throw Host::ObjectDisposedException("XmpNode");
    }
}

XmpNodeEnumerator XmpNode::GetEnumerator() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return XmpNodeEnumerator(_GetNodes());
}

void XmpNode::_Release(std::vector<std::shared_ptr<XmpNode>> nodes) noexcept {
    try {
        while (!nodes.empty()) {
            const std::shared_ptr<XmpNode> last = std::move(nodes.back());
            nodes.pop_back();
            if (last.use_count() == 1) {
                last->_TakeNodes(nodes);
            }
        }
    } catch (const std::bad_alloc&) {
        // The rest goes by itself.
    }
}

void XmpNode::_Release(std::shared_ptr<XmpNode> node) noexcept {
    std::vector<std::shared_ptr<XmpNode>> nodes;
    try {
        nodes.push_back(std::move(node));
    } catch (const std::bad_alloc&) {
        return;
    }
    _Release(std::move(nodes));
}

// --- Names

void XmpNode::CheckName(std::string_view name) {
    const NameParts parts(name);
    const bool isName = CallEngine([&] { return ImagingFramework::IsXmlName(parts.Local); });
    if (!parts.HasColon() || !isName || XmpNamespace::GetNamespaceByPrefix(parts.Prefix) == nullptr) {
        throw Host::ArgumentException("Invalid qualified name.", "name");
    }
}

const XmpNamespace* XmpNode::GetNamespaceByQualifiedName(std::string_view name) {
    const NameParts parts(name);
    if (parts.Prefix.empty()) {
        throw Host::ArgumentException("'name' is not a valid qualified name.", "name");
    }
    const XmpNamespace* const ns = XmpNamespace::GetNamespaceByPrefix(parts.Prefix);
    if (ns == nullptr) {
        throw Host::ArgumentException("Couldn't find a namespace whose prefix would match that in name.", "name");
    }
    return ns;
}

std::string XmpNode::GetQualifiedName(const XmpNamespace* ns, std::string_view name) {
    if (ns == nullptr) {
        throw Host::ArgumentNullException("ns");
    }
    const NameParts parts(name);
    if (!parts.HasColon()) {
        return ns->get_Prefix() + ":" + std::string(name);
    }
    if (parts.Prefix.empty() || parts.Local.empty()) {
        throw UnexpectedException("'name' is not a valid qualified name. Prefix or tag name is empty");
    }
    if (parts.Prefix != ns->get_Prefix()) {
        throw UnexpectedException("Prefix in 'name' does not match that of ns.");
    }
    return std::string(name);
}

// --- XmpNodeEnumerator

XmpNodeEnumerator::XmpNodeEnumerator(std::vector<std::shared_ptr<XmpNode>> nodes) noexcept
    : m_nodes(std::move(nodes)) {}

bool XmpNodeEnumerator::MoveNext() noexcept {
    m_uintNext = std::min(m_uintNext, m_nodes.size()) + 1;
    return m_uintNext <= m_nodes.size();
}

std::shared_ptr<XmpNode> XmpNodeEnumerator::get_Current() const {
    if (m_uintNext == 0 || m_uintNext > m_nodes.size()) {
        throw Host::InvalidOperationException();
    }
    return m_nodes[m_uintNext - 1];
}

} // namespace Corvane::Rasterloom::Codecs
