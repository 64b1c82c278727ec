#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace ImagingFramework::Testing {

/// A tree of colours that is reduced as it grows, the slow way: a dictionary from the path of a node, one character for
/// each child number, to the node.
class TreeOracle {
public:
    using Color = std::array<std::uint8_t, 4>; ///< alpha, red, green, blue

    enum class Kind {
        Octree,    ///< merges what is deepest and youngest
        SixteenWay ///< merges what is deepest and has the fewest pixels, the youngest among equals; never the root
    };

    TreeOracle(Kind kind, std::size_t depth, std::size_t limit) : m_kind(kind), m_depth(depth), m_limit(limit) {}

    void Add(const Color& color) {
        std::string path;
        while (true) {
            const auto [position, isNew] = m_nodes.try_emplace(path);
            Node& node = position->second;
            if (isNew) {
                node.Birth = m_nextBirth++;
                node.IsLeaf = path.size() == m_depth;
            }
            ++node.Pixels;
            if (node.IsLeaf) {
                for (std::size_t channel = 0; channel < 4; ++channel) {
                    node.Sums[channel] += color[channel];
                }
                break;
            }
            path += ChildNumber(color, path.size());
        }
        while (CountLeaves() > m_limit && Reduce()) {
        }
    }

    /// In the order of the paths, which is the order of a walk down the tree.
    std::vector<Color> Palette() const {
        std::vector<Color> palette;
        for (const auto& [path, node] : m_nodes) {
            if (node.IsLeaf) {
                Color color;
                for (std::size_t channel = 0; channel < 4; ++channel) {
                    color[channel] = static_cast<std::uint8_t>(node.Sums[channel] / node.Pixels);
                }
                palette.push_back(color);
            }
        }
        return palette;
    }

private:
    struct Node {
        bool IsLeaf = false;
        std::uint64_t Birth = 0;
        std::uint64_t Pixels = 0;
        std::array<std::uint64_t, 4> Sums{};
    };

    char ChildNumber(const Color& color, std::size_t level) const {
        const auto bit = [level](unsigned value) { return value / (128U >> level) % 2; };
        const auto [alpha, red, green, blue] = color;
        if (m_kind == Kind::Octree) {
            return static_cast<char>('a' + bit(red) * 4 + bit(green) * 2 + bit(blue));
        }
        return static_cast<char>('a' + bit(alpha) + 2 * bit(red * alpha / 255U) + 4 * bit(green * alpha / 255U) +
                                 8 * bit(blue * alpha / 255U));
    }

    std::size_t CountLeaves() const {
        return static_cast<std::size_t>(
            std::count_if(m_nodes.begin(), m_nodes.end(), [](const auto& entry) { return entry.second.IsLeaf; }));
    }

    bool ComesFirst(const std::string& path, const Node& node, const std::string& than, const Node& other) const {
        if (path.size() != than.size()) {
            return path.size() > than.size();
        }
        if (m_kind == Kind::SixteenWay && node.Pixels != other.Pixels) {
            return node.Pixels < other.Pixels;
        }
        return node.Birth > other.Birth;
    }

    bool Reduce() {
        auto chosen = m_nodes.end();
        for (auto entry = m_nodes.begin(); entry != m_nodes.end(); ++entry) {
            if (entry->second.IsLeaf || (m_kind == Kind::SixteenWay && entry->first.empty())) {
                continue;
            }
            if (chosen == m_nodes.end() || ComesFirst(entry->first, entry->second, chosen->first, chosen->second)) {
                chosen = entry;
            }
        }
        if (chosen == m_nodes.end()) {
            return false;
        }
        // All that lies below follows in the dictionary.
        for (auto below = std::next(chosen); below != m_nodes.end() && below->first.starts_with(chosen->first);) {
            for (std::size_t channel = 0; channel < 4; ++channel) {
                chosen->second.Sums[channel] += below->second.Sums[channel];
            }
            below = m_nodes.erase(below);
        }
        chosen->second.IsLeaf = true;
        return true;
    }

    Kind m_kind;
    std::size_t m_depth;
    std::size_t m_limit;
    std::map<std::string, Node> m_nodes;
    std::uint64_t m_nextBirth = 0;
};

} // namespace ImagingFramework::Testing
