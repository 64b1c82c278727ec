#pragma once

#include <Corvane/Rasterloom/Codecs/FormatReader.h>
#include <Corvane/Rasterloom/Codecs/FormatWriter.h>

#include <string>
#include <utility>

namespace Corvane::Rasterloom::Codecs {

/// The vocabulary of a host's own format, on top of `FormatReader` or `FormatWriter`. The setters are for constructors
/// of the host's class.
template <class Base>
class CustomFormatCodec : public Base {
public:
    ~CustomFormatCodec() override;

    std::string get_DefaultExtension() override { return m_strDefaultExtension; }
    std::string get_FormatName() override { return m_strFormatName; }
    std::string get_FormatDescription() override { return m_strFormatDescription; }
    std::string get_FilterString() override { return m_strFilterString; }
    std::string get_MimeType() override { return m_strMimeType; }

protected:
    explicit CustomFormatCodec(std::int64_t mediaFormat);

    void SetDefaultExtension(std::string value) { m_strDefaultExtension = std::move(value); }
    void SetFormatName(std::string value) { m_strFormatName = std::move(value); }
    void SetFormatDescription(std::string value) { m_strFormatDescription = std::move(value); }
    void SetFilterString(std::string value) { m_strFilterString = std::move(value); }
    void SetMimeType(std::string value) { m_strMimeType = std::move(value); }
    void SetMediaFormat(std::int64_t value) noexcept { this->set__MediaFormat(value); }

private:
    std::string m_strDefaultExtension;
    std::string m_strFormatName;
    std::string m_strFormatDescription;
    std::string m_strFilterString;
    std::string m_strMimeType;
};

extern template class RASTERLOOM_API CustomFormatCodec<FormatReader>;
extern template class RASTERLOOM_API CustomFormatCodec<FormatWriter>;

} // namespace Corvane::Rasterloom::Codecs
