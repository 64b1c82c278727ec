#include "Common/SpaceUnitConverter.h"

#include "Common/Numeric.h"

namespace ImagingFramework {

double UnitsPerInch(LinearUnit unit) noexcept {
    switch (unit) {
    case LinearUnit::Pixel:
        return 96.0;
    case LinearUnit::Inch:
        return 1.0;
    case LinearUnit::Mm:
        return 25.4;
    case LinearUnit::Cm:
        return 2.54;
    case LinearUnit::M:
        return 0.0254;
    case LinearUnit::Point:
        return 72.0;
    case LinearUnit::Pica:
        return 6.0;
    case LinearUnit::Column:
        return 2.63;
    case LinearUnit::Twip:
        return 1440.0;
    case LinearUnit::Document:
        return 300.0;
    case LinearUnit::Micrometer:
        return 25400.0;
    }
    return 1.0;
}

std::int32_t SpaceUnitConverter::ConvertToPixels(double value, LinearUnit unit, double resolution) {
    return Round(unit == LinearUnit::Pixel ? value : value / UnitsPerInch(unit) * resolution);
}

double SpaceUnitConverter::ConvertFromPixels(std::int32_t pixels, double resolution, LinearUnit unit) {
    if (unit == LinearUnit::Pixel) {
        return pixels;
    }
    if (!(resolution > 1e-11)) {
        throw ArgumentOutOfRangeException("fDestDpi");
    }
    return pixels / resolution * UnitsPerInch(unit);
}

double SpaceUnitConverter::ConvertUnitsToUnits(double value, LinearUnit sourceUnit, double resolution,
                                               LinearUnit destinationUnit) {
    if (destinationUnit == LinearUnit::Pixel) {
        return ConvertToPixels(value, sourceUnit, resolution);
    }
    if (sourceUnit == LinearUnit::Pixel) {
        return ConvertFromPixels(TruncateToInt32(value), resolution, destinationUnit);
    }
    return value / UnitsPerInch(sourceUnit) * UnitsPerInch(destinationUnit);
}

} // namespace ImagingFramework
