#pragma once

#include <Corvane/Rasterloom/Codecs/Frame.h>

namespace Corvane::Rasterloom::Codecs {

/// The base of the frames of a host's own format, and a plain one itself.
///
/// The members that end in TU reach the cells of the properties without the lock: they are for the subclass, its
/// reader and its writer. Setting a cell counts it as loaded.
class RASTERLOOM_API CustomFrame : public Frame {
public:
    /// A frame to be written, until a reader is set.
    CustomFrame();
    ~CustomFrame() override;

    /// Size in pixels.
    std::int32_t get_WidthTU();
    void set_WidthTU(std::int32_t value);
    std::int32_t get_HeightTU();
    void set_HeightTU(std::int32_t value);
    /// The format of the pixels.
    Rasterloom::PixelFormat get_PixelFormatTU();
    void set_PixelFormatTU(Rasterloom::PixelFormat value);
    /// Dots per inch; 72 at first.
    float get_HorizontalResolutionTU();
    /// A value not above 0 fails with `Host::ArgumentOutOfRangeException` ("horizontalResolution").
    void set_HorizontalResolutionTU(float value);
    /// Dots per inch; 72 at first.
    float get_VerticalResolutionTU();
    /// A value not above 0 fails with `Host::ArgumentOutOfRangeException` ("verticalResolution").
    void set_VerticalResolutionTU(float value);
    /// Null without one.
    std::shared_ptr<Rasterloom::ColorProfile> get_ColorProfileTU();
    void set_ColorProfileTU(const std::shared_ptr<Rasterloom::ColorProfile>& value);
    /// Place in the image as a whole, in pixels.
    std::int32_t get_LeftTU();
    void set_LeftTU(std::int32_t value);
    std::int32_t get_TopTU();
    void set_TopTU(std::int32_t value);
    /// UTF-8; empty at first.
    std::string get_NameTU();
    void set_NameTU(const std::string& value);
    /// Null when the frame has none, or when it is gone.
    FormatReader* get_FormatReaderTU();
    /// Makes the frame one of this reader: its cells count as not loaded any more. Null fails with
    /// `Host::ArgumentNullException` ("formatReader"), a second reader with `UnexpectedException`.
    void set_FormatReaderTU(FormatReader* formatReader);
    /// The place among the frames of the file, from 0.
    void set_IndexTU(std::int32_t value);

    /// Sets all of these at once. Fails as the single ones, with nothing set.
    void InitializeCustomFrameTU(std::int32_t width, std::int32_t height, Rasterloom::PixelFormat pixelFormat,
                                 float horizontalResolution, float verticalResolution, std::int32_t left = 0,
                                 std::int32_t top = 0, const std::string& name = {},
                                 const std::shared_ptr<Rasterloom::ColorProfile>& colorProfile = nullptr);
};

} // namespace Corvane::Rasterloom::Codecs
