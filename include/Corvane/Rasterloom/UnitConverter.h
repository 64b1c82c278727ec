#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/Unit.h>

#include <cstdint>

namespace Corvane::Rasterloom {

/// Conversion of lengths between units. `resolution` is in pixels per inch and must be above 0, or all of these fail
/// with `Host::ArgumentOutOfRangeException` for "resolution"; a unit without a name fails with
/// `Host::ArgumentException`.
class RASTERLOOM_API UnitConverter {
public:
    UnitConverter() = delete;

    /// To pixels the result is rounded to a whole one, from pixels the value is first cut to a whole one. Fails with
    /// `Host::OverflowException` when a pixel value does not fit 32 bits.
    static float ConvertUnitsToUnits(double resolution, double value, Unit sourceUnit, Unit destinationUnit);
    /// Whole pixels, rounded to the nearest, halves up. Fails with `Host::ArgumentException` when they do not fit 32
    /// bits.
    static float ConvertUnitsToPixels(double resolution, double value, Unit sourceUnit);
    /// `pixels` is rounded first. Fails with `Host::ArgumentException` when it does not fit 32 bits.
    static float ConvertPixelsToUnits(double resolution, double pixels, Unit destinationUnit);

    /// Internal: `ConvertUnitsToPixels` without the way through `float`.
    static std::int32_t _ConvertUnitsToPixels(double resolution, double value, Unit sourceUnit);
};

} // namespace Corvane::Rasterloom
