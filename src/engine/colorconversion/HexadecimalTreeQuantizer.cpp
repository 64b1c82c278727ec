#include "colorconversion/HexadecimalTreeQuantizer.h"

#include "colorconversion/SpreadBits.h"

namespace ImagingFramework {

namespace {

/// The child numbers from the root down: alpha is the lowest bit of each, blue the top one.
std::uint32_t Path(std::uint32_t alpha, std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    return SpreadBits<4>[alpha] | SpreadBits<4>[red] << 1 | SpreadBits<4>[green] << 2 | SpreadBits<4>[blue] << 3;
}

std::size_t ChildAt(std::uint32_t path, std::uint32_t level) { return path >> (28 - 4 * level) & 15; }

} // namespace

HexadecimalTreeQuantizer::HexadecimalTreeQuantizer() { Reset(); }

void HexadecimalTreeQuantizer::Open(std::uint32_t bits, bool withAlpha, std::uint32_t maxColors) {
    ColorQuantizer::Open(bits, withAlpha, maxColors);
    Reset();
}

void HexadecimalTreeQuantizer::Reset() {
    m_uintLeafCount = 0;
    m_innerNodes.fill(0);
    m_nodes.Reset(PoolSize);
}

/// There are never more nodes than 6 levels below the root for each of 257 leaves, so their numbers fit.
HexadecimalTreeQuantizer::NodeNumber HexadecimalTreeQuantizer::CreateChild(std::uint32_t level) {
    const NodeNumber number = m_nodes.Take();
    Node& node = m_nodes[number];
    if (level + 1 == LevelCount) {
        node.IsLeaf = true;
        ++m_uintLeafCount;
    } else {
        node.NextInner = m_innerNodes[level];
        m_innerNodes[level] = number;
    }
    return number;
}

void HexadecimalTreeQuantizer::AddColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    AddColor(255, red, green, blue);
}

void HexadecimalTreeQuantizer::AddColor(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    if (!m_bWithAlpha) {
        alpha = 255;
    }
    // Only the path is premultiplied; the sums are of the plain colours.
    const std::uint32_t path = Path(alpha, red * alpha / 255U, green * alpha / 255U, blue * alpha / 255U);
    NodeNumber number = 0;
    for (std::uint32_t level = 0; !m_nodes[number].IsLeaf; ++level) {
        ++m_nodes[number].PixelCount;
        const std::size_t child = ChildAt(path, level);
        NodeNumber next = m_nodes[number].Children[child];
        if (next == 0) {
            next = CreateChild(level);
            m_nodes[number].Children[child] = next;
        }
        number = next;
    }
    Node& leaf = m_nodes[number];
    ++leaf.PixelCount;
    leaf.Alpha += alpha;
    leaf.Red += red;
    leaf.Green += green;
    leaf.Blue += blue;
    while (m_uintLeafCount > m_uintMaximumEntryCount && ReduceTree()) {
    }
}

/// Takes the node with the fewest pixels off the list that begins at `first`, the first one among equals.
HexadecimalTreeQuantizer::NodeNumber HexadecimalTreeQuantizer::TakeSmallest(NodeNumber& first) {
    NodeNumber* smallest = &first;
    for (NodeNumber* link = &m_nodes[first].NextInner; *link != 0; link = &m_nodes[*link].NextInner) {
        if (m_nodes[*link].PixelCount < m_nodes[*smallest].PixelCount) {
            smallest = link;
        }
    }
    const NodeNumber number = *smallest;
    *smallest = m_nodes[number].NextInner;
    return number;
}

bool HexadecimalTreeQuantizer::ReduceTree() {
    std::size_t level = LevelCount;
    while (level > 0 && m_innerNodes[level - 1] == 0) {
        --level;
    }
    if (level == 0) {
        return false;
    }
    Node& node = m_nodes[TakeSmallest(m_innerNodes[level - 1])];
    for (NodeNumber& number : node.Children) {
        if (number == 0) {
            continue;
        }
        const Node& child = m_nodes[number];
        node.Alpha += child.Alpha;
        node.Red += child.Red;
        node.Green += child.Green;
        node.Blue += child.Blue;
        m_nodes.GiveBack(number);
        number = 0;
        --m_uintLeafCount;
    }
    node.IsLeaf = true;
    ++m_uintLeafCount;
    return true;
}

void HexadecimalTreeQuantizer::FillPalette() {
    m_palette.Create(m_uintLeafCount, GetPaletteFormat());
    m_uintFilledEntryCount = 0;
    FillFromNode(m_nodes[0]);
}

/// Every leaf has got at least the colour that it was made for.
void HexadecimalTreeQuantizer::FillFromNode(const Node& node) {
    if (node.IsLeaf) {
        const std::uint8_t entry[4] = {Mean(node.Blue, node.PixelCount), Mean(node.Green, node.PixelCount),
                                       Mean(node.Red, node.PixelCount), Mean(node.Alpha, node.PixelCount)};
        m_palette.SetEntryArgb(m_uintFilledEntryCount++, entry);
        return;
    }
    for (const NodeNumber child : node.Children) {
        if (child != 0) {
            FillFromNode(m_nodes[child]);
        }
    }
}

std::int32_t HexadecimalTreeQuantizer::GetNearestColorIndex(std::uint8_t, std::uint8_t, std::uint8_t) {
    throw Exception("Method not implemented");
}

} // namespace ImagingFramework
