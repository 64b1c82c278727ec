#pragma once

#include <Corvane/Rasterloom/Codecs/FrameOf.h>

namespace Corvane::Rasterloom::Codecs {

/// The frames of a format of the library whose options have settings; `Options` are those options. In a frame of a reader
/// the settings that a file tells are read from it when one is first asked for or set.
template <class Format, class Options>
class RASTERLOOM_API SettingsFrameOf : public FrameOf<Format> {
public:
    ~SettingsFrameOf() override;

    /// The lock is held.
    const typename Options::Settings& get__Settings();

protected:
    /// For writing, with the settings given.
    explicit SettingsFrameOf(const typename Options::Settings& settings);
    SettingsFrameOf(FormatReader& reader, std::int32_t index);

    /// Asks the reader for the settings that the file tells; the others stay.
    virtual void LoadSettings(FormatReader& reader, typename Options::Settings& settings) = 0;
    void OnImportEncoderOptions(const EncoderOptions& options) override;
    void OnExportEncoderOptions(EncoderOptions& options) override;

    /// An option, by its getter or setter; takes the lock.
    template <class T>
    T Get(T (Options::*getter)() const);
    /// See `Get`.
    template <class T>
    void Set(void (Options::*setter)(T), T value);

private:
    Options m_options;
    bool m_bLoaded = true;
};

} // namespace Corvane::Rasterloom::Codecs
