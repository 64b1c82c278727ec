#pragma once

#include "ErrorHandling/Exceptions.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

namespace ImagingFramework {

/// The nodes of a colour tree, known by numbers that stay when the pool grows. Number 0 is always taken.
template <class Node> class ColorTreePool {
public:
    using Number = std::uint16_t;

    /// Leaves node 0 alone, with room for `capacity` nodes.
    void Reset(std::size_t capacity) {
        m_free.clear();
        m_nodes.clear();
        m_nodes.reserve(capacity);
        m_nodes.emplace_back();
    }

    /// A new node, or one that was given back. The caller sees to it that there are never more than the numbers can tell.
    Number Take() {
        if (m_free.empty()) {
            const auto number = static_cast<Number>(m_nodes.size());
            try {
                m_nodes.emplace_back();
            } catch (const std::bad_alloc&) {
                throw MemoryException();
            }
            return number;
        }
        const Number number = m_free.back();
        m_free.pop_back();
        m_nodes[number] = Node();
        return number;
    }

    void GiveBack(Number number) { m_free.push_back(number); }

    Node& operator[](Number number) { return m_nodes[number]; }
    const Node& operator[](Number number) const { return m_nodes[number]; }

private:
    std::vector<Node> m_nodes;
    std::vector<Number> m_free;
};

} // namespace ImagingFramework
