#pragma once

// The bodies of `SettingsFrameOf`, for the source files of the formats.

#include "ObjectGuard.h"

#include <Corvane/Rasterloom/Codecs/SettingsFrameOf.h>

namespace Corvane::Rasterloom::Codecs {

template <class Format, class Options>
SettingsFrameOf<Format, Options>::SettingsFrameOf(const typename Options::Settings& settings) {
    m_options.set__Settings(settings);
}

template <class Format, class Options>
SettingsFrameOf<Format, Options>::SettingsFrameOf(FormatReader& reader, std::int32_t index)
    : FrameOf<Format>(reader, index), m_bLoaded(false) {}

template <class Format, class Options>
SettingsFrameOf<Format, Options>::~SettingsFrameOf() = default;

template <class Format, class Options>
const typename Options::Settings& SettingsFrameOf<Format, Options>::get__Settings() {
    if (!m_bLoaded) {
        typename Options::Settings settings = m_options.get__Settings();
        LoadSettings(this->RequireReader(), settings);
        m_options.set__Settings(settings);
        m_bLoaded = true;
    }
    return m_options.get__Settings();
}

template <class Format, class Options>
void SettingsFrameOf<Format, Options>::OnImportEncoderOptions(const EncoderOptions& options) {
    Frame::OnImportEncoderOptions(options);
    if (const auto* const own = dynamic_cast<const Options*>(&options)) {
        m_options.set__Settings(own->get__Settings());
        m_bLoaded = true;
    }
}

template <class Format, class Options>
void SettingsFrameOf<Format, Options>::OnExportEncoderOptions(EncoderOptions& options) {
    Frame::OnExportEncoderOptions(options);
    if (auto* const own = dynamic_cast<Options*>(&options)) {
        own->set__Settings(get__Settings());
    }
}

template <class Format, class Options>
template <class T>
T SettingsFrameOf<Format, Options>::Get(T (Options::*getter)() const) {
    const ObjectGuard guard(*this);
    this->CheckNotDisposed();
    get__Settings();
    return (m_options.*getter)();
}

template <class Format, class Options>
template <class T>
void SettingsFrameOf<Format, Options>::Set(void (Options::*setter)(T), T value) {
    const ObjectGuard guard(*this);
    this->CheckNotDisposed();
    get__Settings();
    (m_options.*setter)(value);
}

} // namespace Corvane::Rasterloom::Codecs
