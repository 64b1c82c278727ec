#include "metadata/Thumbnails/ArgbSampler.h"

#include <utility>

namespace ImagingFramework {

ArgbSampler::ArgbSampler(std::vector<std::uint32_t> columns, PixelFormat format, const ColorMap* pColorMap)
    : m_columns(std::move(columns)), m_pick(ChoosePixelPicker(format)),
      m_picked(CheckedStride(static_cast<std::uint32_t>(m_columns.size()), format, 1)),
      m_converter(static_cast<std::uint32_t>(m_columns.size()), format, pColorMap) {}

const std::uint8_t* ArgbSampler::Sample(const std::uint8_t* pRow) {
    m_pick(pRow, m_picked.data(), m_columns);
    return m_converter.Convert(m_picked.data());
}

} // namespace ImagingFramework
