#pragma once

#include "transforms/resize/TwoPass.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// The weights of a filter along one axis, for the destination positions of the output.
template <class Weight> struct TapAxis {
    TapAxis() = default;
    TapAxis(std::size_t positions, std::size_t maximumTaps)
        : MaximumTaps(maximumTaps), Weights(positions * maximumTaps), Totals(positions), Copies(positions) {
        Windows.First.resize(positions);
        Windows.Count.resize(positions);
    }

    const Weight* WeightsOf(std::size_t position) const { return Weights.data() + position * MaximumTaps; }
    Weight* WeightsOf(std::size_t position) { return Weights.data() + position * MaximumTaps; }
    std::size_t Positions() const { return Totals.size(); }

    AxisWindows Windows;
    std::size_t MaximumTaps = 0;
    /// `MaximumTaps` for each position, zero beyond its count.
    std::vector<Weight> Weights;
    /// Sum of the weights of each position.
    std::vector<Weight> Totals;
    /// Set where the position takes the pixel at its `First` as it is.
    std::vector<std::uint8_t> Copies;
};

} // namespace ImagingFramework
