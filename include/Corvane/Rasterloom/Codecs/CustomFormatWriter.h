#pragma once

#include <Corvane/Rasterloom/Codecs/CustomFormatCodec.h>
#include <Corvane/Rasterloom/Codecs/CustomFrame.h>

#include <utility>

namespace Corvane::Rasterloom::Codecs {

class EngineFileStream;

/// The base of the writer of a host's own format. Register it with `FormatManager` to have `Bitmap::Save` find it.
///
/// The members to implement are called with the writer's lock held, by one thread at a time: they use the helpers
/// here, and none of the members that take the lock. `Clone` makes a closed writer of the same class.
class RASTERLOOM_API CustomFormatWriter : public CustomFormatCodec<FormatWriter> {
public:
    ~CustomFormatWriter() override;

    /// A plain `CustomFrame`, unless overridden.
    std::unique_ptr<IFrame> GetEmptyFrame() override;

protected:
    /// Closed.
    explicit CustomFormatWriter(std::int64_t mediaFormat = 0);

    /// @name To implement
    /// @{
    /// Writes to `GetStream`. The bitmap is in a supported format, not empty, and valid during the call. Runs in the
    /// operation: `ResetEvents` with 100 steps was called, so `UpdateEvents` may be.
    virtual void SaveFrameBitmap(Bitmap& bitmap) = 0;
    /// The supported format to convert an unsupported one to.
    virtual PixelFormat GetClosestPixelFormat(PixelFormat format) = 0;
    /// The formats that `SaveFrameBitmap` takes.
    virtual std::vector<PixelFormat> GetSupportedPixelFormats() = 0;
    /// @}

    /// Nothing in the base: the stream is there for `GetStream` already.
    virtual void OpenWriter(const std::shared_ptr<Host::Stream>& stream);
    /// Opens a temporary file beside the target, which `CloseWriter` puts in the target's place, and calls the form
    /// above.
    virtual void OpenWriter(const std::filesystem::path& fileName);
    /// Ends the file. What the base opened replaces the target when a frame was added and something was written; else
    /// the target stays as it was. An override calls the base's last.
    virtual void CloseWriter();
    /// Sends the settings of a frame before its image. Nothing in the base.
    virtual void SaveFrameParameters(CustomFrame& frame);

    /// @name Helpers
    /// @{
    /// As in `CustomFormatReader`.
    void ResetEvents(std::int32_t count);
    /// As in `CustomFormatReader`.
    void UpdateEvents();
    void UpdateEvents(std::int32_t step);
    /// Frames that were written since the file was opened; 0 in the call for the first.
    std::int32_t GetWrittenFrameCount() const noexcept;
    /// Null while closed.
    const std::shared_ptr<Host::Stream>& GetStream() const noexcept { return m_pStream; }
    /// @}

    void _AttachStream(const std::shared_ptr<Host::Stream>& stream) override;
    void _AttachFile(const std::filesystem::path& fileName) override;
    void _DetachMedia() override;
    std::vector<PixelFormat> _GetSupportedPixelFormats() override { return GetSupportedPixelFormats(); }
    PixelFormat _GetClosestPixelFormat(PixelFormat format) override { return GetClosestPixelFormat(format); }
    void _FrameSaveParameters(Frame& frame) override;
    void _SaveRaster(Frame& frame, ImagingFramework::BitmapData& raster) override;

private:
    std::shared_ptr<Host::Stream> m_pStream;
    std::shared_ptr<EngineFileStream> m_pTargetFile;
};

} // namespace Corvane::Rasterloom::Codecs
