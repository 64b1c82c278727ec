#pragma once

#include <Corvane/Rasterloom/Codecs/XmpNode.h>

#include <span>

namespace Corvane::Rasterloom::Codecs {

/// An array: ordered, unordered, or alternatives of one another. Its items have neither a name nor a namespace.
///
/// Every call takes the lock. A position outside the array fails with `Host::ArgumentOutOfRangeException` ("index"). A
/// call that puts a node in fails with `Host::ArgumentNullException` ("value") without one, and with
/// `Host::ArgumentException` ("value") for a qualifier, for a node that has a name or a namespace, and for one that
/// would come to lie inside itself.
class RASTERLOOM_API XmpArrayNode final : public XmpNode {
public:
    /// An item of an array. The type is one of the three kinds of arrays; others fail with `Host::ArgumentException`
    /// ("nodeType").
    explicit XmpArrayNode(XmpNodeType nodeType);
    /// Named by a qualified name, which fails as `CheckName` tells.
    XmpArrayNode(XmpNodeType nodeType, std::string_view name);
    /// Named as `GetQualifiedName` tells.
    XmpArrayNode(XmpNodeType nodeType, const XmpNamespace* ns, std::string_view name);
    ~XmpArrayNode() override;

    std::int32_t get_Count() override;
    /// The item at a position, from 0.
    std::shared_ptr<XmpNode> get_Item(std::int32_t index);
    void set_Item(std::int32_t index, std::shared_ptr<XmpNode> value);
    /// The position of the new item.
    std::int32_t Add(std::shared_ptr<XmpNode> value);
    /// Removes all items.
    void Clear();
    /// Whether the node itself is one of the items.
    bool Contains(const XmpNode* value);
    /// -1 when it is not there.
    std::int32_t IndexOf(const XmpNode* value);
    /// A position one behind the last item is right, too.
    void Insert(std::int32_t index, std::shared_ptr<XmpNode> value);
    /// The first of its places; does nothing when it is not there.
    void Remove(const XmpNode* value);
    /// Removes the item at a position.
    void RemoveAt(std::int32_t index);
    /// Fails with `Host::ArgumentException` ("array") when there is no room.
    void CopyTo(std::span<std::shared_ptr<XmpNode>> array, std::int32_t index);

    using XmpNode::Dispose;

    std::vector<std::shared_ptr<XmpNode>> _GetNodes() const override { return m_pContents; }
    void _TakeNodes(std::vector<std::shared_ptr<XmpNode>>& nodes) override;
    /// Adds an item without the checks.
    void _AddNoCycle(std::shared_ptr<XmpNode> value) { m_pContents.push_back(std::move(value)); }

protected:
    void Dispose(bool disposing) override;

private:
    template <class Body>
    auto Locked(Body body);
    void CheckItem(const XmpNode* value) const;
    std::size_t CheckIndex(std::int32_t index, std::size_t end) const;
    std::int32_t _IndexOf(const XmpNode* value) const;

    std::vector<std::shared_ptr<XmpNode>> m_pContents;
};

} // namespace Corvane::Rasterloom::Codecs
