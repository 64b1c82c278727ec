// The part of Bitmap that goes to the codecs and knows nothing of formats.

#include <Corvane/Rasterloom/Bitmap.h>

#include "CallEngine.h"
#include "Common/BitmapData.h"

#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/Frame.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/ISyncHandler.h>

#include <memory>
#include <utility>

namespace Corvane::Rasterloom {

namespace {

/// Gives a codec the time limit of the bitmap, and the bitmap the progress of the codec, as long as this lives.
class CodecLink {
public:
    template <class Codec>
    CodecLink(Bitmap& bitmap, Codec& codec) {
        bitmap.set__Aborted(false);
        if (auto* const handler = dynamic_cast<ISyncHandler*>(&codec)) {
            handler->set_Timeout(bitmap.get_Timeout());
            m_progress = handler->Progress.Subscribe(
                [&bitmap, handler](ProgressEventArgs& args) { bitmap._OnProgress(handler, args); });
        }
    }

private:
    Host::Subscription m_progress;
};

template <class Source, class Get>
void LoadFirstFrame(Bitmap& bitmap, const Source& source, Get get) {
    const auto reader = Codecs::FormatManager::CreateFormatReader(source);
    const CodecLink link(bitmap, *reader);
    get(*reader->LoadFrame(0));
}

void GetThumbnail(Bitmap& bitmap, Codecs::IFrame& frame, std::int32_t width, std::int32_t height,
                  Transforms::InterpolationMode interpolationMode) {
    if (auto* const own = dynamic_cast<Codecs::Frame*>(&frame)) {
        own->GetThumbnail(&bitmap, width, height, interpolationMode);
    } else {
        frame.GetThumbnail(&bitmap, width, height);
    }
}

/// `writer` is open.
void SaveFrame(Bitmap& bitmap, Codecs::IFormatWriter& writer, Codecs::IFrame& frame) {
    const CodecLink link(bitmap, writer);
    if (auto* const own = dynamic_cast<Codecs::Frame*>(&frame)) {
        own->_SetBitmapReference(bitmap);
    } else {
        frame.SetBitmap(&bitmap);
    }
    writer.AddFrame(&frame);
    // Not left to the destructor, which could not tell that the file was not completed.
    writer.Close();
}

template <class Target>
void SaveTo(Bitmap& bitmap, const Target& target, const Codecs::EncoderOptions* options) {
    if (options == nullptr) {
        throw Host::ArgumentNullException("options");
    }
    const auto writer = Codecs::FormatManager::CreateFormatWriter(options->get_MediaFormat());
    writer->Open(target);
    writer->ImportEncoderOptions(options);
    auto frame = options->ToFrame();
    if (!frame) {
        frame = writer->GetEmptyFrame();
        frame->ImportEncoderOptions(options);
    }
    SaveFrame(bitmap, *writer, *frame);
}

template <class Source>
std::unique_ptr<ImagingFramework::BitmapData> LoadRaster(const Source& source) {
    Bitmap bitmap;
    bitmap.Load(source);
    return bitmap._Detach();
}

} // namespace

Bitmap::Bitmap(const std::filesystem::path& fileName) : Bitmap(LoadRaster(fileName)) {}

Bitmap::Bitmap(std::shared_ptr<Host::Stream> stream) : Bitmap(LoadRaster(stream)) {}

void Bitmap::Load(const std::filesystem::path& fileName) {
    CheckNotDisposed();
    LoadFirstFrame(*this, fileName, [this](Codecs::IFrame& frame) { frame.GetBitmap(this); });
}

void Bitmap::Load(const std::shared_ptr<Host::Stream>& stream) {
    CheckNotDisposed();
    LoadFirstFrame(*this, stream, [this](Codecs::IFrame& frame) { frame.GetBitmap(this); });
}

void Bitmap::LoadThumbnail(const std::filesystem::path& fileName, std::int32_t width, std::int32_t height) {
    CheckNotDisposed();
    LoadFirstFrame(*this, fileName, [&](Codecs::IFrame& frame) { frame.GetThumbnail(this, width, height); });
}

void Bitmap::LoadThumbnail(const std::shared_ptr<Host::Stream>& stream, std::int32_t width, std::int32_t height) {
    CheckNotDisposed();
    LoadFirstFrame(*this, stream, [&](Codecs::IFrame& frame) { frame.GetThumbnail(this, width, height); });
}

void Bitmap::LoadThumbnail(const std::filesystem::path& fileName, std::int32_t width, std::int32_t height,
                           Transforms::InterpolationMode interpolationMode) {
    CheckNotDisposed();
    LoadFirstFrame(*this, fileName, [&](Codecs::IFrame& frame) {
        GetThumbnail(*this, frame, width, height, interpolationMode);
    });
}

void Bitmap::LoadThumbnail(const std::shared_ptr<Host::Stream>& stream, std::int32_t width, std::int32_t height,
                           Transforms::InterpolationMode interpolationMode) {
    CheckNotDisposed();
    LoadFirstFrame(*this, stream, [&](Codecs::IFrame& frame) {
        GetThumbnail(*this, frame, width, height, interpolationMode);
    });
}

void Bitmap::Save(const std::filesystem::path& fileName) {
    CheckNotDisposed();
    const auto writer = Codecs::FormatManager::CreateFormatWriter(fileName);
    SaveFrame(*this, *writer, *writer->GetEmptyFrame());
}

void Bitmap::Save(const std::filesystem::path& fileName, const Codecs::EncoderOptions* options) {
    CheckNotDisposed();
    SaveTo(*this, fileName, options);
}

void Bitmap::Save(const std::shared_ptr<Host::Stream>& stream, const Codecs::EncoderOptions* options) {
    CheckNotDisposed();
    SaveTo(*this, stream, options);
}

} // namespace Corvane::Rasterloom
