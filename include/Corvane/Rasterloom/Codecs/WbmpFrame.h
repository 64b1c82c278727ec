#pragma once

#include <Corvane/Rasterloom/Codecs/FrameOf.h>

namespace Corvane::Rasterloom::Codecs {

/// The frame of a WBMP file.
class RASTERLOOM_API WbmpFrame : public FrameOf<Formats::Wbmp> {
public:
    using FrameOf::FrameOf;
    ~WbmpFrame() override;
};

} // namespace Corvane::Rasterloom::Codecs
