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
    /// A number that no other format has; 0 and -1 cannot be registered.
    explicit CustomFormatCodec(std::int64_t mediaFormat);

    /// With "*." in front, as "*.toy".
    void SetDefaultExtension(std::string value) { m_strDefaultExtension = std::move(value); }
    /// A short name, as "TOY".
    void SetFormatName(std::string value) { m_strFormatName = std::move(value); }
    /// A name for people.
    void SetFormatDescription(std::string value) { m_strFormatDescription = std::move(value); }
    /// All patterns of file names, separated by ";". They decide what `Bitmap::Save` writes in this format.
    void SetFilterString(std::string value) { m_strFilterString = std::move(value); }
    /// As "image/x-toy".
    void SetMimeType(std::string value) { m_strMimeType = std::move(value); }
    /// The number that the codec is registered under.
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
