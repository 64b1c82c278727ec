#pragma once

#include <Corvane/Rasterloom/Codecs/CustomFrame.h>
#include <Corvane/Rasterloom/Codecs/FormatWriter.h>

#include <utility>

namespace Corvane::Rasterloom::Codecs {

class EngineFileStream;

/// The base of the writer of a host's own format. Register it with `FormatManager` to have `Bitmap::Save` find it.
///
/// The members to implement are called with the writer's lock held, by one thread at a time: they use the helpers
/// here, and none of the members that take the lock. `Clone` makes a closed writer of the same class.
class RASTERLOOM_API CustomFormatWriter : public FormatWriter {
public:
    ~CustomFormatWriter() override;

    std::string get_DefaultExtension() override;
    std::string get_FormatName() override;
    std::string get_FormatDescription() override;
    std::string get_FilterString() override;
    std::string get_MimeType() override;
    /// A plain `CustomFrame`, unless overridden.
    std::unique_ptr<IFrame> GetEmptyFrame() override;

protected:
    explicit CustomFormatWriter(std::int64_t mediaFormat = 0);

    /// @name To implement
    /// @{
    /// Writes to `GetStream`. The bitmap is in a supported format, not empty, and valid during the call. Runs in the
    /// operation: `ResetEvents` with 100 steps was called, so `UpdateEvents` may be.
    virtual void SaveFrameBitmap(Bitmap& bitmap) = 0;
    /// The supported format to convert an unsupported one to.
    virtual PixelFormat GetClosestPixelFormat(PixelFormat format) = 0;
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
    void SetDefaultExtension(std::string value) { m_strDefaultExtension = std::move(value); }
    void SetFormatName(std::string value) { m_strFormatName = std::move(value); }
    void SetFormatDescription(std::string value) { m_strFormatDescription = std::move(value); }
    void SetFilterString(std::string value) { m_strFilterString = std::move(value); }
    void SetMimeType(std::string value) { m_strMimeType = std::move(value); }
    void SetMediaFormat(std::int64_t value) noexcept;
    /// As in `CustomFormatReader`.
    void ResetEvents(std::int32_t count);
    void UpdateEvents();
    void UpdateEvents(std::int32_t step);
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

    std::string m_strDefaultExtension;
    std::string m_strFormatName;
    std::string m_strFormatDescription;
    std::string m_strFilterString;
    std::string m_strMimeType;
    std::shared_ptr<Host::Stream> m_pStream;
    std::shared_ptr<EngineFileStream> m_pTargetFile;
    bool m_bMediaAttached = false;
};

} // namespace Corvane::Rasterloom::Codecs
