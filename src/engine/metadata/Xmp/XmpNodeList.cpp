#include "metadata/Xmp/XmpNodeList.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Xmp/XMPNamespace.h"
#include "metadata/Xmp/XMPNode.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

constexpr std::size_t LongList = 16;

} // namespace

XmpNodeList::Key XmpNodeList::KeyOf(const XMPNode& node) {
    if (node.GetNodeType() == XMPNodeType::LocalizedTextItem && node.GetLanguage() != nullptr) {
        return {&XMPNamespace::Xml(), *node.GetLanguage()};
    }
    return {node.GetNamespaceOrNull(), node.GetName()};
}

XMPNode& XmpNodeList::At(std::uint32_t uintIndex) const {
    if (uintIndex >= m_nodes.size()) {
        throw ArgumentOutOfRangeException("uintIndex");
    }
    return *m_nodes[uintIndex];
}

XMPNode* XmpNodeList::Find(const XMPNamespace* pNamespace, std::string_view name) const {
    const Key key(pNamespace, name);
    if (m_pIndex) {
        const auto found = m_pIndex->find(key);
        return found != m_pIndex->end() ? found->second : nullptr;
    }
    const auto found = std::ranges::find_if(m_nodes, [&](const auto& node) { return KeyOf(*node) == key; });
    return found != m_nodes.end() ? found->get() : nullptr;
}

XMPNode& XmpNodeList::Add(std::shared_ptr<XMPNode> node) {
    XMPNode& added = *m_nodes.emplace_back(std::move(node));
    if (KeyOf(added).second.empty()) {
        return added;
    }
    if (m_pIndex) {
        m_pIndex->emplace(KeyOf(added), &added);
    } else if (m_nodes.size() > LongList) {
        m_pIndex = std::make_unique<Index>();
        for (const auto& each : m_nodes) {
            m_pIndex->emplace(KeyOf(*each), each.get());
        }
    }
    return added;
}

XMPNode& XmpNodeList::AddFirst(std::shared_ptr<XMPNode> node) {
    XMPNode& added = Add(std::move(node));
    std::rotate(m_nodes.begin(), m_nodes.end() - 1, m_nodes.end());
    return added;
}

void XmpNodeList::RemoveAt(std::uint32_t uintIndex) {
    At(uintIndex);
    m_pIndex.reset();
    m_nodes.erase(m_nodes.begin() + uintIndex);
}

} // namespace ImagingFramework
