#pragma once

#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>

namespace Corvane::Rasterloom::Codecs {

/// The base of the settings of a host's own format. With a `ToFrame` of the host's that frame is saved; else the
/// writer's empty frame, which imports these settings.
class RASTERLOOM_API CustomEncoderOptions : public EncoderOptions {
public:
    /// For the format of this number; 0 leaves it to `SetMediaFormat`.
    CustomEncoderOptions() = default;
    explicit CustomEncoderOptions(std::int64_t mediaFormat) : EncoderOptions(mediaFormat) {}
    ~CustomEncoderOptions() override;

    using EncoderOptions::SetMediaFormat;
};

} // namespace Corvane::Rasterloom::Codecs
