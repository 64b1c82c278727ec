#include "transforms/geometry/Rotation.h"

#include <algorithm>
#include <cstring>

namespace ImagingFramework {

namespace {

constexpr std::uint32_t TileWidth = 128;
constexpr std::uint32_t TileHeight = 32;
constexpr std::int64_t One = 65536;

} // namespace

Rotation::Rotation(const BitmapData& source, BitmapData& destination, const RotationMap& map,
                   const std::uint8_t* pBackground, bool bilinear)
    : m_destination(destination), m_map(map),
      m_kernel(bilinear ? BilinearRotation(source.GetPixelFormat()) : NearestRotation(source.GetPixelFormat())),
      m_pixelSize(PixelFormatSize(source.GetPixelFormat()) / 8), m_background(TileWidth * m_pixelSize),
      m_source{source.GetPixelsRef(), source.GetStride(), source.GetWidth(), source.GetHeight(), m_background.data()} {
    for (std::size_t i = 0; i < m_background.size(); i += m_pixelSize) {
        std::memcpy(m_background.data() + i, pBackground, m_pixelSize);
    }
}

std::uint32_t Rotation::NextBand(std::uint32_t first) const {
    return first + std::min(TileHeight, m_destination.GetHeight() - first);
}

Rotation::RowPlan Rotation::PlanRow(std::uint32_t y) const {
    const std::uint32_t width = m_destination.GetWidth();
    const RotationMap::Position step = m_map.Step();
    RowPlan plan{m_map.RowStart(y), {0, 0}, {0, 0}};
    plan.Start.X += m_kernel.Offset;
    plan.Start.Y += m_kernel.Offset;
    const auto within = [&](std::int64_t low, std::int64_t right, std::int64_t bottom) {
        return Intersect(FindRange(plan.Start.X, step.X, low, right * One - 1, width),
                         FindRange(plan.Start.Y, step.Y, low, bottom * One - 1, width));
    };
    plan.Inside = within(0, std::int64_t{m_source.Width} - m_kernel.MarginX,
                         std::int64_t{m_source.Height} - m_kernel.MarginY);
    plan.Touched = m_kernel.Edge == nullptr ? plan.Inside : within(1 - One, m_source.Width, m_source.Height);
    if (plan.Touched.IsEmpty()) {
        plan.Touched = {0, 0};
    }
    if (plan.Inside.IsEmpty()) {
        plan.Inside = {plan.Touched.End, plan.Touched.End};
    }
    return plan;
}

void Rotation::FillRows(std::uint32_t first, std::uint32_t end) {
    m_plans.clear();
    for (std::uint32_t y = first; y < end; ++y) {
        m_plans.push_back(PlanRow(y));
    }
    const std::uint32_t width = m_destination.GetWidth();
    for (std::uint32_t left = 0; left < width;) {
        const PixelRange part{left, left + std::min(TileWidth, width - left)};
        for (std::uint32_t y = first; y < end; ++y) {
            FillPart(m_destination.GetScanlineRef(y), m_plans[y - first], part);
        }
        left = part.End;
    }
}

void Rotation::FillPart(std::uint8_t* pRow, const RowPlan& plan, const PixelRange& part) const {
    const auto clamped = [&part](std::uint32_t x) { return std::clamp(x, part.First, part.End); };
    const PixelRange touched{clamped(plan.Touched.First), clamped(plan.Touched.End)};
    const PixelRange inside{clamped(plan.Inside.First), clamped(plan.Inside.End)};
    FillBackground(pRow, part.First, touched.First);
    Sample(m_kernel.Edge, pRow, plan, touched.First, inside.First);
    Sample(m_kernel.Inside, pRow, plan, inside.First, inside.End);
    Sample(m_kernel.Edge, pRow, plan, inside.End, touched.End);
    FillBackground(pRow, touched.End, part.End);
}

void Rotation::FillBackground(std::uint8_t* pRow, std::uint32_t first, std::uint32_t end) const {
    std::memcpy(pRow + first * m_pixelSize, m_background.data(), (end - first) * m_pixelSize);
}

void Rotation::Sample(RotationFill fill, std::uint8_t* pRow, const RowPlan& plan, std::uint32_t first,
                      std::uint32_t end) const {
    if (first >= end) {
        return;
    }
    const RotationMap::Position step = m_map.Step();
    fill(m_source, {plan.Start.X + step.X * first, plan.Start.Y + step.Y * first, step.X, step.Y,
                    pRow + first * m_pixelSize, end - first});
}

} // namespace ImagingFramework
