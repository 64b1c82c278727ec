#include <Corvane/Rasterloom/Codecs/WbmpWriter.h>

#include "metadata/Wbmp/WbmpMetaData.h"

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/WbmpFrame.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

WbmpWriter::WbmpWriter() : FormatWriter(FormatManager::WbmpFormat, std::make_unique<engine::WbmpMetaData>()) {}

WbmpWriter::WbmpWriter(const std::shared_ptr<Host::Stream>& stream) : WbmpWriter() {
    Open(stream);
}

WbmpWriter::WbmpWriter(const std::filesystem::path& fileName) : WbmpWriter() {
    Open(fileName);
}

WbmpWriter::~WbmpWriter() {
    DisposeFinally();
}

std::unique_ptr<IFrame> WbmpWriter::GetEmptyFrame() {
    return std::make_unique<WbmpFrame>();
}

std::unique_ptr<IFormatWriter> WbmpWriter::Clone() {
    return std::make_unique<WbmpWriter>();
}

} // namespace Corvane::Rasterloom::Codecs
