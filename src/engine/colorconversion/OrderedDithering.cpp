#include "colorconversion/OrderedDithering.h"

namespace ImagingFramework {

void OrderedDithering::Open(std::uint32_t uintScanlineWidth, std::uint32_t intensity, ColorMap* palette) {
    Dithering::Open(uintScanlineWidth, intensity, palette);
    CheckType(DitheringType::OrderedBayer2, DitheringType::OrderedSpiral4);
    const bool isSpiral = m_enType >= DitheringType::OrderedSpiral2;
    const auto first = isSpiral ? DitheringType::OrderedSpiral2 : DitheringType::OrderedBayer2;
    const std::uint32_t order = static_cast<std::uint32_t>(m_enType) - static_cast<std::uint32_t>(first) + 2;
    m_uintSize = 1U << order;
    m_matrix = {};
    if (isSpiral) {
        GenerateSpiralMartixRecurs(m_uintSize, 0);
    } else {
        GenerateBayerMatrix(order);
    }
    InitializeOrderedMatrix();
}

/// Each order is four copies of the one before, times 4, with 2 and 1 added above and 0 and 3 below.
void OrderedDithering::GenerateBayerMatrix(std::uint32_t order) {
    m_matrix[0][0] = 0;
    for (std::uint32_t half = 1; half < 1U << order; half *= 2) {
        for (std::uint32_t i = 0; i < half; ++i) {
            for (std::uint32_t j = 0; j < half; ++j) {
                const std::int32_t value = 4 * m_matrix[i][j];
                m_matrix[i][j] = value + 2;
                m_matrix[i][j + half] = value + 1;
                m_matrix[i + half][j] = value;
                m_matrix[i + half][j + half] = value + 3;
            }
        }
    }
}

/// Numbers the border of a square of n cells, downwards from n^2 - 1: down the left, along the bottom, up the right, back
/// along the top. The next square starts one cell farther down and to the right and is smaller by one, not by two, so it
/// overwrites the right and bottom sides, and its numbers start anew. That is meant.
void OrderedDithering::GenerateSpiralMartixRecurs(std::uint32_t n, std::uint32_t offset) {
    if (n <= 1) {
        return;
    }
    auto number = static_cast<std::int32_t>(n * n);
    const std::uint32_t end = offset + n - 1;
    for (std::uint32_t row = offset; row <= end; ++row) {
        m_matrix[row][offset] = --number;
    }
    for (std::uint32_t column = offset + 1; column <= end; ++column) {
        m_matrix[end][column] = --number;
    }
    for (std::uint32_t row = end; row-- > offset;) {
        m_matrix[row][end] = --number;
    }
    for (std::uint32_t column = end; --column > offset;) {
        m_matrix[offset][column] = --number;
    }
    GenerateSpiralMartixRecurs(n - 1, offset + 1);
}

} // namespace ImagingFramework
