#include <Corvane/Rasterloom/Exceptions.h>

#include "ErrorHandling/Exceptions.h"
#include "ExceptionsConverter.h"

#include <fmt/format.h>

namespace Corvane::Rasterloom {

Exception::Exception() : Exception(std::string()) {}
Exception::Exception(std::string message) : Exception(std::move(message), nullptr) {}
Exception::Exception(std::string message, std::exception_ptr inner)
    : Host::ApplicationException(std::move(message)), m_pInnerException(std::move(inner)) {}
Exception::Exception(const ImagingFramework::Exception* exception) : Exception(CreateErrorString(exception)) {}
Exception::Exception(const Exception&) noexcept = default;
Exception& Exception::operator=(const Exception&) noexcept = default;
Exception::~Exception() = default;

std::string Exception::CreateErrorString(const ImagingFramework::Exception* exception) {
    return exception ? exception->GetExceptionStringRef() : std::string();
}

std::exception_ptr Exception::GetManagedException(const ImagingFramework::Exception* unmanagedException) {
    if (!unmanagedException) {
        throw Host::ArgumentNullException("unmanagedException");
    }
    return Rasterloom::GetManagedException(unmanagedException);
}

void Exception::ThrowManagedException(const ImagingFramework::Exception* unmanagedException) {
    std::rethrow_exception(GetManagedException(unmanagedException));
}

UnexpectedException::UnexpectedException()
    : Exception(fmt::format("Some unexpected error has occured. If you see this message, please contact {}.",
                            ImagingFramework::SupportAddress)) {}

} // namespace Corvane::Rasterloom
