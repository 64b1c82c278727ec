#include <Corvane/Rasterloom/Host/Errors.h>

namespace Corvane::Rasterloom::Host {

Exception::Exception(std::string message) : m_pMessage(std::make_shared<const std::string>(std::move(message))) {}
Exception::Exception(const Exception&) noexcept = default;
Exception& Exception::operator=(const Exception&) noexcept = default;
Exception::~Exception() = default;

ArgumentException::ArgumentException(std::string message, std::string paramName)
    : SystemException(std::move(message)), m_pParamName(std::make_shared<const std::string>(std::move(paramName))) {}
ArgumentException::ArgumentException(const ArgumentException&) noexcept = default;
ArgumentException& ArgumentException::operator=(const ArgumentException&) noexcept = default;
ArgumentException::~ArgumentException() = default;

ArgumentNullException::ArgumentNullException(const std::string& paramName)
    : ArgumentException("The argument '" + paramName + "' is null.", paramName) {}
ArgumentNullException::ArgumentNullException(std::string paramName, std::string message)
    : ArgumentException(std::move(message), std::move(paramName)) {}

ArgumentOutOfRangeException::ArgumentOutOfRangeException(const std::string& paramName)
    : ArgumentException("The argument '" + paramName + "' is out of range.", paramName) {}
ArgumentOutOfRangeException::ArgumentOutOfRangeException(std::string paramName, std::string message)
    : ArgumentException(std::move(message), std::move(paramName)) {}

ObjectDisposedException::ObjectDisposedException(const std::string& objectName)
    : InvalidOperationException("The object '" + objectName + "' has been disposed."),
      m_pObjectName(std::make_shared<const std::string>(objectName)) {}
ObjectDisposedException::ObjectDisposedException(const ObjectDisposedException&) noexcept = default;
ObjectDisposedException& ObjectDisposedException::operator=(const ObjectDisposedException&) noexcept = default;
ObjectDisposedException::~ObjectDisposedException() = default;

COMException::COMException(std::string message, std::int32_t code)
    : SystemException(std::move(message)), m_intErrorCode(code) {}

} // namespace Corvane::Rasterloom::Host
