#include "FormatClasses.h"
#include "metadata/Wbmp/WbmpMetaData.h"

#include <Corvane/Rasterloom/Codecs/WbmpEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/WbmpFrame.h>
#include <Corvane/Rasterloom/Codecs/WbmpReader.h>
#include <Corvane/Rasterloom/Codecs/WbmpWriter.h>

namespace Corvane::Rasterloom::Codecs {

struct Formats::Wbmp {
    static constexpr std::int64_t MediaFormat = FormatManager::WbmpFormat;
    using MetaData = ImagingFramework::WbmpMetaData;
    using Reader = WbmpReader;
    using Writer = WbmpWriter;
    using Frame = WbmpFrame;
    using EncoderOptions = WbmpEncoderOptions;
};

template class FormatReaderOf<Formats::Wbmp>;
template class FormatWriterOf<Formats::Wbmp>;
template class FrameOf<Formats::Wbmp>;
template class EncoderOptionsOf<Formats::Wbmp>;

WbmpReader::~WbmpReader() { DisposeFinally(); }
WbmpWriter::~WbmpWriter() { DisposeFinally(); }
WbmpFrame::~WbmpFrame() = default;
WbmpEncoderOptions::~WbmpEncoderOptions() = default;

} // namespace Corvane::Rasterloom::Codecs
