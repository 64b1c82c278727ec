#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstdint>

namespace Corvane::Rasterloom::Codecs {

/// What a writer of moving images offers beside its frames. Times are in seconds.
class RASTERLOOM_API ITimeWriter {
public:
    virtual ~ITimeWriter();
    virtual double get_FramesPerSecond() = 0;
    virtual void set_FramesPerSecond(double value) = 0;
    virtual std::int32_t TimeToFrameIndex(double time) = 0;
    virtual double FrameIndexToTime(std::int32_t index) = 0;
};

} // namespace Corvane::Rasterloom::Codecs
