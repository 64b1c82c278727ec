#pragma once

#include "ErrorHandling/Exception.h"

#include <exception>

namespace Corvane::Rasterloom {

/// The public failure for one of the engine, with the engine's text. Null gives null.
std::exception_ptr GetManagedException(const ImagingFramework::Exception* exception);

/// The engine failure for one of a host's callback, with its text and the plain code.
ImagingFramework::Exception GetUnmanagedException(const std::exception& exception);
/// The same for whatever was thrown; the text is empty for what is no `std::exception` and for null.
ImagingFramework::Exception GetUnmanagedException(const std::exception_ptr& exception);

} // namespace Corvane::Rasterloom
