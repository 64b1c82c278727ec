#pragma once

#include <Corvane/Rasterloom/Codecs/IFormatInfo.h>
#include <Corvane/Rasterloom/Codecs/IFrame.h>
#include <Corvane/Rasterloom/Host/Stream.h>

#include <cstdint>
#include <filesystem>
#include <memory>

namespace Corvane::Rasterloom::Codecs {

/// Reads the frames of files of one format.
class RASTERLOOM_API IFormatReader : public IFormatInfo {
public:
    /// Which of two readers of one format `FormatManager` keeps: the higher one. 0 in all that come with the library.
    virtual std::int32_t get_CodecPriority() = 0;
    /// Whether a file is open.
    virtual bool get_Opened() = 0;
    /// One of the numbers of `FormatManager`, or the host's own.
    virtual std::int64_t get_MediaFormat() = 0;
    /// The frame with its properties; no pixels are read yet. Fails with `ObjectNotOpenedException` ("reader") and with
    /// `Host::ArgumentOutOfRangeException` ("index").
    virtual std::unique_ptr<IFrame> LoadFrame(std::int32_t index) = 0;
    /// 0 while closed.
    virtual std::int32_t get_FrameCount() = 0;
    /// Whether frames can be loaded in any order.
    virtual bool get_IsFrameSeekable() = 0;
    /// Closes what was open and reads from the first byte of the stream, which may be one that cannot seek and stays
    /// the host's. Fails with `Host::ArgumentNullException` ("stream", "fileName"), `MediaUnsupportedException` for
    /// what is of another format, `MediaCorruptedException`.
    virtual void Open(const std::shared_ptr<Host::Stream>& stream) = 0;
    virtual void Open(const std::filesystem::path& fileName) = 0;
    /// Lets go of the file; frames of it keep what they have read. May be repeated.
    virtual void Close() = 0;
    /// Whether the bytes look like a file of this format. A stream is looked at from its first byte.
    virtual bool CheckForSupport(const std::shared_ptr<Host::Stream>& stream) = 0;
    virtual bool CheckForSupport(const std::filesystem::path& fileName) = 0;
    /// A closed reader of the same class.
    virtual std::unique_ptr<IFormatReader> Clone() = 0;
};

} // namespace Corvane::Rasterloom::Codecs
