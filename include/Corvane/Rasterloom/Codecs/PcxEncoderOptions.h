#pragma once

#include <Corvane/Rasterloom/Codecs/EncoderOptionsOf.h>

namespace Corvane::Rasterloom::Codecs {

/// The options of a `PcxFrame`, without settings. PCX files are read only: saving with them fails with
/// `MediaUnsupportedException`.
class RASTERLOOM_API PcxEncoderOptions : public EncoderOptionsOf<Formats::Pcx> {
public:
    ~PcxEncoderOptions() override;
};

} // namespace Corvane::Rasterloom::Codecs
