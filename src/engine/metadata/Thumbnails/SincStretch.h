#pragma once

#include "transforms/resize/FloatSincKernel.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace ImagingFramework {

/// One stretch of an axis of the sinc filter, ready to filter rows or columns of samples that are all alike: alpha is
/// a sample like the others.
class SincStretch {
public:
    /// `samples` of a pixel are 1 to 5 bytes or words. Positions count from `first` on, and there are `count` of them.
    SincStretch(std::uint32_t sourceSize, std::uint32_t newSize, std::uint32_t first, std::uint32_t count,
                std::uint32_t samples, std::size_t sampleSize);
    SincStretch(const SincStretch&) = delete;
    SincStretch& operator=(const SincStretch&) = delete;

    const TapAxis<double>& Axis() const noexcept { return m_axis; }
    ITwoPassKernel& Kernel() const noexcept { return *m_pKernel; }

private:
    template <class Sample> std::unique_ptr<ITwoPassKernel> MakeKernel(std::uint32_t samples) const;

    std::uint32_t m_sourceSize;
    TapAxis<double> m_axis;
    SincFloatAxis m_float;
    std::unique_ptr<ITwoPassKernel> m_pKernel;
};

} // namespace ImagingFramework
