#pragma once

#include "ErrorHandling/Exceptions.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace ImagingFramework {

/// floor(x + 0.5) as a 32-bit integer. Fails with `OverflowException` when the result does not fit, and on NaN.
inline std::int32_t Round(double x) {
    const double rounded = std::floor(x + 0.5);
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() && rounded <= std::numeric_limits<std::int32_t>::max())) {
        throw OverflowException();
    }
    return static_cast<std::int32_t>(rounded);
}

/// Cuts the fraction off; values beyond the range give its ends, NaN gives 0.
inline std::int32_t TruncateToInt32(double x) {
    constexpr double low = std::numeric_limits<std::int32_t>::min();
    constexpr double high = std::numeric_limits<std::int32_t>::max();
    if (x != x) {
        return 0;
    }
    return static_cast<std::int32_t>(x < low ? low : (x > high ? high : x));
}

/// The product of two sizes. Fails with `OverflowException` when it exceeds 64 bits.
inline std::uint64_t CheckedProduct(std::uint64_t a, std::uint64_t b) {
    std::uint64_t product = 0;
    if (__builtin_mul_overflow(a, b, &product)) {
        throw OverflowException();
    }
    return product;
}

} // namespace ImagingFramework
