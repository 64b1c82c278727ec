#include <Corvane/Rasterloom/GlobalSettings.h>
#include <Corvane/Rasterloom/RasterloomLibraryModule.h>

#include "Common/EngineModule.h"
#include "MemoryManagement/Memory.h"
#include "colorconversion/IcmProvider.h"

#include <utility>

namespace Corvane::Rasterloom {

LibraryModuleAbstract::LibraryModuleAbstract() = default;
LibraryModuleAbstract::~LibraryModuleAbstract() = default;

std::mutex RasterloomLibraryModule::s_pInstanceMutex;
std::shared_ptr<RasterloomLibraryModule> RasterloomLibraryModule::s_pInstance;

RasterloomLibraryModule::RasterloomLibraryModule() {
    try {
        ImagingFramework::Initialize();
        ImagingFramework::SetLzwSupport(1);
    } catch (...) {
        // No object could be made any more if this failed here; what is missing shows where it is used.
    }
    m_bIsDisposed = false;
}

RasterloomLibraryModule::~RasterloomLibraryModule() {
    Dispose();
}

std::shared_ptr<RasterloomLibraryModule> RasterloomLibraryModule::GetInstance() {
    const std::lock_guard guard(s_pInstanceMutex);
    if (!s_pInstance) {
        s_pInstance.reset(new RasterloomLibraryModule());
    }
    return s_pInstance;
}

void RasterloomLibraryModule::ShutDown() noexcept {
    std::shared_ptr<RasterloomLibraryModule> instance;
    {
        const std::lock_guard guard(s_pInstanceMutex);
        instance = std::exchange(s_pInstance, nullptr);
    }
    if (instance) {
        instance->Dispose();
    }
}

void RasterloomLibraryModule::Dispose() {
    if (!m_bIsDisposed.exchange(true)) {
        ImagingFramework::TrimMemoryCache();
    }
}

// The module comes up first, or its start would put the switch back.

bool GlobalSettings::get_MultiProcessorSupport() {
    RasterloomLibraryModule::GetInstance();
    return ImagingFramework::GetOmpSupport() == 1;
}

void GlobalSettings::set_MultiProcessorSupport(bool value) {
    RasterloomLibraryModule::GetInstance();
    ImagingFramework::SetOmpSupport(value ? 1 : 0);
}

bool GlobalSettings::get_IsAdobeCmmAccessible() {
    RasterloomLibraryModule::GetInstance();
    return ImagingFramework::IcmProvider::IsAdobeCmmAccessible();
}

} // namespace Corvane::Rasterloom
