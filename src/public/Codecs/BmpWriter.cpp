#include <Corvane/Rasterloom/Codecs/BmpWriter.h>

#include "metadata/Bmp/BitmapMetaData.h"

#include <Corvane/Rasterloom/Codecs/BmpFrame.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

BmpWriter::BmpWriter() : FormatWriter(FormatManager::BmpFormat, std::make_unique<engine::BitmapMetaData>()) {}

BmpWriter::BmpWriter(const std::shared_ptr<Host::Stream>& stream) : BmpWriter() { Open(stream); }

BmpWriter::BmpWriter(const std::filesystem::path& fileName) : BmpWriter() { Open(fileName); }

BmpWriter::~BmpWriter() { DisposeFinally(); }

std::unique_ptr<IFrame> BmpWriter::GetEmptyFrame() { return std::make_unique<BmpFrame>(); }

std::unique_ptr<IFormatWriter> BmpWriter::Clone() { return std::make_unique<BmpWriter>(); }

void BmpWriter::OnBeforeAddFrame(Frame& frame) {
    auto* const own = dynamic_cast<BmpFrame*>(&frame);
    const CompressionType compression = own != nullptr ? own->get__Compression() : CompressionType::None;
    engine::ItemTag tag(engine::MetaDataId::FrameCompression, get__WrittenFrameCount());
    tag = static_cast<engine::FrameCompressionType>(compression);
    _SetItem(tag);
}

} // namespace Corvane::Rasterloom::Codecs
