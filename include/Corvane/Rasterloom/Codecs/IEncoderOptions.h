#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstdint>
#include <memory>

namespace Corvane::Rasterloom::Codecs {

class IFrame;

/// Settings of one frame to be written.
class RASTERLOOM_API IEncoderOptions {
public:
    virtual ~IEncoderOptions();

    /// Place of the frame in a file of several frames, in pixels.
    virtual std::int32_t get_Left() const noexcept = 0;
    virtual void set_Left(std::int32_t value) noexcept = 0;
    virtual std::int32_t get_Top() const noexcept = 0;
    virtual void set_Top(std::int32_t value) noexcept = 0;
    /// The format that the settings are for, one of the numbers of `FormatManager` or of the host's own.
    virtual std::int64_t get_MediaFormat() const noexcept = 0;
    /// A frame of the format with these settings; null when the options know of none.
    virtual std::unique_ptr<IFrame> ToFrame() const = 0;
};

} // namespace Corvane::Rasterloom::Codecs
