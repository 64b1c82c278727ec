#pragma once

#include "Common/InternalEvents.h"

#include <atomic>
#include <cstdint>

namespace ImagingFramework::Testing {

/// Counts the reported steps and how often the visible value moved, and asks for an abort with the report of number
/// `abortAt`.
class EventsProbe : public IInternalEventsImpl {
public:
    explicit EventsProbe(int abortAt = -1) : m_abortAt(abortAt) {}

    void OnProgress(std::int32_t step) override {
        IInternalEventsImpl::OnProgress(step);
        m_steps += step;
        m_changes += m_bProgressChanged ? 1 : 0;
        if (m_reports++ == m_abortAt) {
            m_bAbort = true;
        }
    }
    void Abort() { m_bAbort = true; }
    /// Calls of `OnProgress`, and the steps that they added up to.
    int Reports() const { return m_reports; }
    std::int64_t Steps() const { return m_steps; }
    std::int32_t Announced() const { return Value(&IInternalEvents::GetProgressMaxValue); }
    std::int32_t Current() const { return Value(&IInternalEvents::GetProgressCurValue); }
    /// Whether the last step moved the visible value, and how many did.
    bool Changed() const { return m_bProgressChanged; }
    int Changes() const { return m_changes; }
    bool IsAborted() const { return m_bAbort; }

private:
    std::int32_t Value(void (IInternalEvents::*getter)(std::int32_t*) const) const {
        std::int32_t value = 0;
        (this->*getter)(&value);
        return value;
    }

    int m_abortAt;
    std::atomic<int> m_changes{0};
    std::atomic<int> m_reports{0};
    std::atomic<std::int64_t> m_steps{0};
};

} // namespace ImagingFramework::Testing
