#pragma once

#include <cstdint>

namespace ImagingFramework {

/// Uniform numbers of any range, by a 64-bit counter whose steps are mixed. A seed always gives the same sequence.
class UniformRandom {
public:
    explicit UniformRandom(std::uint64_t seed) : m_uintState(seed) {}

    /// 0 to `limit` - 1; some numbers are more likely than others by at most limit / 2^64.
    std::uint64_t Below(std::uint64_t limit) {
        return static_cast<std::uint64_t>(static_cast<unsigned __int128>(Next()) * limit >> 64);
    }

private:
    /// The generator "SplitMix64".
    std::uint64_t Next() {
        std::uint64_t mixed = m_uintState += 0x9E3779B97F4A7C15U;
        mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EBU;
        return mixed ^ mixed >> 31;
    }

    std::uint64_t m_uintState;
};

} // namespace ImagingFramework
