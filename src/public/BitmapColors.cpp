// The part of Bitmap that knows of colour profiles, and of the providers around them.

#include "BitmapImpl.h"

#include "CallEngine.h"
#include "ColorProfileFile.h"
#include "Common/ColorProfileUtils.h"
#include "ObjectGuard.h"

#include <Corvane/Rasterloom/Exceptions.h>

namespace Corvane::Rasterloom {

namespace engine = ImagingFramework;

std::shared_ptr<ColorManagementProvider> Bitmap::get_ColorManagement() { return m_pImpl->m_pColorManagementProvider; }

std::shared_ptr<ChannelsProvider> Bitmap::get_Channels() { return m_pImpl->m_pChannelsProvider; }

std::shared_ptr<ColorProfile> Bitmap::get_ColorProfile() {
    const ObjectGuard guard(*this);
    get__InternalBitmapData(); // not while a view is out
    if (!m_pImpl->m_pColorProfile) {
        UpdateColorProfile();
    }
    return m_pImpl->m_pColorProfile;
}

void Bitmap::set_ColorProfile(const std::shared_ptr<ColorProfile>& colorProfile) {
    const std::shared_ptr<const engine::ProfileFile> file = FileOf(colorProfile);
    const ObjectGuard guard(*this);
    engine::BitmapData& raster = get__InternalBitmapData();
    if (raster.IsEmpty()) {
        raster.SetProfileFile(nullptr);
        UpdateColorProfile();
        throw BitmapEmptyException();
    }
    CallEngine([&] { raster.SetProfileFile(engine::DuplicateColorProfile(file)); });
    UpdateColorProfile();
}

void Bitmap::UpdateColorProfile() {
    m_pImpl->m_pColorProfile.reset();
    engine::BitmapData& raster = *m_pImpl->m_pInternalBitmapData;
    if (!raster.GetProfileFile()) {
        return;
    }
    try {
        CallEngine([&] {
            engine::ValidateColorProfileConsistency(raster.GetProfileFile()->GetPath());
            const auto file = engine::DuplicateColorProfile(raster.GetProfileFile());
            m_pImpl->m_pColorProfile = std::make_shared<ColorProfile>(file);
        });
    } catch (const Host::Exception&) {
        // What is no profile is not worth keeping, and a picture is not refused for it.
        raster.SetProfileFile(nullptr);
    }
}

} // namespace Corvane::Rasterloom
