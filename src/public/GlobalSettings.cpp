#include <Corvane/Rasterloom/GlobalSettings.h>

#include "Common/EngineModule.h"
#include "Common/FrameSize.h"
#include "colorconversion/IcmProvider.h"

#include <Corvane/Rasterloom/Host/Errors.h>
#include <Corvane/Rasterloom/RasterloomLibraryModule.h>

namespace Corvane::Rasterloom {

namespace engine = ImagingFramework;

namespace {

std::uint64_t RequireNotNegative(std::int64_t value) {
    if (value < 0) {
        throw Host::ArgumentOutOfRangeException("value");
    }
    return static_cast<std::uint64_t>(value);
}

} // namespace

// The module comes up first, or its start would put the switch back.

bool GlobalSettings::get_MultiProcessorSupport() {
    RasterloomLibraryModule::_Start();
    return engine::GetOmpSupport() == 1;
}

void GlobalSettings::set_MultiProcessorSupport(bool value) {
    RasterloomLibraryModule::_Start();
    engine::SetOmpSupport(value ? 1 : 0);
}

bool GlobalSettings::get_IsAdobeCmmAccessible() {
    RasterloomLibraryModule::_Start();
    return engine::IcmProvider::IsAdobeCmmAccessible();
}

// --- Limits

std::int64_t GlobalSettings::get_MaximumFramePixels() noexcept {
    return static_cast<std::int64_t>(engine::GetMaximumFramePixels());
}

void GlobalSettings::set_MaximumFramePixels(std::int64_t value) {
    engine::SetMaximumFramePixels(RequireNotNegative(value));
}

std::int64_t GlobalSettings::get_MaximumFrameBytes() noexcept {
    return static_cast<std::int64_t>(engine::GetMaximumFrameBytes());
}

void GlobalSettings::set_MaximumFrameBytes(std::int64_t value) {
    engine::SetMaximumFrameBytes(RequireNotNegative(value));
}

std::int32_t GlobalSettings::get_MaximumFrameCount() noexcept {
    return static_cast<std::int32_t>(engine::GetMaximumFrameCount());
}

void GlobalSettings::set_MaximumFrameCount(std::int32_t value) {
    engine::SetMaximumFrameCount(RequireNotNegative(value));
}

} // namespace Corvane::Rasterloom
