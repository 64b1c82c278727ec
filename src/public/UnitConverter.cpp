#include <Corvane/Rasterloom/UnitConverter.h>

#include "CallEngine.h"
#include "Common/Numeric.h"
#include "Common/SpaceUnitConverter.h"
#include "Validator.h"

namespace Corvane::Rasterloom {

namespace {

using ImagingFramework::LinearUnit;
using ImagingFramework::SpaceUnitConverter;

LinearUnit TransformUnit(Unit unit) {
    return static_cast<LinearUnit>(unit);
}

void ValidateResolution(double resolution) {
    if (!(resolution > 0.0)) {
        throw Host::ArgumentOutOfRangeException("resolution");
    }
}

/// Runs a step of the engine; a pixel value that does not fit becomes an argument failure with `text`.
template <class F>
auto ConvertChecked(const char* text, const char* argument, F&& step) {
    return CallEngine([&] {
        try {
            return step();
        } catch (const ImagingFramework::OverflowException&) {
            throw Host::ArgumentException(text, argument);
        }
    });
}

} // namespace

float UnitConverter::ConvertUnitsToUnits(double resolution, double value, Unit sourceUnit, Unit destinationUnit) {
    ValidateResolution(resolution);
    Validator::ValidateEnum("sourceUnit", sourceUnit);
    Validator::ValidateEnum("destinationUnit", destinationUnit);
    return static_cast<float>(CallEngine([&] {
        return SpaceUnitConverter::ConvertUnitsToUnits(value, TransformUnit(sourceUnit), resolution,
                                                       TransformUnit(destinationUnit));
    }));
}

std::int32_t UnitConverter::_ConvertUnitsToPixels(double resolution, double value, Unit sourceUnit) {
    ValidateResolution(resolution);
    Validator::ValidateEnum("sourceUnit", sourceUnit);
    return ConvertChecked("You specify units value that cannot be converted to pixels.", "value", [&] {
        return SpaceUnitConverter::ConvertToPixels(value, TransformUnit(sourceUnit), resolution);
    });
}

float UnitConverter::ConvertUnitsToPixels(double resolution, double value, Unit sourceUnit) {
    return static_cast<float>(_ConvertUnitsToPixels(resolution, value, sourceUnit));
}

float UnitConverter::ConvertPixelsToUnits(double resolution, double pixels, Unit destinationUnit) {
    ValidateResolution(resolution);
    Validator::ValidateEnum("destinationUnit", destinationUnit);
    return ConvertChecked("You specify pixels value that cannot be converted to units.", "pixels", [&] {
        return static_cast<float>(SpaceUnitConverter::ConvertFromPixels(ImagingFramework::Round(pixels), resolution,
                                                                        TransformUnit(destinationUnit)));
    });
}

} // namespace Corvane::Rasterloom
