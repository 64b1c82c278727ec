#include <Corvane/Rasterloom/Transforms/RotateAndFlip.h>

#include "CallEngine.h"
#include "ObjectGuard.h"
#include "Validator.h"
#include "transforms/FlipAndRotateTransform.h"

namespace Corvane::Rasterloom::Transforms {

namespace engine = ImagingFramework;

RotateAndFlip::RotateAndFlip()
    : BitmapTransform(BitmapChange::RotateAndFlip, std::make_unique<engine::FlipAndRotateTransform>()) {}

RotateAndFlip::RotateAndFlip(Host::RotateFlipType mode) : RotateAndFlip() { set__Mode(mode); }

RotateAndFlip::~RotateAndFlip() { DisposeFinally(); }

void RotateAndFlip::set__Mode(Host::RotateFlipType mode) {
    Validator::ValidateEnum("mode", mode);
    m_enMode = mode;
}

Host::RotateFlipType RotateAndFlip::get_Mode() {
    const ObjectGuard guard(*this);
    return m_enMode;
}

void RotateAndFlip::set_Mode(Host::RotateFlipType mode) {
    const ObjectGuard guard(*this);
    set__Mode(mode);
}

void RotateAndFlip::ExportSettings() {
    CallEngine([&] {
        static_cast<engine::FlipAndRotateTransform&>(get__Transform())
            .SetMode(static_cast<engine::RotateFlipType>(m_enMode));
    });
}

} // namespace Corvane::Rasterloom::Transforms
