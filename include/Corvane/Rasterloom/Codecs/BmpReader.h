#pragma once

#include <Corvane/Rasterloom/Codecs/FormatReaderOf.h>

namespace Corvane::Rasterloom::Codecs {

class BmpFrame;

/// Reads BMP files, OS/2 and RLE ones included. The frames are `BmpFrame`s.
class RASTERLOOM_API BmpReader : public FormatReaderOf<Formats::Bmp> {
public:
    using FormatReaderOf::FormatReaderOf;
    ~BmpReader() override;

    /// Takes the lock; the caller holds the frame's.
    void _FrameLoadCompression(BmpFrame& frame);
};

} // namespace Corvane::Rasterloom::Codecs
