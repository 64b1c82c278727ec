#pragma once

#include "colorconversion/ColorQuantizer.h"
#include "colorconversion/ColorTreePool.h"

#include <array>
#include <cstdint>

namespace ImagingFramework {

/// Sorts opaque colours into a tree by their bits, from the top bit down, eight children to a node. As soon as there are
/// more leaves than entries, the node that was made last among the deepest becomes a leaf in place of its children.
class OctreeColorQuantizer final : public ColorQuantizer {
public:
    OctreeColorQuantizer() { Reset(); }

    void Open(std::uint32_t bits, bool withAlpha, std::uint32_t maxColors) override;
    using ColorQuantizer::AddColor;
    void AddColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue) override;
    /// Exact for colours that were added; -1 on a path where none was, and in leaves that `GetPalette` has not seen.
    std::int32_t GetNearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) override;

protected:
    void FillPalette() override;

private:
    static constexpr std::size_t ChildCount = 8;

    /// A place in the pool; 0 for none.
    using NodeNumber = std::uint16_t;

    struct Node {
        bool IsLeaf = false;
        std::int16_t PaletteIndex = -1;
        std::uint64_t PixelCount = 0;
        std::uint64_t Red = 0;
        std::uint64_t Green = 0;
        std::uint64_t Blue = 0;
        std::array<NodeNumber, ChildCount> Children{};
        NodeNumber NextReducible = 0;
    };

    void Reset();
    NodeNumber CreateNode(std::uint32_t level);
    void OctreeReduceTree();
    void FillFromNode(NodeNumber number);

    std::uint32_t m_uintLeafCount = 0;
    ColorTreePool<Node> m_nodes; ///< place 0 is not used
    NodeNumber m_root = 0;
    std::array<NodeNumber, 9> m_reducible{}; ///< the inner nodes of each level, the youngest first
};

} // namespace ImagingFramework
