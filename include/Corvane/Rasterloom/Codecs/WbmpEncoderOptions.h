#pragma once

#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>

namespace Corvane::Rasterloom::Codecs {

/// Options for WBMP files, which have no settings.
class RASTERLOOM_API WbmpEncoderOptions : public EncoderOptions {
public:
    WbmpEncoderOptions();
    ~WbmpEncoderOptions() override;

    std::unique_ptr<IFrame> ToFrame() const override;
};

} // namespace Corvane::Rasterloom::Codecs
