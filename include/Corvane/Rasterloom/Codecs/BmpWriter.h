#pragma once

#include <Corvane/Rasterloom/Codecs/FormatWriterOf.h>

namespace Corvane::Rasterloom::Codecs {

/// Writes BMP files of one frame. Frames that are no `BmpFrame` are written uncompressed.
class RASTERLOOM_API BmpWriter : public FormatWriterOf<Formats::Bmp> {
public:
    using FormatWriterOf::FormatWriterOf;
    ~BmpWriter() override;

protected:
    void OnBeforeAddFrame(Frame& frame) override;
};

} // namespace Corvane::Rasterloom::Codecs
