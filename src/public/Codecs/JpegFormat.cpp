#include "FormatClasses.h"
#include "metadata/Jpeg/JpegMetaData.h"

#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/JpegFrame.h>
#include <Corvane/Rasterloom/Codecs/JpegReader.h>
#include <Corvane/Rasterloom/Codecs/JpegWriter.h>

namespace Corvane::Rasterloom::Codecs {

struct Formats::Jpeg {
    static constexpr std::int64_t MediaFormat = FormatManager::JpegFormat;
    using MetaData = ImagingFramework::JpegMetaData;
    using Reader = JpegReader;
    using Writer = JpegWriter;
    using Frame = JpegFrame;
    using EncoderOptions = JpegEncoderOptions;
};

template class FormatReaderOf<Formats::Jpeg>;
template class FormatWriterOf<Formats::Jpeg>;
template class FrameOf<Formats::Jpeg>;
template class EncoderOptionsOf<Formats::Jpeg>;

} // namespace Corvane::Rasterloom::Codecs
