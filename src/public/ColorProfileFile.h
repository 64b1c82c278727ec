#pragma once

#include "Common/ProfileFile.h"
#include "ObjectGuard.h"

#include <Corvane/Rasterloom/ColorProfile.h>

#include <memory>

namespace Corvane::Rasterloom {

/// The file of a profile, null for none. Fails as the profile's members do.
inline std::shared_ptr<const ImagingFramework::ProfileFile> FileOf(const std::shared_ptr<ColorProfile>& profile) {
    if (!profile) {
        return nullptr;
    }
    const ObjectGuard guard(*profile);
    return profile->get__File();
}

} // namespace Corvane::Rasterloom
