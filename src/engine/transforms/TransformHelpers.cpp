#include "transforms/TransformHelpers.h"

#include <cmath>
#include <numbers>

namespace ImagingFramework {

double NormalizeDegrees(double angle) {
    if (angle < 0.0) {
        return 360.0 - NormalizeDegrees(-angle);
    }
    const double whole = std::floor(angle);
    if (!(whole < 9.0e18)) {
        return 0.0;
    }
    return static_cast<double>(static_cast<std::int64_t>(whole) % 360) + (angle - whole);
}

double FadeFactor(double position, double length, FadeType kind) {
    if (!(length > 0.001)) {
        return 0.0;
    }
    switch (kind) {
    case FadeType::Linear:
        return position / length;
    case FadeType::Nonlinear:
        return std::sin(position * std::numbers::pi / length / 2.0);
    default:
        return 0.0;
    }
}

} // namespace ImagingFramework
