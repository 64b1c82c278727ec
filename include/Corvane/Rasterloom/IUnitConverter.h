#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/Unit.h>

namespace Corvane::Rasterloom {

/// An object with a current unit, in which sizes and positions go in and out.
class RASTERLOOM_API IUnitConverter {
public:
    virtual ~IUnitConverter();

    /// The current unit.
    virtual Unit get_Unit() = 0;
    virtual void set_Unit(Unit value) = 0;
};

} // namespace Corvane::Rasterloom
