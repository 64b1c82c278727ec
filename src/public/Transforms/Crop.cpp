#include <Corvane/Rasterloom/Transforms/Crop.h>

#include "CallEngine.h"
#include "EngineColor.h"
#include "ObjectGuard.h"
#include "transforms/CropTransform.h"

#include <Corvane/Rasterloom/BitmapData.h>

#include <algorithm>

namespace Corvane::Rasterloom::Transforms {

namespace engine = ImagingFramework;

Crop::Crop()
    : BitmapTransform(BitmapChange::Crop, std::make_unique<engine::CropTransform>()), m_background(DefaultBackground()) {}

Crop::Crop(const Host::RectangleF& rectangle) : Crop() { set__Rectangle(rectangle); }

Crop::Crop(const Host::RectangleF& rectangle, const Color& background) : Crop(rectangle) { set__Background(background); }

Crop::Crop(float left, float top, float width, float height) : Crop(Host::RectangleF(left, top, width, height)) {}

Crop::Crop(float left, float top, float width, float height, const Color& background)
    : Crop(Host::RectangleF(left, top, width, height), background) {}

Crop::~Crop() { DisposeFinally(); }

void Crop::set__Rectangle(const Host::RectangleF& rectangle) {
    m_rectangle = rectangle;
    m_rectangle.Width = std::max(0.0F, rectangle.Width);
    m_rectangle.Height = std::max(0.0F, rectangle.Height);
}

void Crop::set__RectangleInPixels(const Host::Rectangle& rectangle) { set__Rectangle(_PixelsToUnits(rectangle)); }

void Crop::set__Background(const Color& backgroundColor) { m_background = RequireBackground(backgroundColor); }

Host::RectangleF Crop::get_Rectangle() {
    const ObjectGuard guard(*this);
    return m_rectangle;
}

void Crop::set_Rectangle(const Host::RectangleF& rectangle) {
    const ObjectGuard guard(*this);
    set__Rectangle(rectangle);
}

Host::Rectangle Crop::get_RectangleInPixels() {
    const ObjectGuard guard(*this);
    return _UnitsToPixels(m_rectangle);
}

void Crop::set_RectangleInPixels(const Host::Rectangle& rectangle) {
    const ObjectGuard guard(*this);
    set__RectangleInPixels(rectangle);
}

Color Crop::get_Background() {
    const ObjectGuard guard(*this);
    return m_background;
}

void Crop::set_Background(const Color& backgroundColor) {
    const ObjectGuard guard(*this);
    set__Background(backgroundColor);
}

void Crop::ExportSettings() {
    const auto background = EngineColor(m_background, get__Run().m_pSrcBitmapData->get__InternalBitmapData());
    const Host::Rectangle rectangle = _UnitsToPixels(m_rectangle);
    CallEngine([&] {
        auto& transform = static_cast<engine::CropTransform&>(get__Transform());
        transform.SetBackgroundColor(background);
        transform.SetCropWidth(static_cast<std::uint32_t>(rectangle.Width));
        transform.SetCropHeight(static_cast<std::uint32_t>(rectangle.Height));
        transform.SetCropX(rectangle.Left);
        transform.SetCropY(rectangle.Top);
    });
}

} // namespace Corvane::Rasterloom::Transforms
