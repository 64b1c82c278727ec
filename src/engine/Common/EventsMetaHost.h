#pragma once

#include "Common/InternalEvents.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

namespace ImagingFramework {

/// Merges the progress of several workers, by weights, into one value on the real events. Each worker gets a forwarder as
/// its events. Abort and timeout of the real events reach every worker that is not silent; a pause holds all but those.
class EventsMetaHost : public IInternalEventsHostImpl {
public:
    /// One weight per worker; `silentWorkers` holds indices of workers that never touch the real events and never raise:
    /// what they have done shows when one of the others reports. `stepCount` is the number of steps that the whole work
    /// adds to the real events.
    EventsMetaHost(std::vector<std::uint32_t> weights, std::set<std::size_t> silentWorkers, std::int32_t stepCount);
    ~EventsMetaHost() override;

    /// Stores the events and declares the overall steps; nothing counts as done any more.
    void SetEvents(IInternalEvents* pEvents) override;
    /// A programming error: workers report through their forwarders.
    void UpdateEvents(std::int32_t step) override;

    /// The events for worker `index`; lives as long as this object.
    IInternalEvents* GetWorkerEvents(std::size_t index);

private:
    class EventsForwarder;

    void ReportProgress(std::size_t index, std::int64_t done, std::int64_t total);
    void PassOn();
    std::int64_t OverallValue() const;

    struct Worker {
        std::int64_t Done = 0;
        std::int64_t Total = 1;
        std::uint32_t Weight = 1;
        bool Silent = false;
        std::unique_ptr<EventsForwarder> Forwarder;
    };

    std::vector<Worker> m_workers;
    std::int32_t m_intStepCount;
    std::int64_t m_intLastValue = 0;
    std::mutex m_mutex;
};

} // namespace ImagingFramework
