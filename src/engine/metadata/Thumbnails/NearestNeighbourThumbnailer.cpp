#include "metadata/Thumbnails/NearestNeighbourThumbnailer.h"

#include <algorithm>
#include <cstring>

namespace ImagingFramework {

namespace {

/// For each target position the first source position that reaches it. Sources run in steps of the sizes' ratio, which are
/// added up; where rounding lets the sum fall short of the last targets, those take the last source.
std::vector<std::uint32_t> MakeSources(std::uint32_t sourceSize, std::uint32_t targetSize) {
    std::vector<std::uint32_t> sources;
    sources.reserve(targetSize);
    const double step = static_cast<double>(targetSize) / sourceSize;
    double position = 0.0;
    for (std::uint32_t source = 0; source < sourceSize && sources.size() < targetSize; ++source) {
        if (static_cast<std::size_t>(position) >= sources.size()) {
            sources.push_back(source);
        }
        position += step;
    }
    sources.resize(targetSize, sourceSize - 1);
    return sources;
}

} // namespace

NearestNeighbourThumbnailer::NearestNeighbourThumbnailer(std::uint32_t imageWidth, std::uint32_t imageHeight,
                                                         PixelFormat imageFormat, const ColorMap* pImageColorMap,
                                                         BitmapData* pThumbBitmapData)
    : IThumbnailCreatorImpl(imageWidth, imageHeight, imageFormat, pImageColorMap, pThumbBitmapData),
      m_rows(MakeSources(imageHeight, m_uintThumbHeight)),
      m_sampler(MakeSources(imageWidth, m_uintThumbWidth), imageFormat, pImageColorMap) {}

void NearestNeighbourThumbnailer::SetScanline(std::uint32_t rowIndex, const std::uint8_t* rowData) {
    const auto [first, end] = std::ranges::equal_range(m_rows, rowIndex);
    for (auto row = first; row != end; ++row) {
        std::memcpy(m_pThumbBitmapData->GetScanlineRef(static_cast<std::uint32_t>(row - m_rows.begin())),
                    m_sampler.Sample(rowData), std::size_t{m_uintThumbWidth} * RowToArgb::PixelSize);
    }
}

} // namespace ImagingFramework
