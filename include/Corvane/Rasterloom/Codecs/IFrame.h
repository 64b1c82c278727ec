#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/PixelFormat.h>

#include <cstdint>
#include <memory>
#include <string>

namespace Corvane::Rasterloom {
class Bitmap;
class ColorProfile;
} // namespace Corvane::Rasterloom

namespace Corvane::Rasterloom::Codecs {

class EncoderOptions;

/// One image of a file: one that a reader gives, or one to be written.
class RASTERLOOM_API IFrame {
public:
    virtual ~IFrame();

    /// Place among the frames of the file, from 0.
    virtual std::int32_t get_Index() = 0;
    /// UTF-8; empty where the format has no names for frames.
    virtual std::string get_Name() = 0;
    virtual void set_Name(const std::string& value) = 0;
    /// In pixels.
    virtual std::int32_t get_Width() = 0;
    virtual std::int32_t get_Height() = 0;
    /// The format in which the pixels are loaded. The rest of this group follows from it.
    virtual Rasterloom::PixelFormat get_PixelFormat() = 0;
    /// The colour space of the pixel format; RGB for indexed ones.
    virtual Rasterloom::ColorSpace get_ColorSpace() = 0;
    /// Bits of one pixel.
    virtual std::int32_t get_BitsPerPixel() = 0;
    /// Whether the format has an alpha channel.
    virtual bool get_HasAlpha() = 0;
    /// Whether pixels are in cyan, magenta, yellow and black.
    virtual bool get_IsCmyk() = 0;
    /// Whether pixels are gray.
    virtual bool get_IsGrayScale() = 0;
    /// Whether pixels are in red, green and blue, or indices of such.
    virtual bool get_IsRgb() = 0;
    /// Whether channels have 16 bits.
    virtual bool get_IsExtended() = 0;
    /// Whether pixels are indices into a palette.
    virtual bool get_IsIndexed() = 0;
    /// Dots per inch.
    virtual float get_HorizontalResolution() = 0;
    virtual float get_VerticalResolution() = 0;
    /// The colour profile of the image; null without one, and for one that is damaged.
    virtual std::shared_ptr<Rasterloom::ColorProfile> get_ColorProfile() = 0;
    /// Place in the image as a whole, in pixels.
    virtual std::int32_t get_Left() = 0;
    virtual void set_Left(std::int32_t value) = 0;
    virtual std::int32_t get_Top() = 0;
    virtual void set_Top(std::int32_t value) = 0;

    /// Fills `bitmap` with the image of the frame. Null fails with `Host::ArgumentNullException` ("bitmap"). The bitmap
    /// raises `Changing` and `Changed` with `Load`; any failure leaves it as it was.
    virtual void GetBitmap(Bitmap* bitmap) = 0;
    /// Takes a copy of `bitmap` as the image of the frame, and remembers the bitmap itself for its events of saving.
    virtual void SetBitmap(Bitmap* bitmap) = 0;
    /// Fills `bitmap` with a reduced form that fits into the box and keeps the proportions; a side of 0 is free, and
    /// nothing is ever enlarged. Fails with `Host::ArgumentOutOfRangeException` for a negative side and for two of 0.
    /// The bitmap raises `Changing` and `Changed` with `LoadThumbnail`.
    virtual void GetThumbnail(Bitmap* bitmap, std::int32_t width, std::int32_t height) = 0;

    /// Null fails with `Host::ArgumentNullException` ("options"). Settings of another format that the frame does not
    /// know are left out.
    virtual void ImportEncoderOptions(const EncoderOptions* options) = 0;
    /// Puts the frame's settings into options, as far as they have them. Null fails with `Host::ArgumentNullException`
    /// ("options").
    virtual void ExportEncoderOptions(EncoderOptions* options) = 0;
    /// New options of the frame's format with its settings.
    virtual std::unique_ptr<EncoderOptions> ExportEncoderOptions() = 0;
};

} // namespace Corvane::Rasterloom::Codecs
