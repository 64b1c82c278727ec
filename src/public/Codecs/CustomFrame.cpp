#include <Corvane/Rasterloom/Codecs/CustomFrame.h>

#include "FrameImpl.h"
#include "Validator.h"

#include <Corvane/Rasterloom/Codecs/FormatReader.h>
#include <Corvane/Rasterloom/Exceptions.h>

namespace Corvane::Rasterloom::Codecs {

namespace {

float CheckedResolution(const char* name, float value) {
    if (!(value > 0.0F)) {
        throw Host::ArgumentOutOfRangeException(name);
    }
    return value;
}

Rasterloom::PixelFormat CheckedPixelFormat(Rasterloom::PixelFormat value) {
    Validator::ValidateEnum("pixelFormat", value);
    return value;
}

} // namespace

CustomFrame::CustomFrame() = default;
CustomFrame::~CustomFrame() = default;

std::int32_t CustomFrame::get_WidthTU() { return get__Impl().m_cells.Width.Value; }
void CustomFrame::set_WidthTU(std::int32_t value) { get__Impl().m_cells.Width.Set(value); }
std::int32_t CustomFrame::get_HeightTU() { return get__Impl().m_cells.Height.Value; }
void CustomFrame::set_HeightTU(std::int32_t value) { get__Impl().m_cells.Height.Set(value); }
Rasterloom::PixelFormat CustomFrame::get_PixelFormatTU() { return get__Impl().m_cells.PixelFormat.Value; }
float CustomFrame::get_HorizontalResolutionTU() { return get__Impl().m_cells.HorizontalResolution.Value; }
float CustomFrame::get_VerticalResolutionTU() { return get__Impl().m_cells.VerticalResolution.Value; }
std::shared_ptr<ColorProfile> CustomFrame::get_ColorProfileTU() { return get__Impl().m_cells.ColorProfile.Value; }
void CustomFrame::set_ColorProfileTU(const std::shared_ptr<ColorProfile>& value) {
    get__Impl().m_cells.ColorProfile.Set(value);
}
std::int32_t CustomFrame::get_LeftTU() { return get__Impl().m_cells.Left.Value; }
void CustomFrame::set_LeftTU(std::int32_t value) { get__Impl().m_cells.Left.Set(value); }
std::int32_t CustomFrame::get_TopTU() { return get__Impl().m_cells.Top.Value; }
void CustomFrame::set_TopTU(std::int32_t value) { get__Impl().m_cells.Top.Set(value); }
std::string CustomFrame::get_NameTU() { return get__Impl().m_cells.Name.Value; }
void CustomFrame::set_NameTU(const std::string& value) { get__Impl().m_cells.Name.Set(value); }
void CustomFrame::set_IndexTU(std::int32_t value) { get__Impl().m_intIndex = value; }

void CustomFrame::set_PixelFormatTU(Rasterloom::PixelFormat value) {
    get__Impl().m_cells.PixelFormat.Set(CheckedPixelFormat(value));
}

void CustomFrame::set_HorizontalResolutionTU(float value) {
    get__Impl().m_cells.HorizontalResolution.Set(CheckedResolution("horizontalResolution", value));
}

void CustomFrame::set_VerticalResolutionTU(float value) {
    get__Impl().m_cells.VerticalResolution.Set(CheckedResolution("verticalResolution", value));
}

FormatReader* CustomFrame::get_FormatReaderTU() {
    const auto& link = get__Impl().m_pReaderLink;
    return link ? link->Get() : nullptr;
}

void CustomFrame::set_FormatReaderTU(FormatReader* formatReader) {
    if (formatReader == nullptr) {
        throw Host::ArgumentNullException("formatReader");
    }
    if (get__Impl().m_pReaderLink) {
        throw UnexpectedException("Format reader cannot be initialized in this case.");
    }
    get__Impl().Bind(*formatReader);
}

void CustomFrame::InitializeCustomFrameTU(std::int32_t width, std::int32_t height, Rasterloom::PixelFormat pixelFormat,
                                          float horizontalResolution, float verticalResolution, std::int32_t left,
                                          std::int32_t top, const std::string& name,
                                          const std::shared_ptr<ColorProfile>& colorProfile) {
    get__Impl().m_cells = {{name},
                           {width},
                           {height},
                           {CheckedPixelFormat(pixelFormat)},
                           {CheckedResolution("horizontalResolution", horizontalResolution)},
                           {CheckedResolution("verticalResolution", verticalResolution)},
                           {colorProfile},
                           {left},
                           {top}};
}

} // namespace Corvane::Rasterloom::Codecs
