#pragma once

#include <Corvane/Rasterloom/Codecs/IEncoderOptions.h>

namespace Corvane::Rasterloom::Codecs {

/// The base of the settings of each format. Not for several threads at once.
class RASTERLOOM_API EncoderOptions : public IEncoderOptions {
public:
    EncoderOptions() = default;
    EncoderOptions(const EncoderOptions&) = default;
    EncoderOptions& operator=(const EncoderOptions&) = default;
    ~EncoderOptions() override;

    std::int32_t get_Left() const noexcept override { return m_intLeft; }
    void set_Left(std::int32_t value) noexcept override { m_intLeft = value; }
    std::int32_t get_Top() const noexcept override { return m_intTop; }
    void set_Top(std::int32_t value) noexcept override { m_intTop = value; }
    std::int64_t get_MediaFormat() const noexcept override { return m_intMediaFormat; }
    /// Null here; the options of a format give its frame.
    std::unique_ptr<IFrame> ToFrame() const override;

protected:
    /// For the format of this number.
    explicit EncoderOptions(std::int64_t mediaFormat) : m_intMediaFormat(mediaFormat) {}
    /// The format that the settings are for.
    void SetMediaFormat(std::int64_t value) noexcept { m_intMediaFormat = value; }

private:
    std::int32_t m_intLeft = 0;
    std::int32_t m_intTop = 0;
    std::int64_t m_intMediaFormat = 0;
};

} // namespace Corvane::Rasterloom::Codecs
