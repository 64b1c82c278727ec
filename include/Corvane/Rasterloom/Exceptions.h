#pragma once

#include <Corvane/Rasterloom/Host/Errors.h>

#include <exception>
#include <memory>
#include <string>
#include <utility>

namespace ImagingFramework {
class Exception;
}

namespace Corvane::Rasterloom {

/// The root of the library's own failures. Failures of standard kinds (arguments, files, casts) are those of `Host`.
class RASTERLOOM_API Exception : public Host::ApplicationException {
public:
    Exception();
    explicit Exception(std::string message);
    Exception(std::string message, std::exception_ptr inner);
    /// Internal: the failure of the engine, with the engine's text.
    explicit Exception(const ImagingFramework::Exception* exception);
    Exception(const Exception&) noexcept;
    Exception& operator=(const Exception&) noexcept;
    ~Exception() override;

    /// The failure that led to this one; null when there is none.
    const std::exception_ptr& get_InnerException() const noexcept { return m_pInnerException; }

    /// Internal: the text of an engine failure; empty for null.
    static std::string CreateErrorString(const ImagingFramework::Exception* exception);
    /// Internal: the public failure for one of the engine. Fails with `Host::ArgumentNullException` for null.
    static std::exception_ptr GetManagedException(const ImagingFramework::Exception* unmanagedException);
    /// Internal: raises what `GetManagedException` gives.
    [[noreturn]] static void ThrowManagedException(const ImagingFramework::Exception* unmanagedException);

private:
    std::exception_ptr m_pInnerException;
};

// The tree of failures, as a table; the spelling of the texts is part of the interface.
//
// FAILURE: default text; a text from the raise site.
// NAMED: default text; a second text with the name of an object in it.

#define RASTERLOOM_FAILURE_BODY(Class, Base, Text)                                                                     \
    Class() : Base(std::string(Text)) {}                                                                               \
    Class(std::string message, std::exception_ptr inner) : Base(std::move(message), std::move(inner)) {}               \
    explicit Class(const ImagingFramework::Exception* exception) : Base(exception) {}

#define RASTERLOOM_FAILURE(Class, Base, Text)                                                                          \
    class RASTERLOOM_API Class : public Base {                                                                         \
    public:                                                                                                            \
        RASTERLOOM_FAILURE_BODY(Class, Base, Text)                                                                     \
        explicit Class(std::string message) : Base(std::move(message)) {}                                              \
    }

#define RASTERLOOM_NAMED_FAILURE(Class, Base, Text, Before, After)                                                     \
    class RASTERLOOM_API Class : public Base {                                                                         \
    public:                                                                                                            \
        RASTERLOOM_FAILURE_BODY(Class, Base, Text)                                                                     \
        explicit Class(const std::string& objectName) : Base(Before + objectName + After) {}                           \
    }

// clang-format off
RASTERLOOM_FAILURE(ObjectLockedException, Exception, "The instance has already been locked from this thread.");
RASTERLOOM_FAILURE(UnsupportedPixelFormatException, Exception, "The pixel format is not supported.");
RASTERLOOM_NAMED_FAILURE(ObjectNotOpenedException, Exception, "Object is not opened.", "Object \"", "\" has not been opened.");
RASTERLOOM_FAILURE(ObjectEmptyException, Exception, "Object is empty.");
RASTERLOOM_NAMED_FAILURE(BitmapEmptyException, ObjectEmptyException, "Bitmap object has not been filled up with data.", "Bitmap \"", "\" has not been filled up with data.");
RASTERLOOM_NAMED_FAILURE(ColorPaletteEmptyException, ObjectEmptyException, "Color palette object has not been filled up with data.", "Color palette \"", "\" has not been filled up with data.");
RASTERLOOM_NAMED_FAILURE(BitmapLockedException, Exception, "Bitmap has been locked.", "Bitmap object \"", "\" has been locked.");
RASTERLOOM_FAILURE(MessageLoopNotPresentedException, Exception, "Current thread doesn't contain message loop.");
RASTERLOOM_FAILURE(OperationNotCompletedException, Exception, "Operation requires to be completed to perform your action.");
RASTERLOOM_FAILURE(TimeoutException, Exception, "The time is out.");
RASTERLOOM_FAILURE(Win32Exception, Exception, "Win32 API error has occured.");
RASTERLOOM_FAILURE(CMException, Exception, "An error has occured while using color management.");
RASTERLOOM_NAMED_FAILURE(CMOpenProfileException, CMException, "Unable to open color profile you specified.", "Unable to open profile \"", "\".");
RASTERLOOM_FAILURE(CMTransformException, CMException, "An error has occured during conversion with color management.");
RASTERLOOM_NAMED_FAILURE(CMInappropriateProfileException, CMException, "Unable to open color profile you specified.", "The color space of \"", "\" profile is not appropriate.");
RASTERLOOM_FAILURE(CMAdobeModuleLoadException, CMException, "Failed to load Adobe Color Management Module.");
RASTERLOOM_FAILURE(AbortedException, Exception, "Operation is aborted.");
// clang-format on

/// A broken internal rule, or memory that could not be had. The default text tells where to report it.
class RASTERLOOM_API UnexpectedException : public Exception {
public:
    UnexpectedException();
    explicit UnexpectedException(std::string message) : Exception(std::move(message)) {}
    UnexpectedException(std::string message, std::exception_ptr inner)
        : Exception(std::move(message), std::move(inner)) {}
    explicit UnexpectedException(const ImagingFramework::Exception* exception) : Exception(exception) {}
};

namespace Codecs {

// clang-format off
RASTERLOOM_FAILURE(MediaProviderException, Exception, "");
RASTERLOOM_FAILURE(MediaUnsupportedException, MediaProviderException, "The media format is not supported.");
RASTERLOOM_FAILURE(MediaCorruptedException, MediaProviderException, "The media is corrupted.");
RASTERLOOM_FAILURE(MultiFrameException, MediaProviderException, "Too many frames try to be saved to media format.");
RASTERLOOM_FAILURE(JpegMarkerException, MediaProviderException, "An error has occured during processing JPEG marker.");
// clang-format on

} // namespace Codecs

#undef RASTERLOOM_FAILURE
#undef RASTERLOOM_NAMED_FAILURE
#undef RASTERLOOM_FAILURE_BODY

} // namespace Corvane::Rasterloom
