#pragma once

#include <Corvane/Rasterloom/Codecs/XmpNode.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvane::Rasterloom::Codecs {

class XmpNodeTable;

/// Nodes by name, in the order in which they came: what `XmpData` and the nodes with named children have in common. The
/// key of a node is its name.
///
/// Every call takes the lock of the object. One that puts a node in fails with `Host::ArgumentNullException` ("value"
/// or "node") without one, and with `Host::ArgumentException` when the key is not the node's name ("name, node"), when
/// the node does not belong there ("node" or "name") and when it would come to lie inside itself ("value").
class RASTERLOOM_API XmpNodeDictionary {
public:
    /// A name with its node.
    using Entry = std::pair<std::string, std::shared_ptr<XmpNode>>;

    XmpNodeDictionary(const XmpNodeDictionary&) = delete;
    XmpNodeDictionary& operator=(const XmpNodeDictionary&) = delete;

    /// The node of a name; null when there is none.
    std::shared_ptr<XmpNode> get_Item(std::string_view key);
    /// Replaces the node of the name, or adds it.
    void set_Item(std::string_view key, std::shared_ptr<XmpNode> value);
    /// The names, in the order in which they came.
    std::vector<std::string> get_Keys();
    /// The nodes in the same order.
    std::vector<std::shared_ptr<XmpNode>> get_Values();
    /// Number of nodes.
    std::int32_t get_Count();
    /// The namespaces of the nodes, each once.
    std::vector<const XmpNamespace*> get_Namespaces();

    /// Fails with `Host::ArgumentException` when the name is there.
    void Add(std::string_view key, std::shared_ptr<XmpNode> value);
    /// `Add` and `set_Item` with the node's own name.
    void AddNode(std::shared_ptr<XmpNode> node);
    /// See `AddNode`.
    void SetNode(std::shared_ptr<XmpNode> node);
    /// Removes all nodes.
    void Clear();
    /// Whether there is a node of the name.
    bool Contains(std::string_view key);
    /// Does nothing when there is no such node.
    void Remove(std::string_view key);
    /// The names in a namespace; null fails with `Host::ArgumentNullException` ("ns").
    std::vector<std::string> FindKeysByNamespace(const XmpNamespace* ns);
    /// Copies all entries to the places from `index` on. Fails with `Host::ArgumentOutOfRangeException` ("index") for a
    /// negative index and with `Host::ArgumentException` ("array") when there is no room.
    void CopyTo(std::span<Entry> array, std::int32_t index);
    /// A cursor over the nodes that are there now.
    XmpNodeEnumerator GetEnumerator();

    /// @name Lock-free bodies
    /// @{
    std::vector<std::shared_ptr<XmpNode>> _GetValues() const;
    /// Puts a node in without the checks; whether the name was new. A node of the same name stays.
    bool _AddNoCycle(std::shared_ptr<XmpNode> node);
    /// Replaces the node of the name, or adds it, without the search for cycles.
    void _SetItemNoCycle(std::string_view key, std::shared_ptr<XmpNode> value);
    /// @}

protected:
    /// `object` is what the dictionary is part of, by its lock; `node` the same as a node, null when it is none.
    XmpNodeDictionary(LockableObject& object, const XmpNode* node, const char* className);
    virtual ~XmpNodeDictionary();

    /// Fails as told above when a node does not belong here, whatever its name.
    virtual void CheckNode(const XmpNode& node) const = 0;
    void _TakeValues(std::vector<std::shared_ptr<XmpNode>>& nodes);
    void _ReleaseNodes() noexcept;

private:
    template <class Body>
    auto Locked(Body body);
    void CheckCycle(const XmpNode& node) const;
    void CheckEntry(std::string_view key, const XmpNode& node) const;
    void _Add(std::string_view key, std::shared_ptr<XmpNode> value);
    void _SetItem(std::string_view key, std::shared_ptr<XmpNode> value);
    XmpNodeTable& Table();

    LockableObject& m_object;
    const XmpNode* m_pNode;
    const char* m_pClassName;
    std::unique_ptr<XmpNodeTable> m_pContents; ///< null while it is empty
};

} // namespace Corvane::Rasterloom::Codecs
