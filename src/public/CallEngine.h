#pragma once

#include "ErrorHandling/Exception.h"

#include <Corvane/Rasterloom/Exceptions.h>

#include <new>
#include <utility>

namespace Corvane::Rasterloom {

/// Runs `body` and gives its result; a failure of the engine is raised again as the public one. So is an allocation
/// that failed, as `UnexpectedException`. All else passes through. Every call into the engine stands in one of these.
template <class F>
decltype(auto) CallEngine(F&& body) {
    try {
        return std::forward<F>(body)();
    } catch (const ImagingFramework::Exception& exception) {
        Exception::ThrowManagedException(&exception);
    } catch (const std::bad_alloc&) {
        throw UnexpectedException("Unable to commit memory.");
    }
}

} // namespace Corvane::Rasterloom
