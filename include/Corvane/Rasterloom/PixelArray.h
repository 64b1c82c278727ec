#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Corvane::Rasterloom {

/// Integer samples in a box of any number of dimensions; pixels stand in one of rank 3, indexed [x, y, channel]. A
/// default-constructed one is "no array". The last index runs fastest.
class RASTERLOOM_API PixelArray {
public:
    PixelArray() = default;
    /// Zeroed, of the given lengths. Fails with `Host::ArgumentOutOfRangeException` ("lengths") for a negative length
    /// or a box that memory cannot hold.
    explicit PixelArray(std::vector<std::int32_t> lengths);
    PixelArray(std::int32_t width, std::int32_t height, std::int32_t channels);

    /// Whether it is "no array".
    bool get_IsNull() const noexcept { return m_lengths.empty(); }
    /// Number of dimensions; 0 for "no array".
    std::int32_t get_Rank() const noexcept { return static_cast<std::int32_t>(m_lengths.size()); }
    /// Fails with `Host::ArgumentOutOfRangeException` ("dimension").
    std::int32_t GetLength(std::int32_t dimension) const;
    /// Access to a box of rank 3. Fails with `Host::ArgumentOutOfRangeException` outside it.
    std::int32_t& operator()(std::int32_t x, std::int32_t y, std::int32_t channel) { return m_values[Index(x, y, channel)]; }
    std::int32_t operator()(std::int32_t x, std::int32_t y, std::int32_t channel) const {
        return m_values[Index(x, y, channel)];
    }
    /// All samples, the last index fastest.
    const std::vector<std::int32_t>& get_Values() const noexcept { return m_values; }
    bool operator==(const PixelArray&) const = default;

private:
    std::size_t Index(std::int32_t x, std::int32_t y, std::int32_t channel) const;

    std::vector<std::int32_t> m_lengths;
    std::vector<std::int32_t> m_values;
};

} // namespace Corvane::Rasterloom
