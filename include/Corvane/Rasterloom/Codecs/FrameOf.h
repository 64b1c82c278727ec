#pragma once

#include <Corvane/Rasterloom/Codecs/FormatReaderOf.h>
#include <Corvane/Rasterloom/Codecs/Frame.h>

namespace Corvane::Rasterloom::Codecs {

/// What the frames of all formats of the library have in common; as `FormatReaderOf`.
template <class Format>
class RASTERLOOM_API FrameOf : public Frame {
public:
    /// For writing. A bitmap is copied; null fails as in `SetBitmap`.
    FrameOf();
    explicit FrameOf(Bitmap* bitmap);
    ~FrameOf() override;

protected:
    friend class FormatReaderOf<Format>;

    /// A frame of a reader that has a file open.
    FrameOf(FormatReader& reader, std::int32_t index);
    std::unique_ptr<EncoderOptions> CreateEmptyEncoderOptions() override;
};

} // namespace Corvane::Rasterloom::Codecs
