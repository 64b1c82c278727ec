#include "Common/EngineModule.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <thread>

namespace ImagingFramework {

namespace {

constexpr unsigned MaxProcessorCount = 1024;

std::once_flag s_initialized;
std::atomic<std::int32_t> s_intOmpSupport{0};
std::atomic<std::int32_t> s_intLzwSupport{0};
std::atomic<std::int32_t> s_intProcessorCount{1};

} // namespace

void Initialize() {
    std::call_once(s_initialized, [] {
        const unsigned count = std::clamp(std::thread::hardware_concurrency(), 1U, MaxProcessorCount);
        s_intProcessorCount = static_cast<std::int32_t>(count);
        SetLzwSupport(1);
        SetOmpSupport(0);
    });
}

std::int32_t GetOmpSupport() noexcept {
    return s_intOmpSupport;
}

void SetOmpSupport(std::int32_t value) noexcept {
    s_intOmpSupport = value != 0 ? 1 : 0;
}

std::int32_t GetLzwSupport() noexcept {
    return s_intLzwSupport;
}

void SetLzwSupport(std::int32_t value) noexcept {
    s_intLzwSupport = value != 0 ? 1 : 0;
}

std::int32_t GetProcessorCount() noexcept {
    return s_intProcessorCount;
}

} // namespace ImagingFramework
