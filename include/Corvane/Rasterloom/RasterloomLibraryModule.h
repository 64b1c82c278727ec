#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <atomic>
#include <memory>
#include <mutex>

namespace Corvane::Rasterloom {

/// Something that lives once per process and can be disposed.
class RASTERLOOM_API LibraryModuleAbstract {
public:
    LibraryModuleAbstract(const LibraryModuleAbstract&) = delete;
    LibraryModuleAbstract& operator=(const LibraryModuleAbstract&) = delete;
    virtual ~LibraryModuleAbstract();

    /// A second call does nothing.
    virtual void Dispose() = 0;
    /// Whether it was disposed and has not come up again.
    bool get_IsDisposed() const noexcept { return m_bIsDisposed; }

protected:
    LibraryModuleAbstract();

    /// Set by those who derive.
    std::atomic<bool> m_bIsDisposed{true};
};

/// The engine as a whole. It comes up with the first object that needs it, so a host calls nothing at the start.
class RASTERLOOM_API RasterloomLibraryModule final : public LibraryModuleAbstract {
public:
    ~RasterloomLibraryModule() override;

    /// The one instance, made on demand. Thread-safe.
    static std::shared_ptr<RasterloomLibraryModule> GetInstance();
    /// Internal: makes sure that there is one. Takes no lock when there is, so that objects on different threads come up
    /// side by side.
    static void _Start();
    /// Gives back what the library keeps for later use (freed memory blocks). For the host to call at its end, or
    /// whenever memory is short: the library stays usable and comes up again on demand. Thread-safe.
    static void ShutDown() noexcept;

    void Dispose() override;

private:
    RasterloomLibraryModule();

    static std::mutex s_pInstanceMutex;
    static std::shared_ptr<RasterloomLibraryModule> s_pInstance;
    static std::atomic<bool> s_bStarted; ///< whether `s_pInstance` is set
};

} // namespace Corvane::Rasterloom
