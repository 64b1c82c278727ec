#include <Corvane/Rasterloom/TransformsProvider.h>

#include "ObjectGuard.h"
#include "Validator.h"

#include <Corvane/Rasterloom/Transforms/Resize.h>

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

} // namespace Corvane::Rasterloom
