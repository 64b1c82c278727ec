#pragma once

#include "ErrorHandling/Exception.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

// The tree of the engine's failures, as a table. The spelling of the texts is part of the interface.
//
// CODED: code and text come from the raise site.
// FIXED: code and text belong to the class.
// NAMED: as FIXED, and a second constructor puts the name of an object into the second text.

#define RASTERLOOM_FAILURE_HEAD(Class, Base)                                                                           \
    class Class : public Base {                                                                                        \
    protected:                                                                                                         \
        explicit Class(ExceptionInfo info) : Base(std::move(info)) {}                                                  \
                                                                                                                       \
    public:

#define RASTERLOOM_CODED(Class, Base)                                                                                  \
    RASTERLOOM_FAILURE_HEAD(Class, Base)                                                                               \
    Class(std::int32_t hresult, std::string message, SourceLocation where = SourceLocation::current())                 \
        : Base(ExceptionInfo{ExceptionType::Class, #Class, hresult, std::move(message), where}) {}                     \
    }

#define RASTERLOOM_FIXED(Class, Base, Code, Text)                                                                      \
    RASTERLOOM_FAILURE_HEAD(Class, Base)                                                                               \
    explicit Class(SourceLocation where = SourceLocation::current())                                                   \
        : Base(ExceptionInfo{ExceptionType::Class, #Class, static_cast<std::int32_t>(Code), Text, where}) {}           \
    }

#define RASTERLOOM_NAMED(Class, Base, Code, Text, Before, After)                                                       \
    RASTERLOOM_FAILURE_HEAD(Class, Base)                                                                               \
    explicit Class(SourceLocation where = SourceLocation::current())                                                   \
        : Base(ExceptionInfo{ExceptionType::Class, #Class, static_cast<std::int32_t>(Code), Text, where}) {}           \
    explicit Class(std::string_view name, SourceLocation where = SourceLocation::current())                            \
        : Base(ExceptionInfo{ExceptionType::Class, #Class, static_cast<std::int32_t>(Code),                            \
                             Before + std::string(name) + After, where}) {}                                            \
    }

namespace ImagingFramework {

// clang-format off
RASTERLOOM_CODED(SystemException, Exception);
RASTERLOOM_FIXED(OverflowException, SystemException, -4104, "An overflow error occured.");
RASTERLOOM_FIXED(MemoryException, SystemException, 0x8007000EU, "Unable to commit memory.");

RASTERLOOM_CODED(IoException, SystemException);
RASTERLOOM_CODED(StreamException, IoException);
RASTERLOOM_NAMED(StreamSeekException, StreamException, -4122, "Unable to seek the stream.", "Unable to seek stream '", "'.");
RASTERLOOM_NAMED(StreamReadException, StreamException, -4118, "Unable to read data from stream.", "Unable to read data from stream '", "'.");
RASTERLOOM_NAMED(StreamWriteException, StreamException, -4119, "Unable to write data to stream.", "Unable to write data to stream '", "'.");
RASTERLOOM_NAMED(StreamStatException, StreamException, -4123, "Unable to get information about stream.", "Unable to get information about stream '", "'.");
RASTERLOOM_CODED(FileSystemException, IoException);
RASTERLOOM_NAMED(CreateTempFileException, FileSystemException, -4112, "Unable to create temporary file.", "Unable to create temporary file '", "'.");
RASTERLOOM_NAMED(FileOpenException, FileSystemException, -4113, "Unable to open file.", "Unable to open file '", "'.");
RASTERLOOM_CODED(FileNotFoundException, FileOpenException);
RASTERLOOM_CODED(InvalidNameException, FileOpenException);
RASTERLOOM_CODED(CreateFileException, FileSystemException);
RASTERLOOM_NAMED(FileWriteException, FileSystemException, -4114, "Unable to write data to file.", "Unable to write data to file '", "'.");

RASTERLOOM_CODED(ApplicationException, Exception);
RASTERLOOM_FIXED(CompressionTypeException, ApplicationException, 0x80070057U, "Compression type is not applicable.");
RASTERLOOM_NAMED(PaletteException, ApplicationException, -55, "Palette is not presented or empty.", "'", "' palette is not presented or empty.");
RASTERLOOM_CODED(CmException, ApplicationException);
RASTERLOOM_NAMED(CmOpenProfileException, CmException, -4099, "Unable to open color profile.", "Unable to open color profile '", "'.");
RASTERLOOM_FIXED(CmTransformException, CmException, -4098, "Error occured during color transformation with color management.");
RASTERLOOM_FIXED(CmAdobeModuleLoadException, CmException, -4098, "Failed to load Adobe Color Management Module");
RASTERLOOM_NAMED(CmUnappropriateProfileException, CmException, -4099, "The profile doesn't match to color space required.", "Profile '", "' doesn't match to color space required.");
RASTERLOOM_FIXED(LzwException, ApplicationException, -4120, "Lzw compression method is not enabled.");
RASTERLOOM_NAMED(UnsupportedPixelFormatException, ApplicationException, -22, "The specified pixel format is not supported.", "The specified pixel format is not supported (", ").");
RASTERLOOM_NAMED(UnsupportedScanlinesOrderException, ApplicationException, -27,
                 "The out of sequence scanlines` order is not supported in this interpolation mode.",
                 "The out of sequence scanlines` order is not supported in this interpolation mode. (", ").");
RASTERLOOM_NAMED(OutOfRangeException, ApplicationException, -5616, "Object is out of range.", "'", "' is out of range.");
RASTERLOOM_NAMED(NotInitializedException, ApplicationException, -15, "The object is not initialized.", "", " is not initialized.");
RASTERLOOM_FIXED(TimeOutException, ApplicationException, -18, "Timeout is exceeded.");
RASTERLOOM_FIXED(AbortedException, ApplicationException, -6, "Operation is aborted.");

RASTERLOOM_CODED(MediaProviderException, ApplicationException);
RASTERLOOM_FIXED(JpegMarkerException, MediaProviderException, 0x80004005U, "Error occured during processing JPEG-marker.");
RASTERLOOM_FIXED(MediaUnsupportedException, MediaProviderException, -10, "The media format is not supported.");
RASTERLOOM_NAMED(MediaCorruptedException, MediaProviderException, -4115, "Unable to open media due to damage.", "", ""); // or any text
RASTERLOOM_CODED(MetaDataException, ApplicationException);
RASTERLOOM_FIXED(MetaDataReadingNotAllowedException, MetaDataException, -5623, "Read operation is not allowed.");
RASTERLOOM_FIXED(MetaDataWritingNotAllowedException, MetaDataException, -5623, "Write operation is not allowed.");
RASTERLOOM_FIXED(MultiFrameException, MetaDataException, -5623, "Too many frames try to be saved to media format.");
// clang-format on

class PathNotFoundException : public FileOpenException {
public:
    explicit PathNotFoundException(SourceLocation where = SourceLocation::current());
    explicit PathNotFoundException(std::string_view path, SourceLocation where = SourceLocation::current());
    /// With a text that was composed elsewhere.
    PathNotFoundException(std::int32_t hresult, std::string message, SourceLocation where = SourceLocation::current());
};

/// The class-name text is its sibling's, not its own; hosts know the failure by that text.
class AccessDeniedException : public FileOpenException {
public:
    AccessDeniedException(std::int32_t hresult, std::string message, SourceLocation where = SourceLocation::current())
        : FileOpenException(ExceptionInfo{ExceptionType::AccessDeniedException, "PathNotFoundException", hresult,
                                          std::move(message), where}) {}
};

/// A copy between two files failed.
class FileCopyException : public FileSystemException {
public:
    explicit FileCopyException(SourceLocation where = SourceLocation::current());
    FileCopyException(std::string_view source, std::string_view destination,
                      SourceLocation where = SourceLocation::current());
};

/// A broken internal rule; not for control flow.
class UnexpectedException : public ApplicationException {
public:
    explicit UnexpectedException(SourceLocation where = SourceLocation::current());
    explicit UnexpectedException(std::string_view additionalInfo, SourceLocation where = SourceLocation::current());
};

/// An argument has a value that cannot be used. The text is built from the argument's name and a detail.
class ArgumentException : public ApplicationException {
public:
    explicit ArgumentException(SourceLocation where = SourceLocation::current());
    explicit ArgumentException(std::string_view name, SourceLocation where = SourceLocation::current());
    ArgumentException(std::string_view name, std::string_view detail,
                      SourceLocation where = SourceLocation::current());

protected:
    explicit ArgumentException(ExceptionInfo info) : ApplicationException(std::move(info)) {}
};

RASTERLOOM_NAMED(ArgumentNullPointerException, ArgumentException, 0x80070057U, "Argument is null pointer.",
                 "Argument is null pointer (", ").");

class ArgumentOutOfRangeException : public ArgumentException {
public:
    explicit ArgumentOutOfRangeException(SourceLocation where = SourceLocation::current());
    explicit ArgumentOutOfRangeException(std::string_view name, SourceLocation where = SourceLocation::current());
    ArgumentOutOfRangeException(std::string_view name, std::string_view detail,
                                SourceLocation where = SourceLocation::current());
    ArgumentOutOfRangeException(std::string_view name, std::int32_t value, std::int32_t low, std::int32_t high,
                                SourceLocation where = SourceLocation::current());
    ArgumentOutOfRangeException(std::string_view name, double value, double low, double high,
                                SourceLocation where = SourceLocation::current());
};

class InvalidTypeCastException : public ApplicationException {
public:
    explicit InvalidTypeCastException(SourceLocation where = SourceLocation::current());
    explicit InvalidTypeCastException(std::string_view variable, SourceLocation where = SourceLocation::current());
    InvalidTypeCastException(std::string_view variable, std::string_view type,
                             SourceLocation where = SourceLocation::current());
};

/// A call of the operating system failed; the text tells the system's own words for `code` (errno) where it has any.
class Win32Exception : public SystemException {
public:
    Win32Exception(std::string_view text, std::int32_t code, SourceLocation where = SourceLocation::current());
};

/// Raises the class that fits a failed call of the operating system: nothing for 0, else by the meaning of `code` (errno):
/// file not found, path not found, access denied, invalid name, file exists, or `Win32Exception`. The text is `text` and
/// the system's own words.
void ThrowSystemError(std::int32_t code, std::string_view text = {}, SourceLocation where = SourceLocation::current());

/// The same by the code numbers of the platform's error list (0, 2, 3, 5, 123, 183, others).
void ThrowWin32Exception(std::int32_t code, std::string_view text = {},
                         SourceLocation where = SourceLocation::current());

/// Where users turn to with an unexpected failure; stands in three texts.
inline constexpr std::string_view SupportAddress = "the Rasterloom issue tracker";

} // namespace ImagingFramework

#undef RASTERLOOM_FAILURE_HEAD
#undef RASTERLOOM_CODED
#undef RASTERLOOM_FIXED
#undef RASTERLOOM_NAMED
