#pragma once

#include "colorconversion/Dithering.h"

#include <array>
#include <cstdint>

namespace ImagingFramework {

/// Holds the square matrix of an ordered dithering, which repeats over the picture.
class OrderedDithering : public Dithering {
public:
    static constexpr std::uint32_t MaximumSize = 16;
    using Matrix = std::array<std::array<std::int32_t, MaximumSize>, MaximumSize>;

    /// Builds the matrix of the type and has it scaled.
    void Open(std::uint32_t uintScanlineWidth, std::uint32_t intensity, ColorMap* palette) override;
    /// Turns the raw numbers of the matrix, 0 to size^2 - 1, into thresholds.
    virtual void InitializeOrderedMatrix() = 0;

protected:
    explicit OrderedDithering(DitheringType type) : Dithering(type) {}

    Matrix m_matrix{}; ///< by row and column; its top left corner is in use
    std::uint32_t m_uintSize = 0;

private:
    void GenerateBayerMatrix(std::uint32_t order);
    void GenerateSpiralMartixRecurs(std::uint32_t n, std::uint32_t offset);
};

} // namespace ImagingFramework
