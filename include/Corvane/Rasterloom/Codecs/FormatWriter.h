#pragma once

#include <Corvane/Rasterloom/Codecs/FormatCodec.h>

#include <vector>

namespace ImagingFramework {
class BitmapData;
class IInternalEvents;
class ItemTag;
} // namespace ImagingFramework

namespace Corvane::Rasterloom::Codecs {

class Frame;

/// The base of the writers of each format. Adding a frame is its operation: `Progress`, `Abort` and the timeout are
/// those of a save, the conversion to a format that the file can hold included. The locks of writer and frame are held
/// meanwhile, taken in this order, until `AddFrame` returns. A frame of a reader is loaded by its reader first, whose
/// events tell of that; `Abort`, `Pause` and `Continue` reach the reader as well.
///
/// For those who derive: call `DisposeFinally` first in the destructor, as `SyncHandler` says.
class RASTERLOOM_API FormatWriter : public FormatCodec<IFormatWriter> {
public:
    ~FormatWriter() override;

    void AddFrame(IFrame* frame) override;
    void ImportEncoderOptions(const EncoderOptions* options) override;
    void ExportEncoderOptions(EncoderOptions* options) override;
    std::unique_ptr<EncoderOptions> ExportEncoderOptions() override;
    /// The formats that are written without a conversion.
    std::vector<PixelFormat> get_SupportedPixelFormats();
    /// Whether the format is one of `SupportedPixelFormats`.
    bool IsPixelFormatSupported(PixelFormat format);
    void Abort() override;
    void Pause() override;
    void Continue() override;

protected:
    /// `metaData` does the work; null for a writer that overrides all that needs it.
    FormatWriter(std::int64_t mediaFormat, std::unique_ptr<ImagingFramework::MetaData> metaData);

    /// @name Steps of a subclass; the lock is held
    /// @{
    /// Sends the settings of the frame, and before the first one those of the file.
    virtual void OnBeforeAddFrame(Frame& frame);
    /// The frame was written.
    virtual void OnAfterAddFrame(Frame& frame);
    /// Copy settings of the file from and to options, which may be those of another format.
    virtual void OnImportEncoderOptions(const EncoderOptions& options);
    /// See `OnImportEncoderOptions`.
    virtual void OnExportEncoderOptions(EncoderOptions& options);
    virtual std::vector<PixelFormat> _GetSupportedPixelFormats();
    virtual PixelFormat _GetClosestPixelFormat(PixelFormat format);
    /// Sends left and top.
    virtual void _FrameSaveParameters(Frame& frame);
    /// Runs in the worker. The raster is in a supported format.
    virtual void _SaveRaster(Frame& frame, ImagingFramework::BitmapData& raster);
    /// @}

    /// Gives an item to the engine; false when the format does not know it.
    bool _SetItem(ImagingFramework::ItemTag& tag);
    /// Frames added since the file was opened.
    std::int32_t get__WrittenFrameCount() const noexcept;
    /// Set by a writer of several frames in `OnBeforeAddFrame`.
    void set__LastFrame(bool value) noexcept;
    /// For a `_SaveRaster` that counts its own steps.
    void _ResetSaveProgress(std::int32_t count);
    void _ReportSaveProgress(std::int32_t step);

    void _ForgetMedia() noexcept override;
    void ThreadProc() override;
    void OnThreadStopping(const std::exception_ptr& exception) override;

private:
    struct Impl;
    class FrameRaster;

    void _AddFrame(Frame& frame);
    void RaiseSavingEvent(Frame& frame);
    void ConvertAndSave(const ImagingFramework::BitmapData& raster, PixelFormat format);
    void Save(ImagingFramework::BitmapData& raster, ImagingFramework::IInternalEvents* pEvents, std::int32_t timeout);
    template <class Forward>
    void ForwardToReader(Forward forward);

    std::unique_ptr<Impl> m_pImpl;
};

} // namespace Corvane::Rasterloom::Codecs
