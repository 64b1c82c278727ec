#include "ErrorHandling/Exceptions.h"

#include <cerrno>
#include <fmt/format.h>
#include <system_error>

namespace ImagingFramework {

namespace {

constexpr auto InvalidArgumentCode = static_cast<std::int32_t>(0x80070057U);

std::string ContactText() { return fmt::format("Please contact {}", SupportAddress); }

std::string UnexpectedText() {
    return fmt::format("Some unexpected error occured. If you see this message, please contact {}.", SupportAddress);
}

std::string ArgumentText(std::string_view name, std::string_view detail) {
    std::string text = fmt::format("Argument has an unappropriate value ({}).", name);
    if (!detail.empty()) {
        // The full stop is added once more behind the detail, so a detail that ends in one shows it inside the bracket.
        text = fmt::format("{} ({}).", text, detail);
    }
    return text;
}

ExceptionInfo OutOfRangeInfo(std::string text, SourceLocation where) {
    return {ExceptionType::ArgumentOutOfRangeException, "ArgumentOutOfRangeException", InvalidArgumentCode,
            std::move(text), where};
}

/// The platform's words for an error number; empty for a number that it does not know.
std::string SystemText(std::int32_t code) {
    if (code <= 0) {
        return {};
    }
    std::string text = std::generic_category().message(code);
    return text.starts_with("Unknown error") ? std::string() : text;
}

std::string Win32Text(std::string_view text, std::int32_t code) {
    const std::string system = SystemText(code);
    if (system.empty()) {
        return std::string(text);
    }
    return fmt::format("{}. WinAPI error occured (id={}, text={}). {} for details.", text, code, system, ContactText());
}

std::string JoinTexts(std::string_view text, std::string_view system) {
    if (text.empty()) {
        return std::string(system);
    }
    return system.empty() ? std::string(text) : fmt::format("{} {}", text, system);
}

enum class SystemFailure { None, FileNotFound, PathNotFound, AccessDenied, InvalidName, AlreadyExists, Other };

[[noreturn]] void Raise(SystemFailure failure, std::string message, SourceLocation where) {
    switch (failure) {
    case SystemFailure::FileNotFound:
        throw FileNotFoundException(-7, std::move(message), where);
    case SystemFailure::PathNotFound:
        throw PathNotFoundException(-21545, std::move(message), where);
    case SystemFailure::AccessDenied:
        throw AccessDeniedException(-9, std::move(message), where);
    case SystemFailure::InvalidName:
        throw InvalidNameException(-21544, std::move(message), where);
    case SystemFailure::AlreadyExists:
        throw CreateFileException(-21544, std::move(message), where);
    default:
        throw Win32Exception(message, 0, where);
    }
}

SystemFailure FailureOfErrno(std::int32_t code) {
    switch (code) {
    case 0:
        return SystemFailure::None;
    case ENOENT:
        return SystemFailure::FileNotFound;
    case ENOTDIR:
        return SystemFailure::PathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
        return SystemFailure::AccessDenied;
    case ENAMETOOLONG:
    case EINVAL:
        return SystemFailure::InvalidName;
    case EEXIST:
        return SystemFailure::AlreadyExists;
    default:
        return SystemFailure::Other;
    }
}

struct PlatformCode {
    std::int32_t Code;
    SystemFailure Failure;
    std::int32_t Errno;
};

constexpr PlatformCode PlatformCodes[] = {
    {2, SystemFailure::FileNotFound, ENOENT},      {3, SystemFailure::PathNotFound, ENOENT},
    {5, SystemFailure::AccessDenied, EACCES},      {123, SystemFailure::InvalidName, EINVAL},
    {183, SystemFailure::AlreadyExists, EEXIST},
};

} // namespace

PathNotFoundException::PathNotFoundException(SourceLocation where)
    : PathNotFoundException(-21545, "The path you specified cannot be found.", where) {}

PathNotFoundException::PathNotFoundException(std::string_view path, SourceLocation where)
    : PathNotFoundException(-21545, fmt::format("The path '{}' cannot be found.", path), where) {}

PathNotFoundException::PathNotFoundException(std::int32_t hresult, std::string message, SourceLocation where)
    : FileOpenException(ExceptionInfo{ExceptionType::PathNotFoundException, "PathNotFoundException", hresult,
                                      std::move(message), where}) {}

FileCopyException::FileCopyException(SourceLocation where)
    : FileSystemException(ExceptionInfo{ExceptionType::FileCopyException, "FileCopyException", -5615,
                                        "Error occured during copying files.", where}) {}

FileCopyException::FileCopyException(std::string_view source, std::string_view destination, SourceLocation where)
    : FileSystemException(ExceptionInfo{ExceptionType::FileCopyException, "FileCopyException", -5615,
                                        fmt::format("Unable to copy '{}' file to '{}' file.", source, destination),
                                        where}) {}

UnexpectedException::UnexpectedException(SourceLocation where)
    : ApplicationException(ExceptionInfo{ExceptionType::UnexpectedException, "UnexpectedException",
                                         static_cast<std::int32_t>(0x8000FFFFU), UnexpectedText(), where}) {}

UnexpectedException::UnexpectedException(std::string_view additionalInfo, SourceLocation where)
    : ApplicationException(ExceptionInfo{ExceptionType::UnexpectedException, "UnexpectedException",
                                         static_cast<std::int32_t>(0x8000FFFFU),
                                         fmt::format("{} Additional info: {}", UnexpectedText(), additionalInfo),
                                         where}) {}

ArgumentException::ArgumentException(SourceLocation where)
    : ApplicationException(ExceptionInfo{ExceptionType::ArgumentException, "ArgumentException", InvalidArgumentCode,
                                         "Argument has an unappropriate value.", where}) {}

ArgumentException::ArgumentException(std::string_view name, SourceLocation where)
    : ArgumentException(name, {}, where) {}

ArgumentException::ArgumentException(std::string_view name, std::string_view detail, SourceLocation where)
    : ApplicationException(ExceptionInfo{ExceptionType::ArgumentException, "ArgumentException", InvalidArgumentCode,
                                         ArgumentText(name, detail), where}) {}

ArgumentOutOfRangeException::ArgumentOutOfRangeException(SourceLocation where)
    : ArgumentException(OutOfRangeInfo("Argument is out of range.", where)) {}

ArgumentOutOfRangeException::ArgumentOutOfRangeException(std::string_view name, SourceLocation where)
    : ArgumentException(OutOfRangeInfo(fmt::format("Argument is out of range ({}).", name), where)) {}

ArgumentOutOfRangeException::ArgumentOutOfRangeException(std::string_view name, std::string_view detail,
                                                         SourceLocation where)
    : ArgumentException(OutOfRangeInfo(fmt::format("Argument '{}' is out of range ({}).", name, detail), where)) {}

ArgumentOutOfRangeException::ArgumentOutOfRangeException(std::string_view name, std::int32_t value, std::int32_t low,
                                                         std::int32_t high, SourceLocation where)
    : ArgumentException(OutOfRangeInfo(fmt::format("Argument '{}' is out of range. Current value is {}, but correct "
                                                   "interval for the argument is [{}, {}].",
                                                   name, value, low, high),
                                       where)) {}

ArgumentOutOfRangeException::ArgumentOutOfRangeException(std::string_view name, double value, double low, double high,
                                                         SourceLocation where)
    : ArgumentException(OutOfRangeInfo(fmt::format("Argument '{}' is out of range. Current value is {:.2f}, but "
                                                   "correct interval for the argument is [{:.2f}, {:.2f}].",
                                                   name, value, low, high),
                                       where)) {}

InvalidTypeCastException::InvalidTypeCastException(SourceLocation where)
    : ApplicationException(ExceptionInfo{ExceptionType::InvalidTypeCastException, "InvalidTypeCastException", -4126,
                                         "Invalid type cast operation.", where}) {}

InvalidTypeCastException::InvalidTypeCastException(std::string_view variable, SourceLocation where)
    : ApplicationException(ExceptionInfo{ExceptionType::InvalidTypeCastException, "InvalidTypeCastException", -4126,
                                         fmt::format("Unable to cast variable {}.", variable), where}) {}

InvalidTypeCastException::InvalidTypeCastException(std::string_view variable, std::string_view type,
                                                   SourceLocation where)
    : ApplicationException(ExceptionInfo{ExceptionType::InvalidTypeCastException, "InvalidTypeCastException", -4126,
                                         fmt::format("Unable to cast variable {} to type {}.", variable, type),
                                         where}) {}

Win32Exception::Win32Exception(std::string_view text, std::int32_t code, SourceLocation where)
    : SystemException(ExceptionInfo{ExceptionType::Win32Exception, "Win32Exception", DefaultHresult,
                                    Win32Text(text, code), where}) {}

void ThrowSystemError(std::int32_t code, std::string_view text, SourceLocation where) {
    const SystemFailure failure = FailureOfErrno(code);
    if (failure != SystemFailure::None) {
        Raise(failure, JoinTexts(text, SystemText(code)), where);
    }
}

void ThrowWin32Exception(std::int32_t code, std::string_view text, SourceLocation where) {
    if (code == 0) {
        return;
    }
    for (const PlatformCode& known : PlatformCodes) {
        if (known.Code == code) {
            Raise(known.Failure, JoinTexts(text, SystemText(known.Errno)), where);
        }
    }
    // The words of this system are for other numbers.
    Raise(SystemFailure::Other, std::string(text), where);
}

} // namespace ImagingFramework
