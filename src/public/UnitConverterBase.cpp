#include <Corvane/Rasterloom/UnitConverter.h>
#include <Corvane/Rasterloom/UnitConverterHandler.h>
#include <Corvane/Rasterloom/UnitConverterObject.h>

#include "ObjectGuard.h"
#include "Validator.h"

namespace Corvane::Rasterloom {

IUnitConverter::~IUnitConverter() = default;

// --- With the lock

template <class Base>
float UnitConverterBase<Base>::get_HorizontalResolution() {
    const ObjectGuard guard(*this);
    return get__HorizontalResolution();
}

template <class Base>
void UnitConverterBase<Base>::set_HorizontalResolution(float value) {
    const ObjectGuard guard(*this);
    set__HorizontalResolution(value);
}

template <class Base>
float UnitConverterBase<Base>::get_VerticalResolution() {
    const ObjectGuard guard(*this);
    return get__VerticalResolution();
}

template <class Base>
void UnitConverterBase<Base>::set_VerticalResolution(float value) {
    const ObjectGuard guard(*this);
    set__VerticalResolution(value);
}

template <class Base>
Unit UnitConverterBase<Base>::get_Unit() {
    const ObjectGuard guard(*this);
    return get__Unit();
}

template <class Base>
void UnitConverterBase<Base>::set_Unit(Unit value) {
    const ObjectGuard guard(*this);
    set__Unit(value);
}

template <class Base>
float UnitConverterBase<Base>::HorizontalPixelsToUnits(std::int32_t pixels) {
    const ObjectGuard guard(*this);
    return _HorizontalPixelsToUnits(pixels);
}

template <class Base>
float UnitConverterBase<Base>::VerticalPixelsToUnits(std::int32_t pixels) {
    const ObjectGuard guard(*this);
    return _VerticalPixelsToUnits(pixels);
}

template <class Base>
std::int32_t UnitConverterBase<Base>::HorizontalUnitsToPixels(float value) {
    const ObjectGuard guard(*this);
    return _HorizontalUnitsToPixels(value);
}

template <class Base>
std::int32_t UnitConverterBase<Base>::VerticalUnitsToPixels(float value) {
    const ObjectGuard guard(*this);
    return _VerticalUnitsToPixels(value);
}

// --- Without it

template <class Base>
float UnitConverterBase<Base>::get__HorizontalResolution() {
    return GetHorizontalResolution();
}

template <class Base>
void UnitConverterBase<Base>::set__HorizontalResolution(float value) {
    SetHorizontalResolution(value);
}

template <class Base>
float UnitConverterBase<Base>::get__VerticalResolution() {
    return GetVerticalResolution();
}

template <class Base>
void UnitConverterBase<Base>::set__VerticalResolution(float value) {
    SetVerticalResolution(value);
}

template <class Base>
void UnitConverterBase<Base>::set__Unit(Unit value) {
    Validator::ValidateEnum("value", value);
    m_enUnit = value;
    m_enOldUnit = value;
}

template <class Base>
float UnitConverterBase<Base>::_HorizontalPixelsToUnits(std::int32_t pixels) {
    return UnitConverter::ConvertPixelsToUnits(GetHorizontalResolution(), pixels, m_enUnit);
}

template <class Base>
float UnitConverterBase<Base>::_VerticalPixelsToUnits(std::int32_t pixels) {
    return UnitConverter::ConvertPixelsToUnits(GetVerticalResolution(), pixels, m_enUnit);
}

template <class Base>
std::int32_t UnitConverterBase<Base>::_HorizontalUnitsToPixels(float value) {
    return UnitConverter::_ConvertUnitsToPixels(GetHorizontalResolution(), value, m_enUnit);
}

template <class Base>
std::int32_t UnitConverterBase<Base>::_VerticalUnitsToPixels(float value) {
    return UnitConverter::_ConvertUnitsToPixels(GetVerticalResolution(), value, m_enUnit);
}

template <class Base>
void UnitConverterBase<Base>::_SaveUnit(Unit value) {
    m_enOldUnit = m_enUnit;
    m_enUnit = value;
}

template class UnitConverterBase<LockableObject>;
template class UnitConverterBase<SyncHandler>;

UnitConverterObject::UnitConverterObject() = default;
UnitConverterObject::~UnitConverterObject() = default;

UnitConverterHandler::UnitConverterHandler() = default;
UnitConverterHandler::~UnitConverterHandler() = default;

} // namespace Corvane::Rasterloom
