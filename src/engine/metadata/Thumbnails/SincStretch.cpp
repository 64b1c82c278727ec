#include "metadata/Thumbnails/SincStretch.h"

#include <type_traits>

namespace ImagingFramework {

SincStretch::SincStretch(std::uint32_t sourceSize, std::uint32_t newSize, std::uint32_t first, std::uint32_t count,
                         std::uint32_t samples, std::size_t sampleSize)
    : m_sourceSize(sourceSize), m_axis(SincResampleHelper::CreateAxis(sourceSize, newSize, first, count)),
      m_float(m_axis),
      m_pKernel(sampleSize == 1 ? MakeKernel<std::uint8_t>(samples) : MakeKernel<std::uint16_t>(samples)) {}

template <class Sample> std::unique_ptr<ITwoPassKernel> SincStretch::MakeKernel(std::uint32_t samples) const {
    const auto make = [this]<class Layout>(Layout) -> std::unique_ptr<ITwoPassKernel> {
        if constexpr (std::is_same_v<Sample, std::uint8_t>) {
            return std::make_unique<FloatSincKernel<Layout>>(m_float, m_float, m_sourceSize);
        } else {
            return std::make_unique<PlainTwoPassKernel<SincPolicy, Layout>>(m_axis, m_axis);
        }
    };
    switch (samples) {
    case 1:
        return make(PixelLayout<Sample, 1, false>());
    case 2:
        return make(PixelLayout<Sample, 2, false>());
    case 3:
        return make(PixelLayout<Sample, 3, false>());
    case 4:
        return make(PixelLayout<Sample, 4, false>());
    case 5:
        return make(PixelLayout<Sample, 5, false>());
    default:
        throw UnsupportedPixelFormatException();
    }
}

} // namespace ImagingFramework
