#pragma once

#include <Corvane/Rasterloom/BitmapChange.h>
#include <Corvane/Rasterloom/Codecs/IFrame.h>
#include <Corvane/Rasterloom/LockableObject.h>
#include <Corvane/Rasterloom/Transforms/InterpolationMode.h>

namespace ImagingFramework {
class BitmapData;
}

namespace Corvane::Rasterloom::Codecs {

class FormatReader;

/// The base of the frames of each format.
///
/// A frame of a reader is a lazy view: each property asks the reader once, when it is first read. It is valid while
/// the file that it is of is open in its reader; what it has read by then stays. Later, and after the reader is gone,
/// members that need the reader fail, with `ObjectNotOpenedException` ("reader") and `UnexpectedException`. A frame to
/// be written holds its properties itself, and those of its image come from the bitmap that it is given.
///
/// Locks are taken in the order frame, bitmap, reader; `GetBitmap` and `GetThumbnail` hold the frame's to the end.
class RASTERLOOM_API Frame : public LockableObject, public IFrame {
public:
    ~Frame() override;

    using LockableObject::Dispose;

    std::int32_t get_Index() override;
    std::string get_Name() override;
    void set_Name(const std::string& value) override;
    std::int32_t get_Width() override;
    std::int32_t get_Height() override;
    Rasterloom::PixelFormat get_PixelFormat() override;
    Rasterloom::ColorSpace get_ColorSpace() override;
    std::int32_t get_BitsPerPixel() override;
    bool get_HasAlpha() override;
    bool get_IsCmyk() override;
    bool get_IsGrayScale() override;
    bool get_IsRgb() override;
    bool get_IsExtended() override;
    bool get_IsIndexed() override;
    float get_HorizontalResolution() override;
    float get_VerticalResolution() override;
    std::shared_ptr<Rasterloom::ColorProfile> get_ColorProfile() override;
    std::int32_t get_Left() override;
    void set_Left(std::int32_t value) override;
    std::int32_t get_Top() override;
    void set_Top(std::int32_t value) override;
    void GetBitmap(Bitmap* bitmap) override;
    void SetBitmap(Bitmap* bitmap) override;
    void GetThumbnail(Bitmap* bitmap, std::int32_t width, std::int32_t height) override;
    /// The same, reduced in a mode of choice: `NearestNeighbour`, `Anisotropic4` (what a file's thumbnails are made
    /// with otherwise), `Anisotropic9` or `Lanczos3Filter`. Any other fails with `Host::ArgumentException`
    /// ("interpolationMode").
    void GetThumbnail(Bitmap* bitmap, std::int32_t width, std::int32_t height,
                      Transforms::InterpolationMode interpolationMode);
    void ImportEncoderOptions(const EncoderOptions* options) override;
    void ExportEncoderOptions(EncoderOptions* options) override;
    std::unique_ptr<EncoderOptions> ExportEncoderOptions() override;

    // The lock-free bodies and the seam to readers and writers; the caller holds the lock.

    /// Fails with `UnexpectedException` when the frame has no bitmap and no reader, or a reader that is not in the mode
    /// `Sync`. The bitmap that was given to the frame, else a new one from the reader, which the frame does not keep.
    std::shared_ptr<Bitmap> _GetBitmap();
    /// As `SetBitmap`, but without the copy: the bitmap is locked and read when the frame is written. It may die
    /// before.
    void _SetBitmapReference(Bitmap& bitmap);
    virtual void _SetBitmap(Bitmap& bitmap);
    virtual void _SetLeft(std::int32_t value);
    virtual void _SetTop(std::int32_t value);
    virtual std::unique_ptr<EncoderOptions> _ExportEncoderOptions();
    void _ExportEncoderOptions(EncoderOptions& options);
    std::int32_t get__Left();
    std::int32_t get__Top();
    Rasterloom::PixelFormat get__PixelFormat();
    void _RaiseBitmapSavingEvent(const EncoderOptions* options);
    void _RaiseBitmapSavedEvent();
    /// Fails with `Host::ObjectDisposedException`.
    void CheckNotDisposed() const;

    struct Impl;
    Impl& get__Impl() const noexcept { return *m_pImpl; }

protected:
    /// A frame to be written: everything counts as loaded.
    Frame();
    /// A frame of a reader that has a file open.
    Frame(FormatReader& reader, std::int32_t index);

    void Dispose(bool disposing) override;

    /// New options of the frame's format. `EncoderOptions` in the base.
    virtual std::unique_ptr<EncoderOptions> CreateEmptyEncoderOptions();
    /// Copy settings from and to options, which may be those of another format. The base copies left and top.
    virtual void OnImportEncoderOptions(const EncoderOptions& options);
    /// See `OnImportEncoderOptions`.
    virtual void OnExportEncoderOptions(EncoderOptions& options);
    /// The reader; fails with `UnexpectedException` when there is none any more.
    FormatReader& RequireReader() const;

private:
    friend class FormatReader;

    void LoadFromOwn(Bitmap& bitmap, BitmapChange change, std::unique_ptr<ImagingFramework::BitmapData> raster);
    /// With null the mode is that of whoever does the work.
    void LoadThumbnail(Bitmap* bitmap, std::int32_t width, std::int32_t height,
                       const Transforms::InterpolationMode* pInterpolationMode);
    void LockLoadingBitmap(Bitmap& bitmap, BitmapChange change);
    /// Attaches the raster, if there is one, gives the bitmap back and tells of the change.
    void UnlockLoadingBitmap(std::unique_ptr<ImagingFramework::BitmapData> raster);
    void _BitmapLoadingComplete(std::unique_ptr<ImagingFramework::BitmapData> raster);
    void _ThumbnailLoadingComplete(std::unique_ptr<ImagingFramework::BitmapData> raster);
    void _LoadingFailed() noexcept;

    std::unique_ptr<Impl> m_pImpl;
};

} // namespace Corvane::Rasterloom::Codecs
