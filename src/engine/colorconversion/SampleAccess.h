#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

// Loads and stores of samples that stand at any address.

namespace ImagingFramework {

template <class Sample>
inline Sample LoadSample(const std::uint8_t* source, std::size_t index) {
    Sample value;
    std::memcpy(&value, source + index * sizeof(Sample), sizeof(Sample));
    return value;
}

template <class Sample>
inline void StoreSample(std::uint8_t* destination, std::size_t index, Sample value) {
    std::memcpy(destination + index * sizeof(Sample), &value, sizeof(Sample));
}

} // namespace ImagingFramework
