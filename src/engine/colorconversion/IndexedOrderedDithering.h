#pragma once

#include "colorconversion/OrderedDithering.h"

#include <vector>

namespace ImagingFramework {

/// Ordered dithering to a palette. Two entries are told apart by the gray of the pixel against a threshold; of more, the
/// one that is nearest to the pixel with the threshold added to all its channels.
class IndexedOrderedDithering final : public OrderedDithering {
public:
    explicit IndexedOrderedDithering(DitheringType type) : OrderedDithering(type) {}
    /// The thresholds lie in the range of a byte for two entries, else on both sides of zero, as far as the entries are
    /// apart on average.
    void InitializeOrderedMatrix() override;
    /// A palette of one entry gives index 0.
    void ApplyDithering(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) override;

private:
    std::int32_t MeanEntryDistance() const;
    void ChooseOfTwo();
    void ChooseNearest();

    std::vector<std::uint8_t> m_moved; ///< the pixels of a row with the thresholds added
};

} // namespace ImagingFramework
