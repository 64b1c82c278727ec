#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <source_location>
#include <string>
#include <string_view>

namespace ImagingFramework {

/// The number of an engine exception class, by which the public layer picks its own class.
enum class ExceptionType : std::uint32_t {
    Exception = 0,
    SystemException = 1,
    MemoryException = 2,
    Win32Exception = 3,
    IoException = 4,
    StreamException = 5,
    StreamSeekException = 6,
    StreamReadException = 7,
    StreamWriteException = 8,
    StreamStatException = 9,
    FileSystemException = 10,
    CreateTempFileException = 11,
    FileCopyException = 12,
    FileOpenException = 13,
    FileNotFoundException = 14,
    PathNotFoundException = 15,
    AccessDeniedException = 16,
    InvalidNameException = 17,
    CreateFileException = 18,
    FileWriteException = 19,
    ApplicationException = 20,
    CmException = 21,
    CmOpenProfileException = 22,
    CmTransformException = 23,
    CmAdobeModuleLoadException = 24,
    CmUnappropriateProfileException = 25,
    CompressionTypeException = 26,
    PaletteException = 27,
    LzwException = 28,
    UnsupportedPixelFormatException = 29,
    UnsupportedScanlinesOrderException = 30,
    OutOfRangeException = 31,
    UnexpectedException = 32,
    ArgumentException = 33,
    ArgumentNullPointerException = 34,
    ArgumentOutOfRangeException = 35,
    NotInitializedException = 36,
    InvalidTypeCastException = 37,
    TimeOutException = 38,
    AbortedException = 39,
    MediaProviderException = 40,
    JpegMarkerException = 41,
    MediaUnsupportedException = 43,
    MediaCorruptedException = 44,
    ComException = 45,
    MetaDataException = 46,
    MetaDataReadingNotAllowedException = 47,
    MetaDataWritingNotAllowedException = 48,
    MultiFrameException = 49,
    OverflowException = 55,
};

/// The place of a raise; a default argument of every exception constructor.
using SourceLocation = std::source_location;

/// What a class of the tree tells the root about itself.
struct ExceptionInfo {
    ExceptionType Type;
    std::string_view ClassName; ///< a literal
    std::int32_t Hresult;
    std::string Message; ///< UTF-8
    SourceLocation Where;
};

/// The root of all failures of the engine. Raised by value; copies share their texts, so copying does not throw.
class Exception : public std::exception {
public:
    static constexpr std::int32_t DefaultHresult = static_cast<std::int32_t>(0x80004005U);

    explicit Exception(std::string message = {}, SourceLocation where = SourceLocation::current());
    Exception(std::int32_t hresult, std::string message, SourceLocation where = SourceLocation::current());
    /// A failure that was told by someone else, with the place that they name.
    Exception(std::int32_t hresult, std::string message, std::string sourceFile, std::uint32_t line);

    std::int32_t GetHresult() const noexcept { return m_pTexts->Hresult; }
    const std::string& GetExceptionStringRef() const noexcept { return m_pTexts->Message; }
    ExceptionType GetExceptionType() const noexcept { return m_pTexts->Type; }
    /// Stem of the source file of the raise, "undefined" when unknown.
    const std::string& GetSourceFileRef() const noexcept { return m_pTexts->SourceFile; }
    std::uint32_t GetLine() const noexcept { return m_pTexts->Line; }
    /// Qualified name of the raising function without its namespace, "undefined" when unknown.
    const std::string& GetFunctionRef() const noexcept { return m_pTexts->Function; }
    /// Class of the exception, as text.
    const std::string& GetClassNameRef() const noexcept { return m_pTexts->ClassName; }
    const char* what() const noexcept override { return m_pTexts->Message.c_str(); }

protected:
    explicit Exception(ExceptionInfo info);

private:
    struct Texts {
        std::int32_t Hresult = DefaultHresult;
        std::string Message;
        std::string SourceFile = "undefined";
        std::uint32_t Line = 0;
        std::string Function = "undefined";
        std::string ClassName = "Exception";
        ExceptionType Type = ExceptionType::Exception;
    };
    std::shared_ptr<const Texts> m_pTexts;
};

} // namespace ImagingFramework
