#pragma once

#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/Formats.h>

namespace Corvane::Rasterloom::Codecs {

/// What the options of all formats of the library have in common; as `FormatReaderOf`.
template <class Format>
class RASTERLOOM_API EncoderOptionsOf : public EncoderOptions {
public:
    /// For the media format of `Format`.
    EncoderOptionsOf();
    ~EncoderOptionsOf() override;

    std::unique_ptr<IFrame> ToFrame() const override;
};

} // namespace Corvane::Rasterloom::Codecs
