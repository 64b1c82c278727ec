#pragma once

#include <cstdint>

namespace ImagingFramework {

/// Units of length. The values equal those of the public enumeration; `Micrometer` has no public name.
enum class LinearUnit : std::uint32_t {
    Pixel = 0,
    Inch = 1,
    Mm = 2,
    Cm = 3,
    M = 4,
    Point = 5,
    Pica = 6,
    Column = 7,
    Twip = 8,
    Document = 9,
    Micrometer = 10,
};

/// How many of a unit make an inch; a value that is no unit counts as inches. 96 for pixels, which only scaling uses.
double UnitsPerInch(LinearUnit unit) noexcept;

/// One of a unit in inches. Resolutions change their unit by it: per inch they are `resolution / InchesPerUnit`.
inline double InchesPerUnit(LinearUnit unit) noexcept { return 1.0 / UnitsPerInch(unit); }

/// Conversion of lengths between pixels and units. Resolutions are pixels per inch.
class SpaceUnitConverter {
public:
    /// Rounded to the nearest pixel. Fails with `OverflowException` when the result does not fit 32 bits.
    static std::int32_t ConvertToPixels(double value, LinearUnit unit, double resolution);
    /// Fails with `ArgumentOutOfRangeException` ("fDestDpi") for a resolution not above 1e-11.
    static double ConvertFromPixels(std::int32_t pixels, double resolution, LinearUnit unit);
    /// From pixels, the value is cut to a whole pixel first.
    static double ConvertUnitsToUnits(double value, LinearUnit sourceUnit, double resolution, LinearUnit destinationUnit);
};

} // namespace ImagingFramework
