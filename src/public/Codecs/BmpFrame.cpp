#include <Corvane/Rasterloom/Codecs/BmpFrame.h>

#include "ObjectGuard.h"
#include "Validator.h"

#include <Corvane/Rasterloom/Codecs/BmpEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/BmpReader.h>

namespace Corvane::Rasterloom::Codecs {

namespace {

CompressionType CheckedCompression(CompressionType compression) {
    Validator::ValidateEnum("compression", compression);
    if (compression != CompressionType::None && compression != CompressionType::Rle) {
        throw Host::ArgumentException("The compression type you specified is not supported by bitmap format.",
                                      "compression");
    }
    return compression;
}

} // namespace

// --- BmpFrame

BmpFrame::BmpFrame() = default;

BmpFrame::BmpFrame(Bitmap* bitmap) { SetBitmap(bitmap); }

BmpFrame::BmpFrame(CompressionType compression) : m_enCompression(CheckedCompression(compression)) {}

BmpFrame::BmpFrame(Bitmap* bitmap, CompressionType compression) : BmpFrame(compression) { SetBitmap(bitmap); }

BmpFrame::BmpFrame(FormatReader& reader, std::int32_t index) : FrameOf(reader, index), m_bCompressionLoaded(false) {}

BmpFrame::~BmpFrame() = default;

CompressionType BmpFrame::get__Compression() {
    if (!m_bCompressionLoaded) {
        static_cast<BmpReader&>(RequireReader())._FrameLoadCompression(*this);
    }
    return m_enCompression;
}

CompressionType BmpFrame::get_Compression() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return get__Compression();
}

void BmpFrame::set_Compression(CompressionType compression) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    SetLoadedCompression(CheckedCompression(compression));
}

void BmpFrame::SetLoadedCompression(CompressionType compression) noexcept {
    m_enCompression = compression;
    m_bCompressionLoaded = true;
}

void BmpFrame::OnImportEncoderOptions(const EncoderOptions& options) {
    Frame::OnImportEncoderOptions(options);
    if (const auto* const own = dynamic_cast<const BmpEncoderOptions*>(&options)) {
        SetLoadedCompression(own->get_Compression());
    }
}

void BmpFrame::OnExportEncoderOptions(EncoderOptions& options) {
    Frame::OnExportEncoderOptions(options);
    if (auto* const own = dynamic_cast<BmpEncoderOptions*>(&options)) {
        own->set_Compression(get__Compression());
    }
}

// --- BmpEncoderOptions

BmpEncoderOptions::BmpEncoderOptions() = default;

BmpEncoderOptions::BmpEncoderOptions(CompressionType compression) : BmpEncoderOptions() {
    set_Compression(compression);
}

BmpEncoderOptions::~BmpEncoderOptions() = default;

void BmpEncoderOptions::set_Compression(CompressionType compression) {
    m_enCompression = CheckedCompression(compression);
}

} // namespace Corvane::Rasterloom::Codecs
