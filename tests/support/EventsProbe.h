#pragma once

#include "Common/InternalEvents.h"

#include <atomic>
#include <cstdint>

namespace ImagingFramework::Testing {

/// Counts the reported steps, and asks for an abort with the report of number `abortAt`.
class EventsProbe : public IInternalEventsImpl {
public:
    explicit EventsProbe(int abortAt = -1) : m_abortAt(abortAt) {}

    void OnProgress(std::int32_t step) override {
        IInternalEventsImpl::OnProgress(step);
        m_steps += step;
        if (m_reports++ == m_abortAt) {
            m_bAbort = true;
        }
    }
    void Abort() { m_bAbort = true; }
    /// Calls of `OnProgress`, and the steps that they added up to.
    int Reports() const { return m_reports; }
    std::int64_t Steps() const { return m_steps; }
    std::int32_t Announced() const {
        std::int32_t value = 0;
        GetProgressMaxValue(&value);
        return value;
    }

private:
    int m_abortAt;
    std::atomic<int> m_reports{0};
    std::atomic<std::int64_t> m_steps{0};
};

} // namespace ImagingFramework::Testing
