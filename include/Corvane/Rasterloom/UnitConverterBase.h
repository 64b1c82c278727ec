#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/IUnitConverter.h>
#include <Corvane/Rasterloom/Unit.h>

#include <cstdint>

namespace Corvane::Rasterloom {

/// The unit and the two resolutions of an object, on top of `Base`, which brings the lock. See `UnitConverterObject`
/// and `UnitConverterHandler`. Members with a leading underscore do not take the lock.
template <class Base>
class UnitConverterBase : public Base, public IUnitConverter {
public:
    /// Pixels per inch.
    float get_HorizontalResolution();
    void set_HorizontalResolution(float value);
    float get_VerticalResolution();
    void set_VerticalResolution(float value);

    /// `Unit::Pixel` at first. Setting it also forgets a unit kept by `_SaveUnit`. Fails with `Host::ArgumentException`
    /// for a value without a name.
    Unit get_Unit() override;
    void set_Unit(Unit value) override;

    /// To the current unit; fails as `UnitConverter` does.
    float HorizontalPixelsToUnits(std::int32_t pixels);
    float VerticalPixelsToUnits(std::int32_t pixels);
    /// From the current unit; fails as `UnitConverter` does.
    std::int32_t HorizontalUnitsToPixels(float value);
    std::int32_t VerticalUnitsToPixels(float value);

    float get__HorizontalResolution();
    void set__HorizontalResolution(float value);
    float get__VerticalResolution();
    void set__VerticalResolution(float value);
    Unit get__Unit() const noexcept { return m_enUnit; }
    void set__Unit(Unit value);
    float _HorizontalPixelsToUnits(std::int32_t pixels);
    float _VerticalPixelsToUnits(std::int32_t pixels);
    std::int32_t _HorizontalUnitsToPixels(float value);
    std::int32_t _VerticalUnitsToPixels(float value);
    /// Sets a unit until `_RestoreUnit`; one level deep.
    void _SaveUnit(Unit value);
    void _RestoreUnit() noexcept { m_enUnit = m_enOldUnit; }

protected:
    /// Where the resolutions live; called with the lock held.
    virtual float GetHorizontalResolution() = 0;
    /// Called with the lock held, as these four are.
    virtual void SetHorizontalResolution(float value) = 0;
    virtual float GetVerticalResolution() = 0;
    virtual void SetVerticalResolution(float value) = 0;

private:
    Unit m_enUnit = Unit::Pixel;
    Unit m_enOldUnit = Unit::Pixel;
};

} // namespace Corvane::Rasterloom
