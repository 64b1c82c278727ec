#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <utility>

/// Types that a host environment would bring along: standard failures, streams, plain geometry, events.
namespace Corvane::Rasterloom::Host {

/// The root of all failures of the library. Copies share the text, so copying does not throw.
class RASTERLOOM_API Exception : public std::exception {
public:
    /// The text for the user, UTF-8.
    explicit Exception(std::string message = {});
    Exception(const Exception&) noexcept;
    Exception& operator=(const Exception&) noexcept;
    ~Exception() override;

    /// The text for the user, UTF-8; may be empty.
    const std::string& get_Message() const noexcept { return *m_pMessage; }
    const char* what() const noexcept override { return m_pMessage->c_str(); }

private:
    std::shared_ptr<const std::string> m_pMessage;
};

// A standard failure: a text of its own, and the form with a text from the raise site.
#define RASTERLOOM_HOST_ERROR(Class, Base, Text)                                                                       \
    class RASTERLOOM_API Class : public Base {                                                                         \
    public:                                                                                                            \
        Class() : Base(std::string(Text)) {}                                                                           \
        explicit Class(std::string message) : Base(std::move(message)) {}                                              \
    }

/// The root of what an application raises; that of this library's own failures.
RASTERLOOM_HOST_ERROR(ApplicationException, Exception, "Error in the application.");
/// The root of the standard failures.
RASTERLOOM_HOST_ERROR(SystemException, Exception, "System error.");
/// Reading or writing failed; the text tells the cause.
RASTERLOOM_HOST_ERROR(IOException, SystemException, "I/O error occurred.");
/// There is no file of that name.
RASTERLOOM_HOST_ERROR(FileNotFoundException, IOException, "Unable to find the specified file.");
/// There is no folder of that name.
RASTERLOOM_HOST_ERROR(DirectoryNotFoundException, IOException, "Unable to find the specified directory.");
/// The rights to a file or folder do not suffice.
RASTERLOOM_HOST_ERROR(UnauthorizedAccessException, SystemException, "The access is denied.");
/// The object cannot do that, as a stream that cannot seek.
RASTERLOOM_HOST_ERROR(NotSupportedException, SystemException, "The operation is not supported.");
/// The operation has no such form.
RASTERLOOM_HOST_ERROR(NotImplementedException, SystemException, "The operation is not implemented.");
/// A value is of another type than the one asked for.
RASTERLOOM_HOST_ERROR(InvalidCastException, SystemException, "The object is of another class.");
/// The call does not fit the state of the object.
RASTERLOOM_HOST_ERROR(InvalidOperationException, SystemException, "The operation is not valid in the present state.");
/// A number does not fit its type.
RASTERLOOM_HOST_ERROR(OverflowException, SystemException, "An arithmetic operation has overflowed.");
/// An object could not be written or read as bytes.
RASTERLOOM_HOST_ERROR(SerializationException, SystemException, "Serialization error.");

#undef RASTERLOOM_HOST_ERROR

/// An argument has a value that cannot be used.
class RASTERLOOM_API ArgumentException : public SystemException {
public:
    /// The text tells the name of the parameter where it is given.
    explicit ArgumentException(std::string message, std::string paramName = {});
    ArgumentException(const ArgumentException&) noexcept;
    ArgumentException& operator=(const ArgumentException&) noexcept;
    ~ArgumentException() override;

    /// Name of the parameter; empty when it is not known.
    const std::string& get_ParamName() const noexcept { return *m_pParamName; }

private:
    std::shared_ptr<const std::string> m_pParamName;
};

/// An argument is missing: null, an empty name, "no colour".
class RASTERLOOM_API ArgumentNullException : public ArgumentException {
public:
    /// The name of the parameter, under a text that tells it.
    explicit ArgumentNullException(const std::string& paramName);
    ArgumentNullException(std::string paramName, std::string message);
};

/// An argument lies outside of what is allowed.
class RASTERLOOM_API ArgumentOutOfRangeException : public ArgumentException {
public:
    /// The name of the parameter, under a text that tells it.
    explicit ArgumentOutOfRangeException(const std::string& paramName);
    ArgumentOutOfRangeException(std::string paramName, std::string message);
};

/// A call on an object after its `Dispose`.
class RASTERLOOM_API ObjectDisposedException : public InvalidOperationException {
public:
    /// The class name of the object, under a text that tells it.
    explicit ObjectDisposedException(const std::string& objectName);
    ObjectDisposedException(const ObjectDisposedException&) noexcept;
    ObjectDisposedException& operator=(const ObjectDisposedException&) noexcept;
    ~ObjectDisposedException() override;

    /// Class name of the object.
    const std::string& get_ObjectName() const noexcept { return *m_pObjectName; }

private:
    std::shared_ptr<const std::string> m_pObjectName;
};

/// A failure that is known by its code.
class RASTERLOOM_API COMException : public SystemException {
public:
    /// A text and the code.
    COMException(std::string message, std::int32_t code);

    /// The code of the failure.
    std::int32_t get_ErrorCode() const noexcept { return m_intErrorCode; }

private:
    std::int32_t m_intErrorCode;
};

} // namespace Corvane::Rasterloom::Host
