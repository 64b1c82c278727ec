#include "Common/EventsMetaHost.h"

#include "ErrorHandling/Exceptions.h"

#include <utility>

namespace ImagingFramework {

class EventsMetaHost::EventsForwarder : public IInternalEventsImpl {
public:
    EventsForwarder(EventsMetaHost& host, std::size_t index) : m_host(host), m_index(index) {}

    void OnProgress(std::int32_t step) override {
        const std::lock_guard lock(m_mutex);
        IInternalEventsImpl::OnProgress(step);
        try {
            m_host.ReportProgress(m_index, std::int64_t{m_intCurrent} - m_intMinimum,
                                  std::int64_t{m_intMaximum} - m_intMinimum);
        } catch (...) {
            // Whatever went wrong in reporting, a passed timeout included, reaches the worker as an abort.
            throw AbortedException();
        }
    }

private:
    EventsMetaHost& m_host;
    std::size_t m_index;
};

EventsMetaHost::EventsMetaHost(std::vector<std::uint32_t> weights, std::set<std::size_t> silentWorkers,
                               std::int32_t stepCount)
    : m_intStepCount(stepCount) {
    m_workers.resize(weights.size());
    for (std::size_t i = 0; i < weights.size(); ++i) {
        m_workers[i].Weight = weights[i];
        m_workers[i].Silent = silentWorkers.contains(i);
        m_workers[i].Forwarder = std::make_unique<EventsForwarder>(*this, i);
    }
}

EventsMetaHost::~EventsMetaHost() = default;

void EventsMetaHost::SetEvents(IInternalEvents* pEvents) {
    {
        const std::lock_guard lock(m_mutex);
        for (Worker& worker : m_workers) {
            worker.Done = 0;
            worker.Total = 1;
        }
        m_intLastValue = 0;
    }
    IInternalEventsHostImpl::SetEvents(pEvents);
    IInternalEventsHostImpl::ResetProgress(m_intStepCount);
}

void EventsMetaHost::UpdateEvents(std::int32_t) {
    throw UnexpectedException("This method is not supposed to be called anyway");
}

IInternalEvents* EventsMetaHost::GetWorkerEvents(std::size_t index) {
    if (index >= m_workers.size()) {
        throw ArgumentOutOfRangeException("index");
    }
    return m_workers[index].Forwarder.get();
}

std::int64_t EventsMetaHost::OverallValue() const {
    double weights = 0.0;
    double done = 0.0;
    for (const Worker& worker : m_workers) {
        weights += worker.Weight;
        done += static_cast<double>(worker.Done) / static_cast<double>(worker.Total) * worker.Weight;
    }
    return weights > 0.0 ? static_cast<std::int64_t>(m_intStepCount * (done / weights)) : 0;
}

void EventsMetaHost::ReportProgress(std::size_t index, std::int64_t done, std::int64_t total) {
    if (m_pEvents == nullptr) {
        return;
    }
    const bool silent = m_workers[index].Silent;
    {
        const std::lock_guard lock(m_mutex);
        std::uint16_t abort = 0;
        m_pEvents->CheckAbort(&abort);
        if (!silent && abort == EventsTrue) {
            throw AbortedException();
        }
        if (!silent && IsTimedOut()) {
            throw TimeOutException();
        }
        if (total != 0) {
            m_workers[index].Done = done;
            m_workers[index].Total = total;
            if (!silent) {
                PassOn();
            }
        }
    }
    // The forwarder has a pause gate of its own that nobody closes; the one that a host closes is here.
    if (!silent) {
        m_pEvents->WaitWhilePaused();
    }
}

void EventsMetaHost::PassOn() {
    const std::int64_t value = OverallValue();
    m_pEvents->OnProgress(static_cast<std::int32_t>(value - m_intLastValue));
    m_intLastValue = value;
}

} // namespace ImagingFramework
