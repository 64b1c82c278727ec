#include "metadata/Thumbnails/NearestNeighbourThumbnailer.h"

#include <cstring>

namespace ImagingFramework {

namespace {

/// The target of each source position, which runs in steps; -1 behind the first one that reaches it.
std::vector<std::int32_t> MakeTargets(std::uint32_t sourceSize, std::uint32_t targetSize) {
    std::vector<std::int32_t> targets(sourceSize, -1);
    const double step = static_cast<double>(targetSize) / sourceSize;
    double position = 0.0;
    std::int64_t previous = -1;
    for (std::int32_t& target : targets) {
        const auto reached = static_cast<std::int64_t>(position);
        if (reached != previous && reached < targetSize) {
            target = static_cast<std::int32_t>(reached);
        }
        previous = reached;
        position += step;
    }
    return targets;
}

} // namespace

NearestNeighbourThumbnailer::NearestNeighbourThumbnailer(std::uint32_t imageWidth, std::uint32_t imageHeight,
                                                         PixelFormat imageFormat, const ColorMap* pImageColorMap,
                                                         BitmapData* pThumbBitmapData)
    : IThumbnailCreatorImpl(imageWidth, imageHeight, imageFormat, pImageColorMap, pThumbBitmapData),
      m_rowTargets(MakeTargets(imageHeight, m_uintThumbHeight)),
      m_columnTargets(MakeTargets(imageWidth, m_uintThumbWidth)), m_converter(imageWidth, imageFormat, pImageColorMap) {
}

void NearestNeighbourThumbnailer::SetScanline(std::uint32_t rowIndex, const std::uint8_t* rowData) {
    const std::int32_t target = rowIndex < m_rowTargets.size() ? m_rowTargets[rowIndex] : -1;
    if (target < 0) {
        return;
    }
    constexpr std::size_t pixelSize = RowToArgb::PixelSize;
    const std::uint8_t* const pSource = m_converter.Convert(rowData);
    std::uint8_t* const pTarget = m_pThumbBitmapData->GetScanlineRef(static_cast<std::uint32_t>(target));
    for (std::size_t x = 0; x < m_columnTargets.size(); ++x) {
        if (m_columnTargets[x] >= 0) {
            std::memcpy(pTarget + static_cast<std::size_t>(m_columnTargets[x]) * pixelSize, pSource + x * pixelSize,
                        pixelSize);
        }
    }
}

} // namespace ImagingFramework
