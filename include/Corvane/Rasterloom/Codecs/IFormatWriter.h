#pragma once

#include <Corvane/Rasterloom/Codecs/IFormatInfo.h>
#include <Corvane/Rasterloom/Codecs/IFrame.h>
#include <Corvane/Rasterloom/Host/Stream.h>

#include <cstdint>
#include <filesystem>
#include <memory>

namespace Corvane::Rasterloom::Codecs {

class EncoderOptions;

/// Writes frames to files of one format.
class RASTERLOOM_API IFormatWriter : public IFormatInfo {
public:
    /// As for readers.
    virtual std::int32_t get_CodecPriority() = 0;
    /// Whether a file is open.
    virtual bool get_Opened() = 0;
    /// One of the numbers of `FormatManager`, or the host's own.
    virtual std::int64_t get_MediaFormat() = 0;
    /// Closes what was open and begins a new file. A stream is written from its first byte on, and keeps what it holds
    /// behind the new file; one that cannot seek gets everything at once in `Close`. A file is replaced in `Close`, and
    /// only when a frame was completed. Fails with `Host::ArgumentNullException` ("stream", "fileName").
    virtual void Open(const std::shared_ptr<Host::Stream>& stream) = 0;
    virtual void Open(const std::filesystem::path& fileName) = 0;
    /// Ends the file and tells the failures of that; the writer is closed in any case.
    virtual void Close() = 0;
    /// Writes the image of the frame, converted to the closest format that the file can hold. The frame may be one of a
    /// reader. Fails with `Host::ArgumentNullException` ("frame"), `ObjectNotOpenedException` ("writer"),
    /// `BitmapEmptyException`, `MultiFrameException`; the writer stays open.
    virtual void AddFrame(IFrame* frame) = 0;
    /// Takes settings over. Null fails with `Host::ArgumentNullException` ("options").
    virtual void ImportEncoderOptions(const EncoderOptions* options) = 0;
    /// Puts the writer's settings into options, as far as they have them. Null fails with `Host::ArgumentNullException`
    /// ("options").
    virtual void ExportEncoderOptions(EncoderOptions* options) = 0;
    /// New options of the format with the writer's settings.
    virtual std::unique_ptr<EncoderOptions> ExportEncoderOptions() = 0;
    /// A new frame of the format, to be filled and added.
    virtual std::unique_ptr<IFrame> GetEmptyFrame() = 0;
    /// A closed writer of the same class.
    virtual std::unique_ptr<IFormatWriter> Clone() = 0;
};

} // namespace Corvane::Rasterloom::Codecs
