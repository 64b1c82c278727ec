// The part of Bitmap that tells the host what happens.

#include "BitmapImpl.h"

#include "Common/InternalEvents.h"
#include "ObjectGuard.h"

#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/ISyncHandler.h>

#include <algorithm>

namespace Corvane::Rasterloom {

void Bitmap::_RaiseChangingEvent(BitmapChange change) {
    CheckNotDisposed();
    BitmapChangingEventArgs args(change);
    Changing.Raise(args);
    if (args.get_Cancel()) {
        throw AbortedException();
    }
}

void Bitmap::_RaiseChangedEvent(BitmapChange change) {
    m_pImpl->m_bModified = true;
    Changed.Raise(BitmapChangedEventArgs(change));
}

void Bitmap::_RaiseSavingEvent(const Codecs::EncoderOptions* options) {
    BitmapSavingEventArgs args(options);
    Saving.Raise(args);
    if (args.get_Cancel()) {
        throw AbortedException();
    }
}

void Bitmap::_RaiseSavedEvent() { Saved.Raise(EventArgs()); }

void Bitmap::Abort() noexcept { m_pImpl->m_bAborted = true; }

bool Bitmap::get__Aborted() const noexcept { return m_pImpl->m_bAborted; }

void Bitmap::set__Aborted(bool aborted) noexcept { m_pImpl->m_bAborted = aborted; }

void Bitmap::_ResetProgress(std::int32_t maximum) {
    m_pImpl->m_bAborted = false;
    m_pImpl->m_uintBeginTimeTick = ImagingFramework::GetTickCount();
    m_pImpl->m_intMaxProgress = std::max(0, maximum);
    m_pImpl->m_intCurProgress = 0;
    Progress.Raise(ProgressEventArgs(0, maximum));
}

void Bitmap::_OnProgress(std::int32_t step) {
    m_pImpl->m_intCurProgress =
        static_cast<std::int32_t>(std::min<std::int64_t>(std::int64_t{m_pImpl->m_intCurProgress} + step,
                                                         m_pImpl->m_intMaxProgress));
    Progress.Raise(ProgressEventArgs(m_pImpl->m_intCurProgress, m_pImpl->m_intMaxProgress));
    if (m_pImpl->m_bAborted) {
        throw AbortedException();
    }
    const std::uint32_t elapsed = ImagingFramework::GetTickCount() - m_pImpl->m_uintBeginTimeTick;
    if (get_Timeout() > 0 && static_cast<std::int32_t>(elapsed) > get_Timeout()) {
        throw TimeoutException();
    }
}

void Bitmap::_OnProgress(ISyncHandler* sender, ProgressEventArgs& args) {
    Progress.Raise(args);
    if (sender != nullptr && m_pImpl->m_bAborted) {
        sender->Abort();
    }
}

} // namespace Corvane::Rasterloom
