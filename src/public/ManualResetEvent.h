#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace Corvane::Rasterloom {

/// A gate that stays open from `Set` until `Reset`. Open at first.
class ManualResetEvent {
public:
    void Set() noexcept {
        {
            const std::lock_guard guard(m_mutex);
            m_bSet = true;
        }
        m_changed.notify_all();
    }
    void Reset() noexcept {
        const std::lock_guard guard(m_mutex);
        m_bSet = false;
    }
    bool IsSet() const noexcept {
        const std::lock_guard guard(m_mutex);
        return m_bSet;
    }
    void Wait() {
        std::unique_lock guard(m_mutex);
        m_changed.wait(guard, [this] { return m_bSet; });
    }
    /// False when the gate stayed closed for that long.
    bool WaitFor(std::chrono::milliseconds limit) {
        std::unique_lock guard(m_mutex);
        return m_changed.wait_for(guard, limit, [this] { return m_bSet; });
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_bSet = true;
};

} // namespace Corvane::Rasterloom
