#include "Common/KDNearestNeighbourSearch.h"

#include "ErrorHandling/Exceptions.h"

#include <algorithm>
#include <numeric>

namespace ImagingFramework {

template <std::size_t Dimensions>
KDNearestNeighbourSearch<Dimensions>::KDNearestNeighbourSearch(std::vector<std::uint32_t> weights) {
    if (weights.size() != Dimensions) {
        throw ArgumentException("weights");
    }
    std::copy(weights.begin(), weights.end(), m_weights.begin());
}

template <std::size_t Dimensions>
void KDNearestNeighbourSearch<Dimensions>::Build(std::vector<Point> points) {
    m_uintLastFound = 0;
    m_points = std::move(points);
    m_scratch.resize(m_points.size());
    m_isLower.resize(m_points.size());
    for (std::size_t axis = 0; axis < Dimensions; ++axis) {
        SortAxis(axis);
    }
    m_nodes.clear();
    m_nodes.reserve(m_points.size() * 2 + 1);
    m_nodes.emplace_back();
    if (!m_points.empty()) {
        BuildNode(0, 0, m_points.size() - 1);
    }
}

template <std::size_t Dimensions>
void KDNearestNeighbourSearch<Dimensions>::SortAxis(std::size_t axis) {
    auto& list = m_lists[axis];
    list.resize(m_points.size());
    std::iota(list.begin(), list.end(), 0U);
    if (!list.empty()) {
        MergeSort(list, axis, 0, list.size() - 1);
    }
}

/// Takes from the left half only what is strictly smaller, so equal values come out right element first.
template <std::size_t Dimensions>
void KDNearestNeighbourSearch<Dimensions>::MergeSort(std::vector<std::uint32_t>& list, std::size_t axis, std::size_t low,
                                         std::size_t high) {
    if (low == high) {
        return;
    }
    const std::size_t middle = (low + high) / 2;
    MergeSort(list, axis, low, middle);
    MergeSort(list, axis, middle + 1, high);
    std::size_t left = low;
    std::size_t right = middle + 1;
    for (std::size_t out = low; out <= high; ++out) {
        const bool takeLeft =
            right > high || (left <= middle && m_points[list[left]][axis] < m_points[list[right]][axis]);
        m_scratch[out] = takeLeft ? list[left++] : list[right++];
    }
    std::copy(m_scratch.begin() + static_cast<std::ptrdiff_t>(low), m_scratch.begin() + static_cast<std::ptrdiff_t>(high) + 1,
              list.begin() + static_cast<std::ptrdiff_t>(low));
}

/// The axis with the largest spread, weights aside; the first one when all points are equal.
template <std::size_t Dimensions>
std::size_t KDNearestNeighbourSearch<Dimensions>::ChooseAxis(std::size_t low, std::size_t high) const {
    const auto count = static_cast<std::int64_t>(high - low + 1);
    std::size_t best = 0;
    std::int64_t bestSpread = 0;
    for (std::size_t axis = 0; axis < Dimensions; ++axis) {
        std::int64_t sum = 0;
        for (std::size_t i = low; i <= high; ++i) {
            sum += m_points[m_lists[axis][i]][axis];
        }
        std::int64_t spread = 0;
        for (std::size_t i = low; i <= high; ++i) {
            const std::int64_t deviation = m_points[m_lists[axis][i]][axis] * count - sum;
            spread += deviation * deviation;
        }
        if (spread > bestSpread) {
            bestSpread = spread;
            best = axis;
        }
    }
    return best;
}

template <std::size_t Dimensions>
void KDNearestNeighbourSearch<Dimensions>::Partition(std::size_t axis, std::size_t low, std::size_t high) {
    const auto begin = m_lists[axis].begin() + static_cast<std::ptrdiff_t>(low);
    const auto end = m_lists[axis].begin() + static_cast<std::ptrdiff_t>(high) + 1;
    auto lower = begin;
    std::size_t upper = 0;
    for (auto it = begin; it != end; ++it) {
        if (m_isLower[*it] != 0) {
            *lower++ = *it;
        } else {
            m_scratch[upper++] = *it;
        }
    }
    std::copy_n(m_scratch.begin(), upper, lower);
}

template <std::size_t Dimensions>
void KDNearestNeighbourSearch<Dimensions>::BuildNode(std::uint32_t node, std::size_t low, std::size_t high) {
    for (;;) {
        if (low == high) {
            m_nodes[node].IsLeaf = true;
            m_nodes[node].PointIndex = m_lists[0][low];
            return;
        }
        const auto left = static_cast<std::uint32_t>(m_nodes.size());
        const std::uint32_t right = left + 1;
        m_nodes.emplace_back();
        m_nodes.emplace_back();
        const std::size_t axis = ChooseAxis(low, high);
        const std::size_t middle = (low + high) / 2;
        const auto& list = m_lists[axis];
        for (std::size_t i = low; i <= high; ++i) {
            m_isLower[list[i]] = i <= middle ? 1 : 0;
        }
        for (std::size_t other = 0; other < Dimensions; ++other) {
            if (other != axis) {
                Partition(other, low, high);
            }
        }
        m_nodes[node] = {false, 0, left, right, static_cast<std::uint32_t>(axis), m_points[list[middle]][axis]};
        BuildNode(left, low, middle);
        node = right;
        low = middle + 1;
    }
}

template <std::size_t Dimensions>
std::uint32_t KDNearestNeighbourSearch<Dimensions>::Distance(const Point& query, std::uint32_t point) const noexcept {
    std::uint32_t distance = 0;
    for (std::size_t axis = 0; axis < Dimensions; ++axis) {
        const std::int32_t d = query[axis] - m_points[point][axis];
        distance += m_weights[axis] * static_cast<std::uint32_t>(d * d);
    }
    return distance;
}

template <std::size_t Dimensions>
std::uint32_t KDNearestNeighbourSearch<Dimensions>::Find(const Point& query) {
    if (m_points.empty()) {
        return 0;
    }
    m_uintBest = m_uintLastFound;
    m_uintBestDistance = Distance(query, m_uintBest);
    Visit(0, 0, query);
    m_uintLastFound = m_uintBest;
    return m_uintBest;
}

template <std::size_t Dimensions>
void KDNearestNeighbourSearch<Dimensions>::Visit(std::uint32_t index, std::uint32_t bound, const Point& query) {
    const Node& node = m_nodes[index];
    if (node.IsLeaf) {
        const std::uint32_t distance = Distance(query, node.PointIndex);
        if (distance < m_uintBestDistance) {
            m_uintBestDistance = distance;
            m_uintBest = node.PointIndex;
        }
        return;
    }
    const std::int32_t d = query[node.Axis] - node.Split;
    const std::int32_t old = m_offsets[node.Axis];
    // The far side is at least as far as its cell; the bound grows by what this axis adds to the offset known so far.
    const auto farther = static_cast<std::uint32_t>(d * d - old * old) * m_weights[node.Axis] + bound;
    const bool nearIsRight = d >= 0;
    Visit(nearIsRight ? node.Right : node.Left, bound, query);
    if (farther < m_uintBestDistance) {
        m_offsets[node.Axis] = d;
        Visit(nearIsRight ? node.Left : node.Right, farther, query);
        m_offsets[node.Axis] = old;
    }
}

template class KDNearestNeighbourSearch<4>;

} // namespace ImagingFramework
