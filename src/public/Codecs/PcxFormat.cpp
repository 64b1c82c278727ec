#include "FormatClasses.h"
#include "metadata/Pcx/PcxMetaData.h"

#include <Corvane/Rasterloom/Codecs/PcxEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/PcxFrame.h>
#include <Corvane/Rasterloom/Codecs/PcxReader.h>

namespace Corvane::Rasterloom::Codecs {

struct Formats::Pcx {
    static constexpr std::int64_t MediaFormat = FormatManager::PcxFormat;
    using MetaData = ImagingFramework::PcxMetaData;
    using Reader = PcxReader;
    using Frame = PcxFrame;
    using EncoderOptions = PcxEncoderOptions;
};

template class FormatReaderOf<Formats::Pcx>;
template class FrameOf<Formats::Pcx>;
template class EncoderOptionsOf<Formats::Pcx>;

PcxReader::~PcxReader() { DisposeFinally(); }
PcxFrame::~PcxFrame() = default;
PcxEncoderOptions::~PcxEncoderOptions() = default;

} // namespace Corvane::Rasterloom::Codecs
