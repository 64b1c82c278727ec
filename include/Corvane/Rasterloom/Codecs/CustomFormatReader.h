#pragma once

#include <Corvane/Rasterloom/Codecs/CustomFormatCodec.h>
#include <Corvane/Rasterloom/Codecs/CustomFrame.h>
#include <Corvane/Rasterloom/Codecs/LoadingMode.h>

namespace Corvane::Rasterloom::Codecs {

/// The base of the reader of a host's own format. Register it with `FormatManager` to have `Bitmap::Load` find it.
///
/// The members to implement are called with the reader's lock held, by one thread at a time: they use the helpers
/// here, and none of the members that take the lock. `Clone` makes a closed reader of the same class.
class RASTERLOOM_API CustomFormatReader : public CustomFormatCodec<FormatReader> {
public:
    ~CustomFormatReader() override;

protected:
    /// Closed.
    explicit CustomFormatReader(std::int64_t mediaFormat = 0);

    /// @name To implement
    /// @{
    /// A new frame of the host's class, for `LoadFrame`.
    virtual std::unique_ptr<CustomFrame> GetEmptyFrame() = 0;
    /// Sets the cells of the frame. Comes once for a frame, when the first of its properties is read; what is not set
    /// then stays 0, or 72 dots per inch.
    virtual void LoadFrameParameters(CustomFrame& frame) = 0;
    /// Reads the frame that `GetFrameIndexToLoad` tells, in the form that `GetLoadingMode` tells, and ends with
    /// `SetLoadedBitmap`. Runs in the operation: `ResetEvents` with 100 steps was called, so `UpdateEvents` may be.
    virtual void LoadFrameBitmap() = 0;
    /// Reads the headers of a stream that can seek, and ends with `SetFrameCount`. The stream is valid until
    /// `CloseReader`.
    virtual void OpenReader(const std::shared_ptr<Host::Stream>& stream) = 0;
    /// Whether the stream holds this format; reads from the present position and need not restore it.
    virtual bool IsSupported(Host::Stream& stream) = 0;
    /// @}

    /// Opens a host file stream, kept until the reader is closed, and calls the form above.
    virtual void OpenReader(const std::filesystem::path& fileName);
    /// Lets go of the stream. Comes once for each `OpenReader`, also for one that failed.
    virtual void CloseReader() {}

    /// @name Helpers
    /// @{
    /// Negative fails with `Host::ArgumentException` ("count").
    void SetFrameCount(std::int32_t count);
    /// Declares more steps. Only in `LoadFrameBitmap`, as the next ones.
    void ResetEvents(std::int32_t count);
    /// Steps done, one in the first form. Fails with `AbortedException` and `TimeoutException`, which must be let
    /// through.
    void UpdateEvents();
    void UpdateEvents(std::int32_t step);
    /// Takes the raster of `bitmap`, which is empty afterwards. Null fails with `Host::ArgumentNullException`
    /// ("bitmap"), an empty one with `BitmapEmptyException` ("bitmap").
    void SetLoadedBitmap(Bitmap* bitmap);
    /// From 0.
    std::int32_t GetFrameIndexToLoad() const noexcept;
    /// The box of the thumbnail, 0 for a free side.
    std::int32_t GetThumbnailWidthToLoad() const noexcept;
    std::int32_t GetThumbnailHeightToLoad() const noexcept;
    /// How it is to be reduced.
    Transforms::InterpolationMode GetThumbnailInterpolationToLoad() const noexcept;
    /// Whether the frame or a thumbnail is wanted.
    LoadingMode GetLoadingMode() const noexcept;
    /// Null outside `LoadFrameBitmap`.
    CustomFrame* GetLoadingFrame() const noexcept;
    /// @}

    void OnOpen() override {}
    std::unique_ptr<Frame> OnFrameLoad(std::int32_t index) override;
    bool OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream) override;
    void _AttachStream(const std::shared_ptr<Host::Stream>& stream) override;
    void _AttachFile(const std::filesystem::path& fileName) override;
    void _DetachMedia() override;
    void _OnFrameLoadProperty(Frame& frame, FrameProperty property) override;
    std::unique_ptr<ImagingFramework::BitmapData> _LoadRaster() override;

private:
    std::shared_ptr<Host::Stream> m_pFileStream;
    std::unique_ptr<Bitmap> m_pLoadedBitmap;
};

} // namespace Corvane::Rasterloom::Codecs
