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
    /// With the default text, a text of its own, or a text and the failure that led to this one.
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

// The tree of failures, as a table; the spelling of the texts is part of the interface. Each is made with the default
// text, with a text, or with a text and the failure that led to it.
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
/// A call on the thread that holds the lock of the object already: the lock is not recursive.
RASTERLOOM_FAILURE(ObjectLockedException, Exception, "The instance has already been locked from this thread.");
/// The operation does not take pixels of this format.
RASTERLOOM_FAILURE(UnsupportedPixelFormatException, Exception, "The pixel format is not supported.");
/// A reader or writer has no file open.
RASTERLOOM_NAMED_FAILURE(ObjectNotOpenedException, Exception, "Object is not opened.", "Object \"", "\" has not been opened.");
/// An object that should hold something holds nothing.
RASTERLOOM_FAILURE(ObjectEmptyException, Exception, "Object is empty.");
/// A bitmap without a raster.
RASTERLOOM_NAMED_FAILURE(BitmapEmptyException, ObjectEmptyException, "Bitmap object has not been filled up with data.", "Bitmap \"", "\" has not been filled up with data.");
/// A palette without entries.
RASTERLOOM_NAMED_FAILURE(ColorPaletteEmptyException, ObjectEmptyException, "Color palette object has not been filled up with data.", "Color palette \"", "\" has not been filled up with data.");
/// A view of the bitmap is out, so its raster cannot be used otherwise.
RASTERLOOM_NAMED_FAILURE(BitmapLockedException, Exception, "Bitmap has been locked.", "Bitmap object \"", "\" has been locked.");
/// The mode `AsyncViaMessageLoop` on a thread without a message loop.
RASTERLOOM_FAILURE(MessageLoopNotPresentedException, Exception, "Current thread doesn't contain message loop.");
/// The call must wait for the end of a run that is under way.
RASTERLOOM_FAILURE(OperationNotCompletedException, Exception, "Operation requires to be completed to perform your action.");
/// A lock was not free within `Timeout`, or an operation took longer.
RASTERLOOM_FAILURE(TimeoutException, Exception, "The time is out.");
/// A call of the system failed.
RASTERLOOM_FAILURE(Win32Exception, Exception, "Win32 API error has occured.");
/// The root of the failures of colour management.
RASTERLOOM_FAILURE(CMException, Exception, "An error has occured while using color management.");
/// What was to be a colour profile is none, or cannot be read.
RASTERLOOM_NAMED_FAILURE(CMOpenProfileException, CMException, "Unable to open color profile you specified.", "Unable to open profile \"", "\".");
/// There is no way between two profiles.
RASTERLOOM_FAILURE(CMTransformException, CMException, "An error has occured during conversion with color management.");
/// A profile is for other colours than those it should describe.
RASTERLOOM_NAMED_FAILURE(CMInappropriateProfileException, CMException, "Unable to open color profile you specified.", "The color space of \"", "\" profile is not appropriate.");
/// Adobe's module was asked for, and is not there.
RASTERLOOM_FAILURE(CMAdobeModuleLoadException, CMException, "Failed to load Adobe Color Management Module.");
/// `Abort` was called, or a handler has cancelled.
RASTERLOOM_FAILURE(AbortedException, Exception, "Operation is aborted.");
// clang-format on

/// A broken internal rule, or memory that could not be had. The default text tells where to report it.
class RASTERLOOM_API UnexpectedException : public Exception {
public:
    /// With the default text, a text of its own, or a text and the failure that led to this one.
    UnexpectedException();
    explicit UnexpectedException(std::string message) : Exception(std::move(message)) {}
    UnexpectedException(std::string message, std::exception_ptr inner)
        : Exception(std::move(message), std::move(inner)) {}
    explicit UnexpectedException(const ImagingFramework::Exception* exception) : Exception(exception) {}
};

namespace Codecs {

// clang-format off
/// The root of the failures of readers and writers.
RASTERLOOM_FAILURE(MediaProviderException, Exception, "");
/// No reader or writer fits.
RASTERLOOM_FAILURE(MediaUnsupportedException, MediaProviderException, "The media format is not supported.");
/// The bytes of a file break the rules of its format.
RASTERLOOM_FAILURE(MediaCorruptedException, MediaProviderException, "The media is corrupted.");
/// More frames than the format holds.
RASTERLOOM_FAILURE(MultiFrameException, MediaProviderException, "Too many frames try to be saved to media format.");
/// A marker of a JPEG file cannot be read or written.
RASTERLOOM_FAILURE(JpegMarkerException, MediaProviderException, "An error has occured during processing JPEG marker.");
// clang-format on

} // namespace Codecs

#undef RASTERLOOM_FAILURE
#undef RASTERLOOM_NAMED_FAILURE
#undef RASTERLOOM_FAILURE_BODY

} // namespace Corvane::Rasterloom
