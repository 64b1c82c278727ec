#pragma once

#include <Corvane/Rasterloom/Codecs/ActionType.h>
#include <Corvane/Rasterloom/Codecs/FormatCodec.h>
#include <Corvane/Rasterloom/Codecs/FramesEnumerator.h>
#include <Corvane/Rasterloom/Transforms/InterpolationMode.h>

namespace ImagingFramework {
class BitmapData;
class ItemTag;
} // namespace ImagingFramework

namespace Corvane::Rasterloom {
class ColorProfile;
}

namespace Corvane::Rasterloom::Codecs {

class Frame;
enum class FrameProperty : std::uint32_t;

/// The base of the readers of each format. Loading a frame is its operation: `Progress`, `Abort` and the timeout are
/// those of a load, and the reader's lock is held meanwhile. A failed load leaves the reader open.
///
/// For those who derive: call `DisposeFinally` first in the destructor, as `SyncHandler` says.
class RASTERLOOM_API FormatReader : public FormatCodec<IFormatReader> {
public:
    ~FormatReader() override;

    using FormatCodec::Dispose;

    std::unique_ptr<IFrame> LoadFrame(std::int32_t index) override;
    std::int32_t get_FrameCount() override;
    bool get_IsFrameSeekable() override { return true; }
    bool CheckForSupport(const std::shared_ptr<Host::Stream>& stream) override;
    bool CheckForSupport(const std::filesystem::path& fileName) override;
    /// A cursor over the frames, before the first one.
    FramesEnumerator GetEnumerator();

    // For frames and writers. These take the reader's lock; the caller holds the frame's.

    /// Puts a property into the frame's cell.
    void _FrameLoadProperty(Frame& frame, FrameProperty property);
    void _FrameLoadBitmap(Frame& frame);
    /// Null stands for `Anisotropic4`.
    void _FrameLoadThumbnail(Frame& frame, std::int32_t width, std::int32_t height,
                             const Transforms::InterpolationMode* pInterpolationMode);

    struct Impl;
    Impl& get__Impl() const noexcept { return *m_pImpl; }

protected:
    /// `metaData` does the work; null for a reader that overrides all that needs it.
    FormatReader(std::int64_t mediaFormat, std::unique_ptr<ImagingFramework::MetaData> metaData);

    /// @name Steps of a subclass; the lock is held
    /// @{
    /// Asks for the frame count.
    void OnOpen() override;
    /// A new frame of the format; the index was checked.
    virtual std::unique_ptr<Frame> OnFrameLoad(std::int32_t index) = 0;
    /// The base recognises all formats and compares with its own.
    virtual bool OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream);
    virtual void _OnFrameLoadProperty(Frame& frame, FrameProperty property);
    /// Runs in the worker and gives the raster of the frame being loaded.
    virtual std::unique_ptr<ImagingFramework::BitmapData> _LoadRaster();
    /// @}

    /// Fails as `CheckOpened`, also for a frame of an earlier opening, with `Host::ArgumentNullException` and
    /// `Host::ArgumentOutOfRangeException` ("frame").
    void CheckFrameParams(const Frame* frame) const;
    /// -1 means not known; below that fails with `Host::ArgumentOutOfRangeException` ("frameCount").
    void set__FrameCount(std::int32_t frameCount);
    std::int32_t get__FrameCount() const noexcept;
    /// Asks the engine for an item of a frame, with the frame's checks; whether it was answered.
    bool _GetFrameItem(const Frame& frame, ImagingFramework::ItemTag& tag);
    /// The same for an item of the file, or of the frame that the tag tells.
    bool _GetItem(ImagingFramework::ItemTag& tag);
    ActionType get__ActionType() const noexcept;
    Frame* get__LoadingFrame() const noexcept;
    std::int32_t get__ThumbnailWidth() const noexcept;
    std::int32_t get__ThumbnailHeight() const noexcept;
    Transforms::InterpolationMode get__ThumbnailInterpolation() const noexcept;

    /// A copy of a stream that cannot seek.
    std::shared_ptr<Host::Stream> _PrepareStream(const std::shared_ptr<Host::Stream>& stream) override;
    void _ForgetMedia() noexcept override;
    void Dispose(bool disposing) override;
    void ThreadProc() override;
    void OnThreadStopping(const std::exception_ptr& exception) override;

private:
    std::shared_ptr<ColorProfile> LoadColorProfile(const Frame& frame);
    struct Loading;
    void StartLoading(const Loading& loading);
    void EndLoading() noexcept;

    std::unique_ptr<Impl> m_pImpl;
};

} // namespace Corvane::Rasterloom::Codecs
