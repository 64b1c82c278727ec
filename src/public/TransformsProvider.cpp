#include <Corvane/Rasterloom/TransformsProvider.h>

#include "ObjectGuard.h"
#include "Validator.h"

#include <Corvane/Rasterloom/Transforms/Crop.h>
#include <Corvane/Rasterloom/Transforms/Resize.h>
#include <Corvane/Rasterloom/Transforms/Rotate.h>
#include <Corvane/Rasterloom/Transforms/RotateAndFlip.h>

namespace Corvane::Rasterloom {

using Transforms::InterpolationMode;
using Transforms::ResizeMode;

TransformsProvider::TransformsProvider(std::shared_ptr<BitmapLink> link) : BitmapProvider(std::move(link)) {}

void TransformsProvider::Resize(float width, float height, InterpolationMode interpolationMode, ResizeMode resizeMode) {
    const ObjectGuard guard(*this);
    Validator::ValidateEnum("interpolationMode", interpolationMode);
    Validator::ValidateEnum("resizeMode", resizeMode);
    ValidateRuntimeData();
    Transforms::Resize transform(width, height, interpolationMode, resizeMode);
    Apply(transform);
}

void TransformsProvider::Resize(float width, float height, ResizeMode resizeMode) {
    Resize(width, height, InterpolationMode::MediumQuality, resizeMode);
}

void TransformsProvider::Resize(std::int32_t width, std::int32_t height, InterpolationMode interpolationMode,
                                ResizeMode resizeMode) {
    Resize(static_cast<float>(width), static_cast<float>(height), interpolationMode, resizeMode);
}

void TransformsProvider::Resize(std::int32_t width, std::int32_t height, ResizeMode resizeMode) {
    Resize(static_cast<float>(width), static_cast<float>(height), resizeMode);
}

void TransformsProvider::Crop(const Host::RectangleF& rectangle) {
    const ObjectGuard guard(*this);
    ValidateRuntimeData();
    Transforms::Crop transform(rectangle);
    Apply(transform);
}

void TransformsProvider::Crop(const Host::RectangleF& rectangle, const Color& background) {
    const ObjectGuard guard(*this);
    ValidateRuntimeData();
    Transforms::Crop transform(rectangle, background);
    Apply(transform);
}

void TransformsProvider::Crop(float left, float top, float width, float height) {
    Crop(Host::RectangleF(left, top, width, height));
}

void TransformsProvider::Crop(float left, float top, float width, float height, const Color& background) {
    Crop(Host::RectangleF(left, top, width, height), background);
}

void TransformsProvider::Crop(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) {
    Crop(Host::RectangleF(Host::Rectangle{left, top, width, height}));
}

void TransformsProvider::Crop(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height,
                              const Color& background) {
    Crop(Host::RectangleF(Host::Rectangle{left, top, width, height}), background);
}

void TransformsProvider::RotateAndFlip(Host::RotateFlipType mode) {
    const ObjectGuard guard(*this);
    Validator::ValidateEnum("mode", mode);
    ValidateRuntimeData();
    Transforms::RotateAndFlip transform(mode);
    Apply(transform);
}

void TransformsProvider::Rotate(float angle, InterpolationMode interpolationMode) {
    const ObjectGuard guard(*this);
    Validator::ValidateEnum("interpolationMode", interpolationMode);
    ValidateRuntimeData();
    Transforms::Rotate transform(angle, interpolationMode);
    Apply(transform);
}

void TransformsProvider::Rotate(float angle, const Color& backgroundColor, InterpolationMode interpolationMode) {
    const ObjectGuard guard(*this);
    Validator::ValidateEnum("interpolationMode", interpolationMode);
    ValidateRuntimeData();
    Transforms::Rotate transform(angle, backgroundColor, interpolationMode);
    Apply(transform);
}

} // namespace Corvane::Rasterloom
