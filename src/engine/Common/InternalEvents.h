#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace ImagingFramework {

/// The true value of the flags that this interface hands out, as platform automation booleans have it.
inline constexpr std::uint16_t EventsTrue = 65535;

/// A progress counter with an abort flag and a pause gate, owned by whoever watches an engine loop. Safe to use from the
/// working thread and the watching thread at once. Getters fail with `ArgumentNullPointerException` ("pValue") on null.
class IInternalEvents {
public:
    virtual void CheckAbort(std::uint16_t* pValue) const = 0;
    virtual void GetProgressMinValue(std::int32_t* pValue) const = 0;
    virtual void SetProgressMinValue(std::int32_t value) = 0;
    virtual void GetProgressMaxValue(std::int32_t* pValue) const = 0;
    virtual void SetProgressMaxValue(std::int32_t value) = 0;
    virtual void ResetProgress() = 0;
    virtual void OnProgress(std::int32_t step) = 0;
    virtual void GetProgressCurValue(std::int32_t* pValue) const = 0;
    virtual void GetUserProgressMinValue(std::int32_t* pValue) const = 0;
    virtual void SetUserProgressMinValue(std::int32_t value) = 0;
    virtual void GetUserProgressMaxValue(std::int32_t* pValue) const = 0;
    virtual void SetUserProgressMaxValue(std::int32_t value) = 0;
    virtual void GetProgressUserMode(std::uint16_t* pValue) const = 0;
    virtual void SetProgressUserMode(std::uint16_t value) = 0;
    /// `EventsTrue` pauses, anything below lets the work go on.
    virtual void SetPause(std::uint16_t value) = 0;
    virtual void WaitWhilePaused() = 0;
    virtual ~IInternalEvents() = default;
    virtual void Lock() const = 0;
    virtual void Unlock() const = 0;
};

class IInternalEventsImpl : public IInternalEvents {
public:
    void CheckAbort(std::uint16_t* pValue) const override;
    void GetProgressMinValue(std::int32_t* pValue) const override;
    void SetProgressMinValue(std::int32_t value) override;
    void GetProgressMaxValue(std::int32_t* pValue) const override;
    void SetProgressMaxValue(std::int32_t value) override;
    /// Sets the counter back to its minimum and clears a pending abort.
    void ResetProgress() override;
    void OnProgress(std::int32_t step) override;
    void GetProgressCurValue(std::int32_t* pValue) const override;
    void GetUserProgressMinValue(std::int32_t* pValue) const override;
    void SetUserProgressMinValue(std::int32_t value) override;
    void GetUserProgressMaxValue(std::int32_t* pValue) const override;
    void SetUserProgressMaxValue(std::int32_t value) override;
    void GetProgressUserMode(std::uint16_t* pValue) const override;
    void SetProgressUserMode(std::uint16_t value) override;
    void SetPause(std::uint16_t value) override;
    void WaitWhilePaused() override;
    void Lock() const override { m_mutex.lock(); }
    void Unlock() const override { m_mutex.unlock(); }

protected:
    std::int32_t UserValue(std::int32_t value) const noexcept;
    void SetAndReset(std::int32_t& field, std::int32_t value);
    void Read(std::int32_t* pValue, const std::int32_t& field) const;

    std::int32_t m_intMinimum = 0;
    std::int32_t m_intMaximum = 0;
    std::int32_t m_intCurrent = 0;
    double m_scale = 1.0;
    std::atomic<bool> m_bAbort{false};
    std::int32_t m_intUserMinimum = 0;
    std::int32_t m_intUserMaximum = 100;
    bool m_bUserMode = false;
    bool m_bProgressChanged = false;
    /// Recursive, since setters reset the progress under the lock they hold.
    mutable std::recursive_mutex m_mutex;

private:
    std::mutex m_pauseMutex;
    std::condition_variable m_pauseChanged;
    bool m_bPaused = false;
};

/// The side of the working code: it declares its steps, then reports them. All engine loops derive from it.
class IInternalEventsHost {
public:
    /// Borrowed; null switches reporting, timeout and abort off.
    virtual void SetEvents(IInternalEvents* pEvents) = 0;
    virtual IInternalEvents* GetEvents() const = 0;
    /// Milliseconds; 0 and below mean none.
    virtual void SetTimeout(std::int32_t milliseconds) = 0;
    virtual std::int32_t GetTimeout() const = 0;
    /// Adds `count` steps to the range of the events and starts the clock.
    virtual void ResetProgress(std::int32_t count) = 0;
    /// Reports steps. Fails with `TimeOutException` or `AbortedException`; waits while the work is paused.
    virtual void UpdateEvents(std::int32_t step) = 0;
    virtual ~IInternalEventsHost() = default;
};

class IInternalEventsHostImpl : public virtual IInternalEventsHost {
public:
    void SetEvents(IInternalEvents* pEvents) override { m_pEvents = pEvents; }
    IInternalEvents* GetEvents() const override { return m_pEvents; }
    void SetTimeout(std::int32_t milliseconds) override { m_intTimeout = milliseconds; }
    std::int32_t GetTimeout() const override { return m_intTimeout; }
    void ResetProgress(std::int32_t count) override;
    void UpdateEvents(std::int32_t step) override;

protected:
    /// True when a timeout is set and has passed.
    bool IsTimedOut() const noexcept;

    IInternalEvents* m_pEvents = nullptr;
    std::uint32_t m_uintStartTick = 0;
    std::int32_t m_intTimeout = -1;
};

/// Milliseconds of a steady clock, wrapping at 32 bits; only differences have a meaning.
std::uint32_t GetTickCount() noexcept;

/// Passes steps on to its events up to a declared number and swallows the rest.
class ProgressReporter : public IInternalEventsHostImpl {
public:
    void SetMaximumStepCount(std::int32_t count);
    /// Gives the steps done so far.
    std::int32_t Report(std::int32_t count);

private:
    std::int32_t m_intMaximumStepCount = 1;
    std::int32_t m_intStepsDone = 0;
};

} // namespace ImagingFramework
