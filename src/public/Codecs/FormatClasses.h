#pragma once

// The bodies of what the classes of a format have in common. A format has one source file that includes this, defines its
// name in `Formats` and instantiates the templates that it uses. The name tells, where the format has them:
//     MediaFormat      the number in `FormatManager`
//     MetaData         the engine's class
//     Reader, Writer, Frame, EncoderOptions    the public classes

#include "CallOverStream.h"
#include "metadata/MetaData.h"
#include "metadata/RecognizeMediaFormat.h"

#include <Corvane/Rasterloom/Codecs/EncoderOptionsOf.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/FormatReaderOf.h>
#include <Corvane/Rasterloom/Codecs/FormatWriterOf.h>
#include <Corvane/Rasterloom/Codecs/FrameOf.h>

namespace Corvane::Rasterloom::Codecs {

// --- FormatReaderOf

template <class Format>
FormatReaderOf<Format>::FormatReaderOf()
    : FormatReader(Format::MediaFormat, std::make_unique<typename Format::MetaData>()) {}

template <class Format>
FormatReaderOf<Format>::FormatReaderOf(const std::shared_ptr<Host::Stream>& stream) : FormatReaderOf() {
    Open(stream);
}

template <class Format>
FormatReaderOf<Format>::FormatReaderOf(const std::filesystem::path& fileName) : FormatReaderOf() {
    Open(fileName);
}

template <class Format>
FormatReaderOf<Format>::~FormatReaderOf() {
    DisposeFinally();
}

template <class Format>
std::unique_ptr<IFormatReader> FormatReaderOf<Format>::Clone() {
    return std::make_unique<typename Format::Reader>();
}

template <class Format>
std::unique_ptr<Frame> FormatReaderOf<Format>::OnFrameLoad(std::int32_t index) {
    return std::unique_ptr<Frame>(new typename Format::Frame(*this, index));
}

template <class Format>
bool FormatReaderOf<Format>::OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream) {
    namespace engine = ImagingFramework;
    StreamWrapper wrapper(stream);
    return CallEngine([&] { return engine::TryMediaFormat(static_cast<engine::FileFormat>(Format::MediaFormat), &wrapper); });
}

// --- FormatWriterOf

template <class Format>
FormatWriterOf<Format>::FormatWriterOf()
    : FormatWriter(Format::MediaFormat, std::make_unique<typename Format::MetaData>()) {}

template <class Format>
FormatWriterOf<Format>::FormatWriterOf(const std::shared_ptr<Host::Stream>& stream) : FormatWriterOf() {
    Open(stream);
}

template <class Format>
FormatWriterOf<Format>::FormatWriterOf(const std::filesystem::path& fileName) : FormatWriterOf() {
    Open(fileName);
}

template <class Format>
FormatWriterOf<Format>::~FormatWriterOf() {
    DisposeFinally();
}

template <class Format>
std::unique_ptr<IFrame> FormatWriterOf<Format>::GetEmptyFrame() {
    return std::make_unique<typename Format::Frame>();
}

template <class Format>
std::unique_ptr<IFormatWriter> FormatWriterOf<Format>::Clone() {
    return std::make_unique<typename Format::Writer>();
}

// --- FrameOf

template <class Format>
FrameOf<Format>::FrameOf() = default;

template <class Format>
FrameOf<Format>::FrameOf(Bitmap* bitmap) {
    SetBitmap(bitmap);
}

template <class Format>
FrameOf<Format>::FrameOf(FormatReader& reader, std::int32_t index) : Frame(reader, index) {}

template <class Format>
FrameOf<Format>::~FrameOf() = default;

template <class Format>
std::unique_ptr<EncoderOptions> FrameOf<Format>::CreateEmptyEncoderOptions() {
    return std::make_unique<typename Format::EncoderOptions>();
}

// --- EncoderOptionsOf

template <class Format>
EncoderOptionsOf<Format>::EncoderOptionsOf() : EncoderOptions(Format::MediaFormat) {}

template <class Format>
EncoderOptionsOf<Format>::~EncoderOptionsOf() = default;

template <class Format>
std::unique_ptr<IFrame> EncoderOptionsOf<Format>::ToFrame() const {
    auto frame = std::make_unique<typename Format::Frame>();
    frame->ImportEncoderOptions(this);
    return frame;
}

} // namespace Corvane::Rasterloom::Codecs
