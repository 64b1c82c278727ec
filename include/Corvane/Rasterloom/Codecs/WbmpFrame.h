#pragma once

#include <Corvane/Rasterloom/Codecs/Frame.h>

namespace Corvane::Rasterloom::Codecs {

class WbmpReader;

/// The frame of a WBMP file.
class RASTERLOOM_API WbmpFrame : public Frame {
public:
    /// For writing. A bitmap is copied; null fails as in `SetBitmap`.
    WbmpFrame();
    explicit WbmpFrame(Bitmap* bitmap);
    ~WbmpFrame() override;

protected:
    std::unique_ptr<EncoderOptions> CreateEmptyEncoderOptions() override;

private:
    friend class WbmpReader;
    WbmpFrame(WbmpReader& reader, std::int32_t index);
};

} // namespace Corvane::Rasterloom::Codecs
