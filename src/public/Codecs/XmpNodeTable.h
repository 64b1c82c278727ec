#pragma once

#include <Corvane/Rasterloom/Codecs/XmpNode.h>

#include <list>
#include <memory>
#include <string_view>
#include <unordered_map>

namespace Corvane::Rasterloom::Codecs {

/// Nodes in their order, found by name. No two of them have the same name.
class XmpNodeTable {
public:
    using Nodes = std::list<std::shared_ptr<XmpNode>>;

    const Nodes& GetNodes() const noexcept { return m_nodes; }
    bool Contains(std::string_view name) const { return m_index.contains(name); }
    /// Null when there is none.
    std::shared_ptr<XmpNode> Find(std::string_view name) const {
        const auto found = m_index.find(name);
        return found != m_index.end() ? *found->second : nullptr;
    }
    /// Behind the others; whether the name is new, or else nothing is done.
    bool Add(std::shared_ptr<XmpNode> node) {
        if (Contains(node->get_Name())) {
            return false;
        }
        const auto place = m_nodes.insert(m_nodes.end(), std::move(node));
        m_index.emplace((*place)->get_Name(), place);
        return true;
    }
    /// In the place of the node of the same name, if there is one; gives that.
    std::shared_ptr<XmpNode> Set(std::shared_ptr<XmpNode> node) {
        const auto found = m_index.find(node->get_Name());
        if (found == m_index.end()) {
            Add(std::move(node));
            return nullptr;
        }
        const auto place = found->second;
        m_index.erase(found); // the key is the name of the node that goes
        std::swap(*place, node);
        m_index.emplace((*place)->get_Name(), place);
        return node;
    }
    std::shared_ptr<XmpNode> Remove(std::string_view name) {
        const auto found = m_index.find(name);
        if (found == m_index.end()) {
            return nullptr;
        }
        std::shared_ptr<XmpNode> removed = std::move(*found->second);
        m_nodes.erase(found->second);
        m_index.erase(found);
        return removed;
    }

private:
    Nodes m_nodes;
    std::unordered_map<std::string_view, Nodes::iterator> m_index; ///< by the nodes' own names, which never change
};

} // namespace Corvane::Rasterloom::Codecs
