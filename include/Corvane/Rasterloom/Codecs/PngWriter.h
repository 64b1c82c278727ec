#pragma once

#include <Corvane/Rasterloom/Codecs/FormatWriterOf.h>

namespace Corvane::Rasterloom::Codecs {

/// Writes PNG files of one frame, with palette, resolution and colour profile. Frames that are no `PngFrame` are
/// written with the settings that `PngEncoderOptions` begin with. A profile for other colours than those of the frame
/// is left out.
class RASTERLOOM_API PngWriter : public FormatWriterOf<Formats::Png> {
public:
    using FormatWriterOf::FormatWriterOf;
    ~PngWriter() override;

protected:
    void OnBeforeAddFrame(Frame& frame) override;
};

} // namespace Corvane::Rasterloom::Codecs
