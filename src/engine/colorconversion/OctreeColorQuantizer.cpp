#include "colorconversion/OctreeColorQuantizer.h"

#include "colorconversion/SpreadBits.h"

namespace ImagingFramework {

namespace {

/// The child numbers from the root down: red is the top bit of each.
std::uint32_t Path(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return SpreadBits<3>[red] << 2 | SpreadBits<3>[green] << 1 | SpreadBits<3>[blue];
}

std::size_t ChildAt(std::uint32_t path, std::uint32_t level) { return path >> (21 - 3 * level) & 7; }

} // namespace

void OctreeColorQuantizer::Open(std::uint32_t bits, bool withAlpha, std::uint32_t maxColors) {
    ColorQuantizer::Open(bits, withAlpha, maxColors);
    Reset();
}

void OctreeColorQuantizer::Reset() {
    m_uintLeafCount = 0;
    m_nodes.Reset(1);
    m_root = 0;
    m_reducible.fill(0);
}

/// There are never more nodes than 8 levels above each of 257 leaves, so their numbers fit.
OctreeColorQuantizer::NodeNumber OctreeColorQuantizer::CreateNode(std::uint32_t level) {
    const NodeNumber number = m_nodes.Take();
    Node& node = m_nodes[number];
    if (level == m_uintBits) {
        node.IsLeaf = true;
        ++m_uintLeafCount;
    } else {
        node.NextReducible = m_reducible[level];
        m_reducible[level] = number;
    }
    return number;
}

void OctreeColorQuantizer::AddColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    const std::uint32_t path = Path(red, green, blue);
    if (m_root == 0) {
        m_root = CreateNode(0);
    }
    NodeNumber number = m_root;
    for (std::uint32_t level = 0; !m_nodes[number].IsLeaf; ++level) {
        const std::size_t child = ChildAt(path, level);
        NodeNumber next = m_nodes[number].Children[child];
        if (next == 0) {
            next = CreateNode(level + 1);
            m_nodes[number].Children[child] = next;
        }
        number = next;
    }
    Node& leaf = m_nodes[number];
    ++leaf.PixelCount;
    leaf.Red += red;
    leaf.Green += green;
    leaf.Blue += blue;
    while (m_uintLeafCount > m_uintMaximumEntryCount) {
        OctreeReduceTree();
    }
}

void OctreeColorQuantizer::OctreeReduceTree() {
    std::uint32_t level = m_uintBits - 1;
    while (level > 0 && m_reducible[level] == 0) {
        --level;
    }
    // The root is in the last list as long as there is more than one leaf.
    Node& node = m_nodes[m_reducible[level]];
    m_reducible[level] = node.NextReducible;
    for (NodeNumber& number : node.Children) {
        if (number == 0) {
            continue;
        }
        const Node& child = m_nodes[number];
        node.PixelCount += child.PixelCount;
        node.Red += child.Red;
        node.Green += child.Green;
        node.Blue += child.Blue;
        m_nodes.GiveBack(number);
        number = 0;
        --m_uintLeafCount;
    }
    node.IsLeaf = true;
    ++m_uintLeafCount;
}

void OctreeColorQuantizer::FillPalette() {
    ColorQuantizer::FillPalette();
    if (m_root != 0) {
        FillFromNode(m_root);
    }
}

void OctreeColorQuantizer::FillFromNode(NodeNumber number) {
    Node& node = m_nodes[number];
    if (node.IsLeaf) {
        const std::uint8_t entry[3] = {Mean(node.Blue, node.PixelCount), Mean(node.Green, node.PixelCount),
                                       Mean(node.Red, node.PixelCount)};
        m_palette.SetEntryRgb(m_uintFilledEntryCount, entry);
        node.PaletteIndex = static_cast<std::int16_t>(m_uintFilledEntryCount++);
        return;
    }
    for (const NodeNumber child : node.Children) {
        if (child != 0) {
            FillFromNode(child);
        }
    }
}

std::int32_t OctreeColorQuantizer::GetNearestColorIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    const std::uint32_t path = Path(red, green, blue);
    NodeNumber number = m_root;
    for (std::uint32_t level = 0; number != 0 && !m_nodes[number].IsLeaf; ++level) {
        number = m_nodes[number].Children[ChildAt(path, level)];
    }
    return number == 0 ? -1 : m_nodes[number].PaletteIndex;
}

} // namespace ImagingFramework
