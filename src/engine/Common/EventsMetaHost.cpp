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
    const std::lock_guard lock(m_mutex);
    Worker& worker = m_workers[index];
    std::uint16_t abort = 0;
    m_pEvents->CheckAbort(&abort);
    if (!worker.Silent) {
        if (abort == EventsTrue) {
            throw AbortedException();
        }
        if (IsTimedOut()) {
            throw TimeOutException();
        }
    }
    if (total == 0 || worker.Silent) {
        return;
    }
    worker.Done = done;
    worker.Total = total;
    const std::int64_t value = OverallValue();
    m_pEvents->OnProgress(static_cast<std::int32_t>(value - m_intLastValue));
    m_pEvents->WaitWhilePaused();
    m_intLastValue = value;
}

} // namespace ImagingFramework
