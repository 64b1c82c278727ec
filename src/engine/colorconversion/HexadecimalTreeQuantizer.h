#pragma once

#include "colorconversion/ColorQuantizer.h"
#include "colorconversion/ColorTreePool.h"

#include <array>
#include <cstdint>

namespace ImagingFramework {

/// Sorts colours with alpha into a tree by the six top bits of alpha and of the premultiplied colours, sixteen children to
/// a node. As soon as there are more leaves than entries, the node with the fewest pixels among the deepest becomes a leaf
/// in place of its children. The children of the root are never merged, so up to nine entries may come out of a smaller
/// limit.
class HexadecimalTreeQuantizer final : public ColorQuantizer {
public:
    HexadecimalTreeQuantizer();

    void Open(std::uint32_t bits, bool withAlpha, std::uint32_t maxColors) override;
    void AddColor(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue) override;
    void AddColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue) override;
    /// Fails with `Exception`: this tree tells no indices.
    std::int32_t GetNearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) override;

protected:
    void FillPalette() override;

private:
    static constexpr std::size_t ChildCount = 16;
    static constexpr std::uint32_t LevelCount = 6;
    /// The usual size of the pool; it grows where a picture needs more.
    static constexpr std::size_t PoolSize = 1044;

    /// A place in the pool; 0 is the root, and as a child stands for none.
    using NodeNumber = std::uint16_t;

    struct Node {
        bool IsLeaf = false;
        NodeNumber NextInner = 0;
        std::uint64_t PixelCount = 0; ///< of an inner node: the colours that went through
        std::uint64_t Alpha = 0;
        std::uint64_t Red = 0;
        std::uint64_t Green = 0;
        std::uint64_t Blue = 0;
        std::array<NodeNumber, ChildCount> Children{};
    };

    void Reset();
    /// A node below `level`.
    NodeNumber CreateChild(std::uint32_t level);
    /// False when there is nothing left to merge.
    bool ReduceTree();
    NodeNumber TakeSmallest(NodeNumber& first);
    void FillFromNode(const Node& node);

    std::uint32_t m_uintLeafCount = 0;
    ColorTreePool<Node> m_nodes;
    std::array<NodeNumber, LevelCount> m_innerNodes{}; ///< below each level, the youngest first; the root is in none
};

} // namespace ImagingFramework
