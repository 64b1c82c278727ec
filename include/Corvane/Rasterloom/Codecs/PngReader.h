#pragma once

#include <Corvane/Rasterloom/Codecs/FormatReaderOf.h>

namespace Corvane::Rasterloom::Codecs {

class PngFrame;

/// Reads PNG files. The frames are `PngFrame`s. Gray of 1, 2 and 4 bits is read as indices into a gray palette.
class RASTERLOOM_API PngReader : public FormatReaderOf<Formats::Png> {
public:
    using FormatReaderOf::FormatReaderOf;
    ~PngReader() override;

    std::unique_ptr<IFormatReader> Clone() override;

    /// Whether chunks with wrong check sums are taken as they are, in files opened from then on. False at first.
    bool get_SkipCrcCheck();
    void set_SkipCrcCheck(bool value);

    /// Takes the lock; the caller holds the frame's.
    bool _FrameLoadInterlaced(PngFrame& frame);

private:
    bool m_bSkipCrcCheck = false;
};

} // namespace Corvane::Rasterloom::Codecs
