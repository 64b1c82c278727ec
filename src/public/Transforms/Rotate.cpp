#include <Corvane/Rasterloom/Transforms/Rotate.h>

#include "CallEngine.h"
#include "EngineColor.h"
#include "ObjectGuard.h"
#include "Validator.h"
#include "transforms/RotateTransform.h"

#include <Corvane/Rasterloom/BitmapData.h>

namespace Corvane::Rasterloom::Transforms {

namespace engine = ImagingFramework;

namespace {

engine::RotateTransform& ToRotate(engine::Transform& transform) { return static_cast<engine::RotateTransform&>(transform); }

} // namespace

Rotate::Rotate()
    : BitmapTransform(BitmapChange::Rotate, std::make_unique<engine::RotateTransform>()),
      m_backgroundColor(DefaultBackground()) {}

Rotate::Rotate(float angle) : Rotate() { set__Angle(angle); }

Rotate::Rotate(float angle, const Color& backgroundColor) : Rotate(angle) { set__BackgroundColor(backgroundColor); }

Rotate::Rotate(float angle, InterpolationMode interpolationMode) : Rotate(angle) {
    set__InterpolationMode(interpolationMode);
}

Rotate::Rotate(float angle, const Color& backgroundColor, InterpolationMode interpolationMode)
    : Rotate(angle, backgroundColor) {
    set__InterpolationMode(interpolationMode);
}

Rotate::~Rotate() { DisposeFinally(); }

void Rotate::set__Angle(float angle) { m_fAngle = angle; }

void Rotate::set__BackgroundColor(const Color& backgroundColor) {
    m_backgroundColor = RequireBackground(backgroundColor);
}

void Rotate::set__InterpolationMode(InterpolationMode interpolationMode) {
    Validator::ValidateEnum("interpolationMode", interpolationMode);
    CallEngine([&] {
        ToRotate(get__Transform()).SetInterpolationMode(static_cast<engine::InterpolationMode>(interpolationMode));
    });
    m_enInterpolationMode = interpolationMode;
}

float Rotate::get_Angle() {
    const ObjectGuard guard(*this);
    return m_fAngle;
}

void Rotate::set_Angle(float angle) {
    const ObjectGuard guard(*this);
    set__Angle(angle);
}

Color Rotate::get_BackgroundColor() {
    const ObjectGuard guard(*this);
    return m_backgroundColor;
}

void Rotate::set_BackgroundColor(const Color& backgroundColor) {
    const ObjectGuard guard(*this);
    set__BackgroundColor(backgroundColor);
}

InterpolationMode Rotate::get_InterpolationMode() {
    const ObjectGuard guard(*this);
    return m_enInterpolationMode;
}

void Rotate::set_InterpolationMode(Transforms::InterpolationMode interpolationMode) {
    const ObjectGuard guard(*this);
    set__InterpolationMode(interpolationMode);
}

void Rotate::ExportSettings() {
    const auto background = EngineColor(m_backgroundColor, get__Run().m_pSrcBitmapData->get__InternalBitmapData());
    engine::RotateTransform& transform = ToRotate(get__Transform());
    transform.SetAngle(m_fAngle);
    transform.SetBackgroundColor(background);
}

} // namespace Corvane::Rasterloom::Transforms
