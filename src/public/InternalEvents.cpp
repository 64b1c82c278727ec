#include "InternalEvents.h"

#include <mutex>
#include <utility>

namespace Corvane::Rasterloom {

void InternalEvents::OnProgress(std::int32_t step) {
    IInternalEventsImpl::OnProgress(step);
    bool changed = false;
    {
        const std::lock_guard lock(m_mutex);
        changed = m_bProgressChanged;
    }
    // Outside the lock: the callback waits for handlers of the host.
    if (changed && m_pCallback != nullptr) {
        m_pCallback(*this);
    }
}

bool InternalEvents::ResetProgressChanged() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_bProgressChanged, false);
}

} // namespace Corvane::Rasterloom
