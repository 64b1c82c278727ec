#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstdint>

namespace Corvane::Rasterloom::Codecs {

/// What a reader of moving images offers beside its frames. Times are in seconds.
class RASTERLOOM_API ITimeReader {
public:
    virtual ~ITimeReader();
    /// Of the whole file.
    virtual double get_Duration() = 0;
    /// The rate at which frames follow.
    virtual double get_FramesPerSecond() = 0;
    /// The frame that is shown at a time.
    virtual std::int32_t TimeToFrameIndex(double time) = 0;
    /// The time at which a frame is shown first.
    virtual double FrameIndexToTime(std::int32_t index) = 0;
};

} // namespace Corvane::Rasterloom::Codecs
