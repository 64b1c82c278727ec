#pragma once

#include <Corvane/Rasterloom/Codecs/Frame.h>

namespace Corvane::Rasterloom::Codecs {

class PcxReader;

/// The frame of a PCX file.
class RASTERLOOM_API PcxFrame : public Frame {
public:
    /// A frame without a reader, for writers of other formats. A bitmap is copied; null fails as in `SetBitmap`.
    PcxFrame();
    explicit PcxFrame(Bitmap* bitmap);
    ~PcxFrame() override;

protected:
    std::unique_ptr<EncoderOptions> CreateEmptyEncoderOptions() override;

private:
    friend class PcxReader;
    PcxFrame(PcxReader& reader, std::int32_t index);
};

} // namespace Corvane::Rasterloom::Codecs
