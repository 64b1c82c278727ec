#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// A k-d tree for the nearest of a set of points, by a weighted square distance. Palettes use four dimensions.
///
/// The build and the search follow fixed orders, so that equal distances always end in the same answer: a search starts
/// from the answer before it and only a strictly smaller distance replaces an answer.
template <std::size_t Dimensions> class KDNearestNeighbourSearch {
public:
    using Point = std::array<std::int32_t, Dimensions>;

    /// One weight per axis; another number of them fails with `ArgumentException`.
    explicit KDNearestNeighbourSearch(std::vector<std::uint32_t> weights);

    /// Coordinates are 0 to 255.
    void Build(std::vector<Point> points);
    /// Index of the nearest point; with no points, 0.
    std::uint32_t Find(const Point& query);

    const std::vector<Point>& GetPoints() const noexcept { return m_points; }
    std::uint32_t GetLastFound() const noexcept { return m_uintLastFound; }
    /// Tells the tree an answer that was found without it, from which the next search starts. Must be one of the points.
    void SetLastFound(std::uint32_t point) noexcept { m_uintLastFound = point; }
    std::uint32_t Distance(const Point& query, std::uint32_t point) const noexcept;

private:
    struct Node {
        bool IsLeaf = true;
        std::uint32_t PointIndex = 0;
        std::uint32_t Left = 0;
        std::uint32_t Right = 0;
        std::uint32_t Axis = 0;
        std::int32_t Split = 0;
    };

    void BuildNode(std::uint32_t node, std::size_t low, std::size_t high);
    std::size_t ChooseAxis(std::size_t low, std::size_t high) const;
    void SortAxis(std::size_t axis);
    void MergeSort(std::vector<std::uint32_t>& list, std::size_t axis, std::size_t low, std::size_t high);
    void Partition(std::size_t axis, std::size_t low, std::size_t high);
    void Visit(std::uint32_t node, std::uint32_t bound, const Point& query);

    std::vector<Point> m_points;
    std::array<std::uint32_t, Dimensions> m_weights{};
    std::vector<Node> m_nodes;
    std::array<std::vector<std::uint32_t>, Dimensions> m_lists; ///< point indices, sorted by each axis
    std::vector<std::uint32_t> m_scratch;
    std::vector<std::uint8_t> m_isLower; ///< by point index, while a range is split
    std::array<std::int32_t, Dimensions> m_offsets{};
    std::uint32_t m_uintBest = 0;
    std::uint32_t m_uintBestDistance = 0;
    std::uint32_t m_uintLastFound = 0;
};

extern template class KDNearestNeighbourSearch<4>;

} // namespace ImagingFramework
