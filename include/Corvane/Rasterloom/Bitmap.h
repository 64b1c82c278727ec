#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/BitmapChange.h>
#include <Corvane/Rasterloom/BitmapEvents.h>
#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/EventArgs.h>
#include <Corvane/Rasterloom/Host/Event.h>
#include <Corvane/Rasterloom/Host/Geometry.h>
#include <Corvane/Rasterloom/Host/Stream.h>
#include <Corvane/Rasterloom/PixelArray.h>
#include <Corvane/Rasterloom/PixelFormat.h>
#include <Corvane/Rasterloom/Transforms/InterpolationMode.h>
#include <Corvane/Rasterloom/UnitConverterObject.h>

#include <cstdint>
#include <filesystem>
#include <memory>

namespace ImagingFramework {
class BitmapData;
}

namespace Corvane::Rasterloom {

class BitmapData;
class BitmapLink;
class BitmapStatisticsProvider;
class ChannelsProvider;
class ColorManagementProvider;
class ColorPalette;
class ColorProfile;
class ISyncHandler;
class TransformsProvider;
namespace Codecs {
class EncoderOptions;
}

/// A raster that a host holds: pixels of one format with resolutions and, for indexed formats, a palette.
///
/// Loading, saving and the operations of the providers work on it; each replaces the raster as a whole when it is
/// complete, so a failure leaves the raster as it was. Public members take the object's lock, one at a time; a wait
/// longer than `Timeout` fails with `TimeoutException`, a second call on the thread that holds the lock with
/// `ObjectLockedException`. While a view from `LockBits` is out, members that need the raster fail with
/// `BitmapLockedException`. Engine failures arrive as the public classes. After `Dispose` members fail with
/// `Host::ObjectDisposedException`.
///
/// Neither copied nor moved; `Clone` makes a deep copy.
class RASTERLOOM_API Bitmap : public UnitConverterObject {
public:
    /// An empty bitmap.
    Bitmap();
    /// A zeroed raster, or one filled with the background; sizes in pixels. An indexed format gets a default palette.
    /// Fails as `Create` does.
    Bitmap(std::int32_t width, std::int32_t height, PixelFormat format);
    Bitmap(const Color& background, std::int32_t width, std::int32_t height, PixelFormat format);
    /// An indexed format needs the palette, of at most 2^bits entries; it is copied.
    Bitmap(std::int32_t width, std::int32_t height, PixelFormat format, const ColorPalette* palette);
    Bitmap(const Color& background, std::int32_t width, std::int32_t height, PixelFormat format,
           const ColorPalette* palette);
    /// As `Load`.
    explicit Bitmap(const std::filesystem::path& fileName);
    explicit Bitmap(std::shared_ptr<Host::Stream> stream);
    /// From samples, as `Load` of an array.
    Bitmap(const PixelArray& array, PixelFormat format);
    Bitmap(const PixelArray& array, PixelFormat format, const ColorPalette* palette);
    /// A deep copy.
    explicit Bitmap(Bitmap& bitmap);
    /// Takes the engine raster.
    explicit Bitmap(std::unique_ptr<ImagingFramework::BitmapData> bitmap);
    ~Bitmap() override;

    Bitmap(const Bitmap&) = delete;
    Bitmap& operator=(const Bitmap&) = delete;

    /// @name Events
    /// They are raised outside the lock, but for `Progress`, whose handlers run while the bitmap is locked: they may
    /// call `Abort`, and no other member. Handlers of the others may call back into the bitmap. A failure in a handler
    /// of `Changing` or `Saving` reaches the caller and stops the operation before it begins.
    /// @{
    /// How far the operation under way has come.
    Host::Event<ProgressEventArgs> Progress;
    /// The raster is about to be written; a handler may cancel.
    Host::Event<BitmapSavingEventArgs> Saving;
    /// The raster was written.
    Host::Event<EventArgs> Saved;
    /// The raster is about to change; a handler may cancel.
    Host::Event<BitmapChangingEventArgs> Changing;
    /// The raster has changed.
    Host::Event<BitmapChangedEventArgs> Changed;
    /// @}

    /// Replaces the raster by a zeroed one, or one filled with the background; `Changing` and `Changed` tell
    /// `CreateNew`. The resolutions stay.
    ///
    /// Failures, all before the old raster is dropped: a size not above 0 `Host::ArgumentOutOfRangeException`, an
    /// unknown format `Host::ArgumentException`, an indexed format with a null palette `Host::ArgumentNullException`, a
    /// palette of more than 2^bits entries `Host::ArgumentException`.
    void Create(std::int32_t width, std::int32_t height, PixelFormat format);
    void Create(const Color& background, std::int32_t width, std::int32_t height, PixelFormat format);
    void Create(std::int32_t width, std::int32_t height, PixelFormat format, const ColorPalette* palette);
    void Create(const Color& background, std::int32_t width, std::int32_t height, PixelFormat format,
                const ColorPalette* palette);
    /// The same with sizes in the current `Unit`.
    void Create(float width, float height, PixelFormat format);
    void Create(const Color& background, float width, float height, PixelFormat format);
    void Create(float width, float height, PixelFormat format, const ColorPalette* palette);
    void Create(const Color& background, float width, float height, PixelFormat format, const ColorPalette* palette);
    /// A deep copy of another bitmap, which is locked meanwhile; the bitmap itself fails with `ObjectLockedException`.
    void Create(Bitmap& bitmap);

    /// Reads the first frame of any format that has a reader. Fails with `Codecs::MediaUnsupportedException` when none
    /// has, with `Codecs::MediaCorruptedException` on damage, and with the host's file failures.
    void Load(const std::filesystem::path& fileName);
    /// Reads from the first byte of the stream; one that cannot seek is copied to a temporary file first.
    void Load(const std::shared_ptr<Host::Stream>& stream);
    /// From samples `[x, y, channel]`: 0 to 255, or to 65535 in extended formats. The sizes become width and height, the
    /// resolutions stay. Fails as `Create` and `Import` do; an indexed format needs the palette.
    void Load(const PixelArray& array, PixelFormat format);
    void Load(const PixelArray& array, PixelFormat format, const ColorPalette* palette);
    /// Reads a reduced form that fits into the box; a side of 0 follows the other. Never enlarges.
    void LoadThumbnail(const std::filesystem::path& fileName, std::int32_t width, std::int32_t height);
    void LoadThumbnail(const std::shared_ptr<Host::Stream>& stream, std::int32_t width, std::int32_t height);
    /// The same in a mode of choice, as `Codecs::Frame::GetThumbnail` takes it. A frame that is not derived from
    /// `Codecs::Frame` chooses by itself.
    void LoadThumbnail(const std::filesystem::path& fileName, std::int32_t width, std::int32_t height,
                       Transforms::InterpolationMode interpolationMode);
    void LoadThumbnail(const std::shared_ptr<Host::Stream>& stream, std::int32_t width, std::int32_t height,
                       Transforms::InterpolationMode interpolationMode);
    /// Writes in the format of the extension. The file is replaced when the new one is complete; a failure leaves the
    /// old file as it was.
    void Save(const std::filesystem::path& fileName);
    /// Writes in the options' format. Null options fail with `Host::ArgumentNullException`.
    void Save(const std::filesystem::path& fileName, const Codecs::EncoderOptions* options);
    void Save(const std::shared_ptr<Host::Stream>& stream, const Codecs::EncoderOptions* options);

    /// Fills with a colour, converted to the bitmap's colour space or to the nearest palette entry. Raises no change.
    /// Fails with `BitmapEmptyException`, and with `UnsupportedPixelFormatException` on the packed 16-bit formats.
    void Clear(const Color& color);
    /// Makes the bitmap empty.
    void Unload();
    /// A deep copy: raster, palette, profile and resolutions.
    std::unique_ptr<Bitmap> Clone();
    /// A black `Format8bppGrayScale` bitmap of the same size.
    std::unique_ptr<Bitmap> GetEmptyMask();
    /// Asks the operation under way to stop at its next step, where it fails with `AbortedException`. Takes no lock:
    /// any thread may call it, and handlers of `Progress` may.
    void Abort() noexcept;
    /// Ends a view that is out, then the bitmap itself. Waits for an operation of another thread; handlers of `Progress`
    /// may not call it.
    void Dispose();

    /// True while there is no raster.
    bool get_IsEmpty();
    /// In pixels; 0 when empty.
    std::int32_t get_Width();
    std::int32_t get_Height();
    /// In the current `Unit`.
    float get_LogicalWidth();
    float get_LogicalHeight();
    /// Bytes of the raster's scanlines.
    std::int64_t get_MemoryUsed();
    /// `FormatUnknown` when empty. What follows is read from the format, and is 0 or false when empty.
    PixelFormat get_PixelFormat();
    /// The colour space of the pixel format; RGB for indexed ones.
    ColorSpace get_ColorSpace();
    /// Bits of one pixel, alpha and unused ones included.
    std::int32_t get_BitsPerPixel();
    /// Whether the format has an alpha channel; the entries of a palette do not count.
    bool get_HasAlpha();
    /// Whether pixels are in cyan, magenta, yellow and black.
    bool get_IsCmyk();
    /// Whether pixels are gray.
    bool get_IsGrayScale();
    /// Whether pixels are in red, green and blue, or indices of such.
    bool get_IsRgb();
    /// Whether channels have 16 bits.
    bool get_IsExtended();
    /// Whether pixels are indices into the palette.
    bool get_IsIndexed();
    /// Set by every change; the host may set it.
    bool get_Modified();
    void set_Modified(bool modified);
    /// The palette of an indexed raster, null without one. Changes to it change the bitmap.
    std::shared_ptr<ColorPalette> get_Palette();
    /// Replaces the palette of an indexed raster by a copy; more than 2^bits entries fail with
    /// `Host::ArgumentException`.
    void set_Palette(const ColorPalette& palette);
    /// The colour profile, null without one. The first reading of a profile that is no ICC profile drops it, silently.
    std::shared_ptr<ColorProfile> get_ColorProfile();
    /// Pixels stay as they are. The bitmap keeps a copy of a named file and shares a temporary one; null drops the
    /// profile. Fails with `BitmapEmptyException` and with the failures of files.
    void set_ColorProfile(const std::shared_ptr<ColorProfile>& colorProfile);
    /// Geometry: resize, crop, turn. The providers live as long as the bitmap.
    std::shared_ptr<TransformsProvider> get_Transforms();
    /// Histograms.
    std::shared_ptr<BitmapStatisticsProvider> get_Statistics();
    /// Conversions of the pixel format.
    std::shared_ptr<ColorManagementProvider> get_ColorManagement();
    /// Single channels.
    std::shared_ptr<ChannelsProvider> get_Channels();

    /// @name Direct access
    /// A view on the raster's memory. One view at a time; as long as it lives the raster cannot be used otherwise.
    /// Rectangles are in the current `Unit`. Fails with `BitmapLockedException` when a view is out, and with
    /// `Host::ArgumentOutOfRangeException` for a position outside the bitmap or a size not above 0.
    /// @{
    /// A view on the whole raster.
    std::shared_ptr<BitmapData> LockBits();
    /// A view on a part; what exceeds the raster is cut off. In formats of less than 8 bits a part that is not as wide as
    /// the raster must begin and end on whole bytes, else `Host::ArgumentException`.
    std::shared_ptr<BitmapData> LockBits(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height);
    std::shared_ptr<BitmapData> LockBits(float left, float top, float width, float height);
    std::shared_ptr<BitmapData> LockBits(const Host::Rectangle& rectangle);
    std::shared_ptr<BitmapData> LockBits(const Host::RectangleF& rectangle);
    /// Disposes the view. Nothing happens when no view is out; else null fails with `Host::ArgumentNullException` and a
    /// view of another bitmap with `Host::ArgumentException`.
    void UnlockBits(const std::shared_ptr<BitmapData>& bitmapData);
    /// Whether a view is out.
    bool get_BitsLocked();
    /// @}

    /// Occasional access to a pixel. Positions outside fail with `Host::ArgumentOutOfRangeException`, the packed 16-bit
    /// formats with `UnsupportedPixelFormatException`.
    Color GetPixel(std::int32_t x, std::int32_t y);
    /// The colour is converted to the bitmap's colour space, or to the nearest entry of its palette.
    void SetPixel(std::int32_t x, std::int32_t y, const Color& color);
    /// Raw samples of the whole raster, `[x, y, channel]`. Formats whose channels are no whole samples fail with
    /// `UnsupportedPixelFormatException`.
    PixelArray Export();
    /// The same way back, in the shape that `Export` gives. Raises no change, unlike the import of a view. An array of
    /// another shape fails with `Host::ArgumentException` ("array").
    void Import(const PixelArray& array);

    /// Completes the destination size to the proportions of the source: a side of 0 or less follows the other, both
    /// take the source's. Null fails with `Host::ArgumentNullException`.
    static void PreserveScaleFactor(std::int32_t sourceWidth, std::int32_t sourceHeight, std::int32_t* destinationWidth,
                                    std::int32_t* destinationHeight);

    // The lock-free bodies and the seam to codecs and transforms; the caller holds the lock.

    void _Attach(std::unique_ptr<ImagingFramework::BitmapData> bitmap);
    std::unique_ptr<ImagingFramework::BitmapData> _Detach();
    void _CreateEmpty();
    void _Create(std::int32_t width, std::int32_t height, PixelFormat format, const ColorPalette* palette,
                 bool paletteGiven, const Color* background);
    void _Create(float width, float height, PixelFormat format, const ColorPalette* palette, bool paletteGiven,
                 const Color* background);
    void _Create(const ImagingFramework::BitmapData& bitmap);
    void _Create(Bitmap& bitmap);
    void _Clear(const Color& color);
    void _Unload();
    void _Load(const PixelArray& array, PixelFormat format, const ColorPalette* palette, bool paletteGiven);
    void _Import(const PixelArray& array);
    std::shared_ptr<BitmapData> _LockBits(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height);
    void _UnlockBits();
    /// The raster; fails with `BitmapLockedException` while a view is out.
    ImagingFramework::BitmapData& get__InternalBitmapData();
    /// The raster with no checks, for those who hold the view.
    ImagingFramework::BitmapData& get__InternalBitmapDataUnsafe() noexcept;
    /// Fails with `BitmapEmptyException`, with the name of the parameter where one is given.
    void ThrowIfEmpty(const char* name = nullptr) const;
    /// How other objects that may outlive the bitmap find it.
    const std::shared_ptr<BitmapLink>& get__Link() const noexcept;
    /// Called by a view at its end.
    void _ForgetView() noexcept;
    void _RaiseChangingEvent(BitmapChange change);
    void _RaiseChangedEvent(BitmapChange change);
    void _RaiseSavingEvent(const Codecs::EncoderOptions* options);
    void _RaiseSavedEvent();
    void _ResetProgress(std::int32_t maximum);
    void _OnProgress(std::int32_t step);
    /// For the progress of a reader, writer or transform at work on this bitmap; `sender` (may be null) is told to stop
    /// when `Abort` was called.
    void _OnProgress(ISyncHandler* sender, ProgressEventArgs& args);
    bool get__Aborted() const noexcept;
    void set__Aborted(bool aborted) noexcept;

protected:
    void Dispose(bool disposing) override;
    float GetHorizontalResolution() override;
    void SetHorizontalResolution(float value) override;
    float GetVerticalResolution() override;
    void SetVerticalResolution(float value) override;

private:
    struct Impl;

    void CheckNotDisposed() const;
    void CheckBitsNotLocked() const;
    void DisposeView();
    void DisposeProviders() noexcept;
    /// The deep copy, with both locks held.
    void _CreateFrom(Bitmap& bitmap);
    /// Follows a change of the raster: the palette object is made anew, and the profile object when it is asked for.
    void Update();
    void UpdatePalette();
    void UpdateColorProfile();
    /// The shape of every change: `Changing`, the body under the lock, `Changed`.
    template <class Body> void Change(BitmapChange change, Body body);
    template <class Read> auto ReadRaster(Read read);

    std::unique_ptr<Impl> m_pImpl;
};

} // namespace Corvane::Rasterloom
