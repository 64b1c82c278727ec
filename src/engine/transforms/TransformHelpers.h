#pragma once

#include <cstdint>

namespace ImagingFramework {

/// The degrees of an angle in [0, 360); 360 minus that of the absolute value for a negative one, so that a negative multiple
/// of 360 gives 360. Beyond the range of 64-bit integers the angle counts as 0.
double NormalizeDegrees(double angle);

/// How an effect fades out towards the edge of its frame.
enum class FadeType : std::uint32_t { None = 0, Linear = 1, Nonlinear = 2 };

/// The share of an effect at `position` of a frame of `length` pixels: a straight line, a quarter of a sine, or 0. Always 0
/// for a length not above 0.001.
double FadeFactor(double position, double length, FadeType kind);

} // namespace ImagingFramework
