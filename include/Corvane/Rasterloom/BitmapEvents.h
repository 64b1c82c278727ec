#pragma once

#include <Corvane/Rasterloom/BitmapChange.h>
#include <Corvane/Rasterloom/EventArgs.h>

namespace Corvane::Rasterloom {

namespace Codecs {
class EncoderOptions;
}

/// An argument record whose handler may stop what is about to happen.
class CancelEventArgs : public EventArgs {
public:
    /// Whether a handler wants the operation not to begin; false at first.
    bool get_Cancel() const noexcept { return m_bCancel; }
    void set_Cancel(bool cancel) noexcept { m_bCancel = cancel; }

private:
    bool m_bCancel = false;
};

/// A bitmap is about to change. Setting `Cancel` makes the operation fail with `AbortedException`.
class BitmapChangingEventArgs : public CancelEventArgs {
public:
    /// The change that is about to come.
    explicit BitmapChangingEventArgs(BitmapChange change) : m_enChange(change) {}
    /// What kind of change it is.
    BitmapChange get_Change() const noexcept { return m_enChange; }

private:
    BitmapChange m_enChange;
};

/// A bitmap has changed.
class BitmapChangedEventArgs : public EventArgs {
public:
    /// The change that came.
    explicit BitmapChangedEventArgs(BitmapChange change) : m_enChange(change) {}
    /// What kind of change it is.
    BitmapChange get_Change() const noexcept { return m_enChange; }

private:
    BitmapChange m_enChange;
};

/// A bitmap is about to be saved. Setting `Cancel` makes the save fail with `AbortedException`.
class BitmapSavingEventArgs : public CancelEventArgs {
public:
    /// The options are the caller's and outlive the event.
    explicit BitmapSavingEventArgs(const Codecs::EncoderOptions* options) : m_pOptions(options) {}
    /// Valid during the event; null when the writer has none.
    const Codecs::EncoderOptions* get_Options() const noexcept { return m_pOptions; }

private:
    const Codecs::EncoderOptions* m_pOptions;
};

} // namespace Corvane::Rasterloom
