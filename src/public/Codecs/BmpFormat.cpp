#include "FormatClasses.h"
#include "metadata/Bmp/BitmapMetaData.h"

#include <Corvane/Rasterloom/Codecs/BmpEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/BmpFrame.h>
#include <Corvane/Rasterloom/Codecs/BmpReader.h>
#include <Corvane/Rasterloom/Codecs/BmpWriter.h>

namespace Corvane::Rasterloom::Codecs {

struct Formats::Bmp {
    static constexpr std::int64_t MediaFormat = FormatManager::BmpFormat;
    using MetaData = ImagingFramework::BitmapMetaData;
    using Reader = BmpReader;
    using Writer = BmpWriter;
    using Frame = BmpFrame;
    using EncoderOptions = BmpEncoderOptions;
};

template class FormatReaderOf<Formats::Bmp>;
template class FormatWriterOf<Formats::Bmp>;
template class FrameOf<Formats::Bmp>;
template class EncoderOptionsOf<Formats::Bmp>;

} // namespace Corvane::Rasterloom::Codecs
