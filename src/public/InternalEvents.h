#pragma once

#include "Common/InternalEvents.h"

namespace Corvane::Rasterloom {

/// The counter of a run, which calls back whenever the visible value has moved.
class InternalEvents : public ImagingFramework::IInternalEventsImpl {
public:
    using Callback = void (*)(InternalEvents& events);

    /// `pUserValue` is handed on to the callback; both may be null.
    InternalEvents(Callback pCallback, void* pUserValue) : m_pUserValue(pUserValue), m_pCallback(pCallback) {}

    void OnProgress(std::int32_t step) override;
    /// Lets the work stop at its next check. A `ResetProgress` clears this again.
    void Abort() noexcept { m_bAbort = true; }
    void* GetUserValueRef() const noexcept { return m_pUserValue; }
    /// Whether the visible value moved since the last call of this.
    bool ResetProgressChanged();

private:
    void* m_pUserValue;
    Callback m_pCallback;
};

/// The working side for bodies of the public layer that count their own steps.
class InternalEventsHost : public ImagingFramework::IInternalEventsHostImpl {
public:
    InternalEventsHost() = default;
};

} // namespace Corvane::Rasterloom
