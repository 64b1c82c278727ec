#pragma once

#include "transforms/resize/SincResampleHelper.h"
#include "transforms/resize/TwoPass.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace ImagingFramework {

/// One stretch of an axis of the sinc filter, ready to filter rows or columns of samples that are all alike: alpha is
/// a sample like the others. Blocks of rows fit all stretches with the same kind of samples.
class SincStretch {
public:
    enum class Pass { Rows, Columns };

    /// `samples` of a pixel are 1 to 5 bytes or words. Positions count from `first` on, and there are `count` of them. The
    /// kernel is for the one pass alone.
    SincStretch(Pass pass, std::uint32_t sourceSize, std::uint32_t newSize, std::uint32_t first, std::uint32_t count,
                std::uint32_t samples, std::size_t sampleSize);
    SincStretch(const SincStretch&) = delete;
    SincStretch& operator=(const SincStretch&) = delete;

    const TapAxis<double>& Axis() const noexcept { return m_axis; }
    ITwoPassKernel& Kernel() const noexcept { return *m_pKernel; }

private:
    TapAxis<double> m_axis;
    std::unique_ptr<ITwoPassKernel> m_pKernel;
};

} // namespace ImagingFramework
