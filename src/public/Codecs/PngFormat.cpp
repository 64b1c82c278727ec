#include "FormatClasses.h"
#include "metadata/Png/PngMetaData.h"

#include <Corvane/Rasterloom/Codecs/PngEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/PngFrame.h>
#include <Corvane/Rasterloom/Codecs/PngReader.h>
#include <Corvane/Rasterloom/Codecs/PngWriter.h>

namespace Corvane::Rasterloom::Codecs {

struct Formats::Png {
    static constexpr std::int64_t MediaFormat = FormatManager::PngFormat;
    using MetaData = ImagingFramework::PngMetaData;
    using Reader = PngReader;
    using Writer = PngWriter;
    using Frame = PngFrame;
    using EncoderOptions = PngEncoderOptions;
};

template class FormatReaderOf<Formats::Png>;
template class FormatWriterOf<Formats::Png>;
template class FrameOf<Formats::Png>;
template class EncoderOptionsOf<Formats::Png>;

} // namespace Corvane::Rasterloom::Codecs
