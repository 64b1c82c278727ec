#include "Common/InternalEvents.h"

#include "ErrorHandling/Exceptions.h"

#include <algorithm>
#include <chrono>
#include <limits>

namespace ImagingFramework {

namespace {

template <class T> void RequirePointer(const T* pValue) {
    if (pValue == nullptr) {
        throw ArgumentNullPointerException("pValue");
    }
}

std::int32_t ClampToInt32(std::int64_t value) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, std::numeric_limits<std::int32_t>::min(),
                                                              std::numeric_limits<std::int32_t>::max()));
}

} // namespace

std::uint32_t GetTickCount() noexcept {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

// --- IInternalEventsImpl

void IInternalEventsImpl::CheckAbort(std::uint16_t* pValue) const {
    RequirePointer(pValue);
    *pValue = m_bAbort.load() ? EventsTrue : std::uint16_t{0};
}

void IInternalEventsImpl::Read(std::int32_t* pValue, const std::int32_t& field) const {
    RequirePointer(pValue);
    const std::lock_guard lock(m_mutex);
    *pValue = field;
}

void IInternalEventsImpl::SetAndReset(std::int32_t& field, std::int32_t value) {
    const std::lock_guard lock(m_mutex);
    field = value;
    ResetProgress();
}

void IInternalEventsImpl::GetProgressMinValue(std::int32_t* pValue) const {
    const std::lock_guard lock(m_mutex);
    Read(pValue, m_bUserMode ? m_intUserMinimum : m_intMinimum);
}

void IInternalEventsImpl::SetProgressMinValue(std::int32_t value) { SetAndReset(m_intMinimum, value); }

void IInternalEventsImpl::GetProgressMaxValue(std::int32_t* pValue) const {
    const std::lock_guard lock(m_mutex);
    Read(pValue, m_bUserMode ? m_intUserMaximum : m_intMaximum);
}

void IInternalEventsImpl::SetProgressMaxValue(std::int32_t value) { SetAndReset(m_intMaximum, value); }

void IInternalEventsImpl::ResetProgress() {
    const std::lock_guard lock(m_mutex);
    if (m_intMinimum > m_intMaximum) {
        std::swap(m_intMinimum, m_intMaximum);
    }
    if (m_intUserMinimum > m_intUserMaximum) {
        std::swap(m_intUserMinimum, m_intUserMaximum);
    }
    m_bAbort = false;
    m_bProgressChanged = false;
    m_intCurrent = m_intMinimum;
    const std::int64_t range = std::int64_t{m_intMaximum} - m_intMinimum;
    m_scale = 1.0;
    if (m_bUserMode && range > 0) {
        m_scale = static_cast<double>(std::int64_t{m_intUserMaximum} - m_intUserMinimum) / static_cast<double>(range);
    }
}

std::int32_t IInternalEventsImpl::UserValue(std::int32_t value) const noexcept {
    const double scaled = static_cast<double>(std::int64_t{value} - m_intMinimum) * m_scale;
    return ClampToInt32(static_cast<std::int64_t>(scaled) + m_intUserMinimum);
}

void IInternalEventsImpl::OnProgress(std::int32_t step) {
    const std::lock_guard lock(m_mutex);
    const std::int64_t bounded = step > 0 ? std::min<std::int64_t>(step, std::int64_t{m_intMaximum} - m_intCurrent)
                                          : std::max<std::int64_t>(step, std::int64_t{m_intMinimum} - m_intCurrent);
    const std::int32_t old = m_intCurrent;
    m_intCurrent = ClampToInt32(old + bounded);
    if (old == m_intMinimum) {
        // The first step always counts, so that a watcher sees the work begin.
        m_bProgressChanged = true;
    } else if (!m_bUserMode) {
        m_bProgressChanged = bounded != 0;
    } else {
        m_bProgressChanged = UserValue(old) != UserValue(m_intCurrent);
    }
}

void IInternalEventsImpl::GetProgressCurValue(std::int32_t* pValue) const {
    RequirePointer(pValue);
    const std::lock_guard lock(m_mutex);
    *pValue = m_bUserMode ? UserValue(m_intCurrent) : m_intCurrent;
}

void IInternalEventsImpl::GetUserProgressMinValue(std::int32_t* pValue) const { Read(pValue, m_intUserMinimum); }

void IInternalEventsImpl::SetUserProgressMinValue(std::int32_t value) { SetAndReset(m_intUserMinimum, value); }

void IInternalEventsImpl::GetUserProgressMaxValue(std::int32_t* pValue) const { Read(pValue, m_intUserMaximum); }

void IInternalEventsImpl::SetUserProgressMaxValue(std::int32_t value) { SetAndReset(m_intUserMaximum, value); }

void IInternalEventsImpl::GetProgressUserMode(std::uint16_t* pValue) const {
    RequirePointer(pValue);
    const std::lock_guard lock(m_mutex);
    *pValue = m_bUserMode ? EventsTrue : std::uint16_t{0};
}

void IInternalEventsImpl::SetProgressUserMode(std::uint16_t value) {
    const std::lock_guard lock(m_mutex);
    m_bUserMode = value != 0;
    ResetProgress();
}

void IInternalEventsImpl::SetPause(std::uint16_t value) {
    {
        const std::lock_guard lock(m_pauseMutex);
        m_bPaused = value == EventsTrue;
    }
    m_pauseChanged.notify_all();
}

void IInternalEventsImpl::WaitWhilePaused() {
    std::unique_lock lock(m_pauseMutex);
    m_pauseChanged.wait(lock, [this] { return !m_bPaused; });
}

// --- IInternalEventsHostImpl

bool IInternalEventsHostImpl::IsTimedOut() const noexcept {
    return m_intTimeout > 0 && static_cast<std::int32_t>(GetTickCount() - m_uintStartTick) > m_intTimeout;
}

void IInternalEventsHostImpl::ResetProgress(std::int32_t count) {
    m_uintStartTick = GetTickCount();
    if (m_pEvents == nullptr) {
        return;
    }
    std::int32_t maximum = 0;
    m_pEvents->GetProgressMaxValue(&maximum);
    m_pEvents->SetProgressMaxValue(ClampToInt32(std::int64_t{maximum} + count));
    m_pEvents->SetProgressMinValue(maximum);
    m_pEvents->ResetProgress();
}

void IInternalEventsHostImpl::UpdateEvents(std::int32_t step) {
    if (m_pEvents == nullptr) {
        return;
    }
    if (IsTimedOut()) {
        throw TimeOutException();
    }
    m_pEvents->OnProgress(step);
    std::uint16_t abort = 0;
    m_pEvents->CheckAbort(&abort);
    // A thread that is paused here first goes on and then stops, by the flag read before.
    m_pEvents->WaitWhilePaused();
    if (abort != 0) {
        throw AbortedException();
    }
}

// --- ProgressReporter

void ProgressReporter::SetMaximumStepCount(std::int32_t count) {
    m_intMaximumStepCount = count;
    ResetProgress(count);
    m_intStepsDone = 0;
}

std::int32_t ProgressReporter::Report(std::int32_t count) {
    if (m_intStepsDone < m_intMaximumStepCount) {
        const std::int32_t steps = std::min(count, m_intMaximumStepCount - m_intStepsDone);
        UpdateEvents(steps);
        m_intStepsDone += steps;
    }
    return m_intStepsDone;
}

} // namespace ImagingFramework
