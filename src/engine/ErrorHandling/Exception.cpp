#include "ErrorHandling/Exception.h"

#include <utility>

namespace ImagingFramework {

namespace {

std::string FileStem(std::string_view path) {
    if (const auto slash = path.find_last_of("/\\"); slash != std::string_view::npos) {
        path.remove_prefix(slash + 1);
    }
    return std::string(path.substr(0, path.find_last_of('.')));
}

/// Cuts "virtual void ImagingFramework::StreamReader::ReadBytes(int)" down to "StreamReader::ReadBytes".
std::string QualifiedName(std::string_view signature) {
    // The opening bracket of the arguments is the first one outside template arguments and lambda markers.
    int depth = 0;
    std::size_t end = signature.size();
    std::size_t begin = 0;
    for (std::size_t i = 0; i < signature.size(); ++i) {
        const char c = signature[i];
        if (c == '<') {
            ++depth;
        } else if (c == '>') {
            --depth;
        } else if (depth == 0 && c == '(') {
            end = i;
            break;
        } else if (depth == 0 && (c == ' ' || c == '*' || c == '&')) {
            begin = i + 1;
        }
    }
    std::string_view name = signature.substr(begin, end - begin);
    constexpr std::string_view space = "ImagingFramework::";
    if (name.starts_with(space)) {
        name.remove_prefix(space.size());
    }
    return std::string(name);
}

} // namespace

Exception::Exception(std::string message, SourceLocation where)
    : Exception(ExceptionInfo{ExceptionType::Exception, "Exception", DefaultHresult, std::move(message), where}) {}

Exception::Exception(std::int32_t hresult, std::string message, SourceLocation where)
    : Exception(ExceptionInfo{ExceptionType::Exception, "Exception", hresult, std::move(message), where}) {}

Exception::Exception(std::int32_t hresult, std::string message, std::string sourceFile, std::uint32_t line) {
    Texts texts;
    texts.Hresult = hresult;
    texts.Message = std::move(message);
    texts.SourceFile = std::move(sourceFile);
    texts.Line = line;
    m_pTexts = std::make_shared<const Texts>(std::move(texts));
}

Exception::Exception(ExceptionInfo info) {
    Texts texts;
    texts.Hresult = info.Hresult;
    texts.Message = std::move(info.Message);
    texts.SourceFile = FileStem(info.Where.file_name());
    texts.Line = info.Where.line();
    texts.Function = QualifiedName(info.Where.function_name());
    texts.ClassName = info.ClassName;
    texts.Type = info.Type;
    m_pTexts = std::make_shared<const Texts>(std::move(texts));
}

} // namespace ImagingFramework
