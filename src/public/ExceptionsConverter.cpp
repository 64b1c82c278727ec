#include "ExceptionsConverter.h"

#include "ErrorHandling/Exceptions.h"

#include <Corvane/Rasterloom/Exceptions.h>

namespace Corvane::Rasterloom {

namespace {

using Type = ImagingFramework::ExceptionType;

/// The host's own failure with the engine's text.
template <class E>
std::exception_ptr FromText(const ImagingFramework::Exception& exception) {
    return std::make_exception_ptr(E(exception.GetExceptionStringRef()));
}

/// One of the host's argument failures; the engine's text names the argument, the host's field stays empty.
template <class E>
std::exception_ptr FromArgument(const ImagingFramework::Exception& exception) {
    return std::make_exception_ptr(E({}, exception.GetExceptionStringRef()));
}

template <class E>
std::exception_ptr FromEngine(const ImagingFramework::Exception& exception) {
    return std::make_exception_ptr(E(&exception));
}

std::exception_ptr FromMemory(const ImagingFramework::Exception&) {
    return std::make_exception_ptr(UnexpectedException("Unable to commit memory."));
}

std::exception_ptr FromCom(const ImagingFramework::Exception& exception) {
    return std::make_exception_ptr(Host::COMException(exception.GetExceptionStringRef(), exception.GetHresult()));
}

struct Conversion {
    Type From;
    std::exception_ptr (*Convert)(const ImagingFramework::Exception&);
};

/// What is not in the table becomes a plain `Exception`.
constexpr Conversion Conversions[] = {
    {Type::SystemException, FromText<Host::SystemException>},
    {Type::MemoryException, FromMemory},
    {Type::Win32Exception, FromEngine<Win32Exception>},
    {Type::IoException, FromText<Host::IOException>},
    {Type::StreamException, FromText<Host::IOException>},
    {Type::StreamSeekException, FromText<Host::IOException>},
    {Type::StreamReadException, FromText<Host::IOException>},
    {Type::StreamWriteException, FromText<Host::IOException>},
    {Type::StreamStatException, FromText<Host::IOException>},
    {Type::FileSystemException, FromText<Host::IOException>},
    {Type::CreateTempFileException, FromText<Host::IOException>},
    {Type::FileCopyException, FromText<Host::IOException>},
    {Type::FileOpenException, FromText<Host::IOException>},
    {Type::FileNotFoundException, FromText<Host::FileNotFoundException>},
    {Type::PathNotFoundException, FromText<Host::DirectoryNotFoundException>},
    {Type::AccessDeniedException, FromText<Host::UnauthorizedAccessException>},
    {Type::InvalidNameException, FromText<Host::NotSupportedException>},
    {Type::CreateFileException, FromText<Host::IOException>},
    {Type::FileWriteException, FromText<Host::IOException>},
    {Type::CmException, FromEngine<CMException>},
    {Type::CmOpenProfileException, FromEngine<CMOpenProfileException>},
    {Type::CmTransformException, FromEngine<CMTransformException>},
    {Type::CmAdobeModuleLoadException, FromEngine<CMAdobeModuleLoadException>},
    {Type::CmUnappropriateProfileException, FromEngine<CMInappropriateProfileException>},
    {Type::CompressionTypeException, FromText<Host::ArgumentException>},
    {Type::PaletteException, FromEngine<ColorPaletteEmptyException>},
    {Type::UnsupportedPixelFormatException, FromEngine<UnsupportedPixelFormatException>},
    {Type::OutOfRangeException, FromText<Host::IOException>},
    {Type::UnexpectedException, FromEngine<UnexpectedException>},
    {Type::ArgumentException, FromText<Host::ArgumentException>},
    {Type::ArgumentNullPointerException, FromArgument<Host::ArgumentNullException>},
    {Type::ArgumentOutOfRangeException, FromArgument<Host::ArgumentOutOfRangeException>},
    {Type::NotInitializedException, FromEngine<ObjectEmptyException>},
    {Type::InvalidTypeCastException, FromText<Host::InvalidCastException>},
    {Type::TimeOutException, FromEngine<TimeoutException>},
    {Type::AbortedException, FromEngine<AbortedException>},
    {Type::MediaProviderException, FromEngine<Codecs::MediaProviderException>},
    {Type::JpegMarkerException, FromEngine<Codecs::JpegMarkerException>},
    {Type::MediaUnsupportedException, FromEngine<Codecs::MediaUnsupportedException>},
    {Type::MediaCorruptedException, FromEngine<Codecs::MediaCorruptedException>},
    {Type::ComException, FromCom},
    {Type::MultiFrameException, FromEngine<Codecs::MultiFrameException>},
    {Type::OverflowException, FromText<Host::OverflowException>},
};

/// The place that failures of callbacks name as theirs; hosts and logs of theirs know it by this number.
constexpr std::uint32_t CallbackFailureLine = 73;

} // namespace

std::exception_ptr GetManagedException(const ImagingFramework::Exception* exception) {
    if (!exception) {
        return nullptr;
    }
    for (const Conversion& entry : Conversions) {
        if (entry.From == exception->GetExceptionType()) {
            return entry.Convert(*exception);
        }
    }
    return FromEngine<Exception>(*exception);
}

ImagingFramework::Exception GetUnmanagedException(const std::exception& exception) {
    return {ImagingFramework::Exception::DefaultHresult, exception.what(), "ExceptionsConverter", CallbackFailureLine};
}

ImagingFramework::Exception GetUnmanagedException(const std::exception_ptr& exception) {
    try {
        if (exception) {
            std::rethrow_exception(exception);
        }
    } catch (const std::exception& known) {
        return GetUnmanagedException(known);
    } catch (...) {
        // Falls to the empty text: there is nothing to tell of it.
    }
    return {ImagingFramework::Exception::DefaultHresult, {}, "ExceptionsConverter", CallbackFailureLine};
}

} // namespace Corvane::Rasterloom
