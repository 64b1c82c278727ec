#pragma once

#include <Corvane/Rasterloom/Codecs/EncoderOptionsOf.h>

namespace Corvane::Rasterloom::Codecs {

/// Options for WBMP files, which have no settings.
class RASTERLOOM_API WbmpEncoderOptions : public EncoderOptionsOf<Formats::Wbmp> {
public:
    ~WbmpEncoderOptions() override;
};

} // namespace Corvane::Rasterloom::Codecs
