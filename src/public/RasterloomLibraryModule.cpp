#include <Corvane/Rasterloom/RasterloomLibraryModule.h>

#include "Common/EngineModule.h"
#include "MemoryManagement/Memory.h"

#include <utility>

namespace Corvane::Rasterloom {

LibraryModuleAbstract::LibraryModuleAbstract() = default;
LibraryModuleAbstract::~LibraryModuleAbstract() = default;

std::mutex RasterloomLibraryModule::s_pInstanceMutex;
std::shared_ptr<RasterloomLibraryModule> RasterloomLibraryModule::s_pInstance;
std::atomic<bool> RasterloomLibraryModule::s_bStarted{false};

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
        s_bStarted.store(true, std::memory_order_release);
    }
    return s_pInstance;
}

void RasterloomLibraryModule::_Start() {
    if (!s_bStarted.load(std::memory_order_acquire)) {
        GetInstance();
    }
}

void RasterloomLibraryModule::ShutDown() noexcept {
    std::shared_ptr<RasterloomLibraryModule> instance;
    {
        const std::lock_guard guard(s_pInstanceMutex);
        instance = std::exchange(s_pInstance, nullptr);
        s_bStarted = false;
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

} // namespace Corvane::Rasterloom
