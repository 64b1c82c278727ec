#pragma once

#include <Corvane/Rasterloom/Codecs/EncoderOptionsOf.h>
#include <Corvane/Rasterloom/Codecs/PngFilter.h>

namespace Corvane::Rasterloom::Codecs {

/// Settings for PNG files.
class RASTERLOOM_API PngEncoderOptions : public EncoderOptionsOf<Formats::Png> {
public:
    /// A sound compromise of size and time.
    static constexpr std::int32_t DefaultCompressionLevel = -1;

    /// With the settings given; the others are as said at the members.
    PngEncoderOptions();
    explicit PngEncoderOptions(bool interlaced);
    ~PngEncoderOptions() override;

    /// Written in seven passes of growing detail. False at first.
    bool get_Interlaced() const noexcept { return m_settings.Interlaced; }
    void set_Interlaced(bool interlaced) noexcept { m_settings.Interlaced = interlaced; }
    /// 0 (none) to 9 (smallest), or `DefaultCompressionLevel`, as at first. Outside fails with
    /// `Host::ArgumentOutOfRangeException` ("compressionLevel").
    std::int32_t get_CompressionLevel() const noexcept { return m_settings.CompressionLevel; }
    void set_CompressionLevel(std::int32_t compressionLevel);
    /// `PngFilter::Default` at first. A value that is none fails with `Host::ArgumentException` ("filter").
    PngFilter get_Filter() const noexcept { return m_settings.Filter; }
    void set_Filter(PngFilter filter);

    /// The settings that a frame has as well.
    struct Settings {
        bool Interlaced = false; ///< as `get_Interlaced`
        std::int32_t CompressionLevel = DefaultCompressionLevel; ///< as `get_CompressionLevel`
        PngFilter Filter = PngFilter::Default; ///< as `get_Filter`
    };
    const Settings& get__Settings() const noexcept { return m_settings; }
    void set__Settings(const Settings& settings) noexcept { m_settings = settings; }

private:
    Settings m_settings;
};

} // namespace Corvane::Rasterloom::Codecs
