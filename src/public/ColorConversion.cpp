// The process-wide side of `Color`: the registered kinds of colours and the one colour space manager behind
// conversions.

#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/RasterloomLibraryModule.h>

#include "Common/PixelFormat.h"
#include "EnumTransforms.h"
#include "Validator.h"
#include "colorconversion/ColorSpaceManager.h"

#include <map>
#include <memory>
#include <mutex>
#include <new>

namespace Corvane::Rasterloom {

namespace {

/// Made at first use. Everything here is used under the mutex alone; the wait for it has no limit.
struct ColorStatics {
    ColorStatics() {
        RasterloomLibraryModule::_Start();
        try {
            m_pColorSpaceManager = std::make_unique<ImagingFramework::ColorSpaceManager>();
            for (const Color& prototype : {Color(RgbColor()), Color(CmykColor()), Color(GrayScaleColor())}) {
                m_instances.emplace(prototype.get_ColorSpace(), prototype);
            }
        } catch (const std::bad_alloc&) {
            throw UnexpectedException("Unable to commit memory.");
        }
    }

    std::mutex m_hSynchronizer;
    std::map<ColorSpace, Color> m_instances;
    std::unique_ptr<ImagingFramework::ColorSpaceManager> m_pColorSpaceManager;
};

ColorStatics& GetStatics() {
    static ColorStatics statics;
    return statics;
}

Color GetInstance(ColorSpace colorSpace) {
    ColorStatics& statics = GetStatics();
    const std::lock_guard guard(statics.m_hSynchronizer);
    const auto found = statics.m_instances.find(colorSpace);
    if (found == statics.m_instances.end()) {
        throw UnsupportedPixelFormatException("The specified color space is not supported.");
    }
    return found->second;
}

} // namespace

void Color::Register(const Color& prototype) {
    if (prototype.IsNull()) {
        throw Host::ArgumentNullException("prototype");
    }
    const auto format = TransformPixelFormat(prototype.m_enFormat);
    if (!ImagingFramework::PixelFormatIsExtended(format) || prototype.get_ColorSpace() == ColorSpace::Unknown) {
        throw UnsupportedPixelFormatException();
    }
    ColorStatics& statics = GetStatics();
    const std::lock_guard guard(statics.m_hSynchronizer);
    statics.m_instances.insert_or_assign(prototype.get_ColorSpace(), prototype);
}

Color Color::ConvertColorSpace(ColorSpace colorSpace) const {
    RequireColor();
    Validator::ValidateEnum("colorSpace", colorSpace);
    return ConvertTo(GetInstance(colorSpace).m_enFormat);
}

Color Color::ConvertTo(PixelFormat internalFormat) const {
    Color converted(internalFormat, {});
    ColorStatics& statics = GetStatics();
    const std::lock_guard guard(statics.m_hSynchronizer);
    try {
        // Channels stand in the arrays as they do in a pixel of the internal format.
        statics.m_pColorSpaceManager->TransformScanline(
            1, reinterpret_cast<const std::uint8_t*>(m_uintChannels.data()), nullptr, TransformPixelFormat(m_enFormat),
            nullptr, reinterpret_cast<std::uint8_t*>(converted.m_uintChannels.data()),
            TransformPixelFormat(internalFormat));
    } catch (...) {
        // A broken manager is not told from a lack of memory here: the one failure of this step is "unexpected".
        throw UnexpectedException(UnexpectedException().get_Message(), std::current_exception());
    }
    return converted;
}

Color Color::As(const Color& color, PixelFormat internalFormat) {
    color.RequireColor();
    return color.m_enFormat == internalFormat ? color : color.ConvertTo(internalFormat);
}

Host::ArgbColor Color::ToGdiplusColor() const {
    const Color rgb = As(*this, PixelFormat::Format64bppArgb);
    return {rgb.Channel8(3), rgb.Channel8(2), rgb.Channel8(1), rgb.Channel8(0)};
}

} // namespace Corvane::Rasterloom
