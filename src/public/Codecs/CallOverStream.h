#pragma once

#include "CallEngine.h"
#include "StreamWrapper.h"

namespace Corvane::Rasterloom::Codecs {

/// `CallEngine` for calls that use a host's stream (may be null): what the stream itself has raised goes before the
/// engine's failure, which only tells that there was one.
template <class F>
decltype(auto) CallOverStream(StreamWrapper* pStream, F&& body) {
    if (pStream != nullptr) {
        try {
            pStream->RethrowFailure();
        } catch (...) {
            // Of an earlier call, which went on without the stream's answer.
        }
    }
    try {
        return CallEngine(std::forward<F>(body));
    } catch (const AbortedException&) {
        throw;
    } catch (const TimeoutException&) {
        throw;
    } catch (const Host::Exception&) {
        if (pStream != nullptr) {
            pStream->RethrowFailure();
        }
        throw;
    }
}

} // namespace Corvane::Rasterloom::Codecs
