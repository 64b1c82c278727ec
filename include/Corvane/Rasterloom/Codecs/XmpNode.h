#pragma once

#include <Corvane/Rasterloom/Codecs/XmpNamespace.h>
#include <Corvane/Rasterloom/Codecs/XmpNodeEnumerator.h>
#include <Corvane/Rasterloom/Codecs/XmpNodeType.h>
#include <Corvane/Rasterloom/LockableObject.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::Rasterloom::Codecs {

/// A node of an XMP tree. Nodes are shared: the same node may stand in several places, but never inside itself.
///
/// Each node has its own lock. A tree is not locked as a whole, so it is not for several threads while one changes it.
/// Nodes are equal when they are the same object.
class RASTERLOOM_API XmpNode : public LockableObject {
public:
    ~XmpNode() override;

    /// What the node is; fixed.
    XmpNodeType get_NodeType() const noexcept { return m_enNodeType; }
    /// The qualified name, such as "dc:title"; the language of an item of a localized text; empty for items of arrays.
    const std::string& get_Name() const noexcept { return m_strName; }
    /// Null for items.
    const XmpNamespace* get_Namespace() const noexcept { return m_pNamespace; }
    /// Number of nodes in it.
    virtual std::int32_t get_Count() = 0;
    /// A cursor over the nodes that are in it now.
    XmpNodeEnumerator GetEnumerator();
    /// Whether it is the same object.
    bool Equals(const XmpNode* other) const noexcept { return this == other; }

    /// Fails with `Host::ArgumentException` ("name") when a name is not a prefix that is known, a colon and a name of
    /// XML.
    static void CheckName(std::string_view name);
    /// The namespace that the prefix of the name stands for. Fails with `Host::ArgumentException` ("name") without a
    /// prefix and for one that is not known.
    static const XmpNamespace* GetNamespaceByQualifiedName(std::string_view name);
    /// The name with the prefix of the namespace, which it may have already. Fails with `UnexpectedException` for
    /// another prefix or an empty part, and with `Host::ArgumentNullException` ("ns").
    static std::string GetQualifiedName(const XmpNamespace* ns, std::string_view name);

    using LockableObject::Dispose;

    /// @name Lock-free bodies
    /// @{
    /// The nodes in it, in their order.
    virtual std::vector<std::shared_ptr<XmpNode>> _GetNodes() const = 0;
    /// Moves the nodes in it to the end of `nodes`.
    virtual void _TakeNodes(std::vector<std::shared_ptr<XmpNode>>& nodes) = 0;
    /// Releases nodes one by one, however deep the trees are.
    static void _Release(std::vector<std::shared_ptr<XmpNode>> nodes) noexcept;
    static void _Release(std::shared_ptr<XmpNode> node) noexcept;
    /// @}

protected:
    /// An item.
    explicit XmpNode(XmpNodeType nodeType);
    /// A node with a qualified name.
    XmpNode(XmpNodeType nodeType, std::string_view name);
    XmpNode(XmpNodeType nodeType, const XmpNamespace* ns, std::string_view name);
    /// For names of another kind.
    void _SetName(std::string name) noexcept { m_strName = std::move(name); }
    /// Fails with `Host::ObjectDisposedException`.
    void CheckNotDisposed() const;

private:
    XmpNodeType m_enNodeType;
    std::string m_strName;
    const XmpNamespace* m_pNamespace = nullptr;
};

} // namespace Corvane::Rasterloom::Codecs
