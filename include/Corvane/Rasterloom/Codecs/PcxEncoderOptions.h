#pragma once

#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>

namespace Corvane::Rasterloom::Codecs {

/// The options of a `PcxFrame`, without settings. PCX files are read only: saving with them fails with
/// `MediaUnsupportedException`.
class RASTERLOOM_API PcxEncoderOptions : public EncoderOptions {
public:
    PcxEncoderOptions();
    ~PcxEncoderOptions() override;

    std::unique_ptr<IFrame> ToFrame() const override;
};

} // namespace Corvane::Rasterloom::Codecs
