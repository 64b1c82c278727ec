#pragma once

#include <Corvane/Rasterloom/Codecs/EncoderOptionsOf.h>
#include <Corvane/Rasterloom/Codecs/MetadataWriteSupport.h>

namespace Corvane::Rasterloom::Codecs {

/// Settings for JPEG files, and the metadata blocks that they get: none at first.
class RASTERLOOM_API JpegEncoderOptions : public EncoderOptionsOf<Formats::Jpeg>, public MetadataWriteSupport {
public:
    /// What the quality is at first.
    static constexpr std::int32_t DefaultQuality = 75;

    /// With the settings given; the others are as said at the members. Fails as they do.
    JpegEncoderOptions();
    explicit JpegEncoderOptions(std::int32_t quality);
    JpegEncoderOptions(std::int32_t quality, bool isProgressive);
    JpegEncoderOptions(std::int32_t quality, bool isProgressive, bool chromaSubsamplingEnabled);
    ~JpegEncoderOptions() override;

    /// 0 to 100; outside fails with `Host::ArgumentOutOfRangeException` ("quality").
    std::int32_t get_Quality() const noexcept { return m_settings.Quality; }
    void set_Quality(std::int32_t quality);
    /// Written in scans of growing detail. False at first.
    bool get_IsProgressive() const noexcept { return m_settings.IsProgressive; }
    void set_IsProgressive(bool isProgressive) noexcept { m_settings.IsProgressive = isProgressive; }
    /// Colour at half the resolution of brightness, on both axes. True at first.
    bool get_ChromaSubsamplingEnabled() const noexcept { return m_settings.ChromaSubsamplingEnabled; }
    void set_ChromaSubsamplingEnabled(bool enabled) noexcept { m_settings.ChromaSubsamplingEnabled = enabled; }
    /// Rows of coded units from one restart marker to the next, 0 (at first) for no markers. Outside 0 to 65535 fails
    /// with `Host::ArgumentOutOfRangeException` ("restartInterval").
    std::int32_t get_RestartInterval() const noexcept { return m_settings.RestartInterval; }
    void set_RestartInterval(std::int32_t restartInterval);

    /// The settings that a frame has as well.
    struct Settings {
        std::int32_t Quality = DefaultQuality; ///< as `get_Quality`
        bool IsProgressive = false; ///< as `get_IsProgressive`
        bool ChromaSubsamplingEnabled = true; ///< as `get_ChromaSubsamplingEnabled`
        std::int32_t RestartInterval = 0; ///< as `get_RestartInterval`
    };
    const Settings& get__Settings() const noexcept { return m_settings; }
    void set__Settings(const Settings& settings) noexcept { m_settings = settings; }

private:
    Settings m_settings;
};

} // namespace Corvane::Rasterloom::Codecs
