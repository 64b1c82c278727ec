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
    virtual std::string get_Name() = 0;
    virtual void set_Name(const std::string& value) = 0;
    /// In pixels.
    virtual std::int32_t get_Width() = 0;
    virtual std::int32_t get_Height() = 0;
    /// The rest of this group follows from the pixel format.
    virtual Rasterloom::PixelFormat get_PixelFormat() = 0;
    virtual Rasterloom::ColorSpace get_ColorSpace() = 0;
    virtual std::int32_t get_BitsPerPixel() = 0;
    virtual bool get_HasAlpha() = 0;
    virtual bool get_IsCmyk() = 0;
    virtual bool get_IsGrayScale() = 0;
    virtual bool get_IsRgb() = 0;
    virtual bool get_IsExtended() = 0;
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
    virtual void ExportEncoderOptions(EncoderOptions* options) = 0;
    virtual std::unique_ptr<EncoderOptions> ExportEncoderOptions() = 0;
};

} // namespace Corvane::Rasterloom::Codecs
