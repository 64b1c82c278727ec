#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace ImagingFramework {

class XMPNamespace;
class XMPNode;

/// Nodes in their order, found by name in a time that hardly grows with their number. The name of an item of a
/// localized text is its language, in the namespace of XML.
class XmpNodeList {
public:
    std::uint32_t GetCount() const noexcept { return static_cast<std::uint32_t>(m_nodes.size()); }
    /// Fails with `ArgumentOutOfRangeException` ("uintIndex").
    XMPNode& At(std::uint32_t uintIndex) const;
    /// Null when there is none; a null namespace finds nodes without one.
    XMPNode* Find(const XMPNamespace* pNamespace, std::string_view name) const;
    /// Puts a node behind the others. The caller has seen to it that its name is new, where it has one.
    XMPNode& Add(std::shared_ptr<XMPNode> node);
    /// Puts a node before the others.
    XMPNode& AddFirst(std::shared_ptr<XMPNode> node);
    void RemoveAt(std::uint32_t uintIndex);

    auto begin() const noexcept { return m_nodes.begin(); }
    auto end() const noexcept { return m_nodes.end(); }

private:
    using Key = std::pair<const XMPNamespace*, std::string_view>;
    using Index = std::map<Key, XMPNode*>;

    static Key KeyOf(const XMPNode& node);

    std::vector<std::shared_ptr<XMPNode>> m_nodes;
    std::unique_ptr<Index> m_pIndex; ///< once the list is long
};

} // namespace ImagingFramework
