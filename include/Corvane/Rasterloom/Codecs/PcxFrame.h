#pragma once

#include <Corvane/Rasterloom/Codecs/FrameOf.h>

namespace Corvane::Rasterloom::Codecs {

/// The frame of a PCX file. One without a reader is for writers of other formats.
class RASTERLOOM_API PcxFrame : public FrameOf<Formats::Pcx> {
public:
    using FrameOf::FrameOf;
    ~PcxFrame() override;
};

} // namespace Corvane::Rasterloom::Codecs
