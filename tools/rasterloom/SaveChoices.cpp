#include "SaveChoices.h"

#include <Corvane/Rasterloom/Codecs/BmpEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/PngEncoderOptions.h>

namespace Tool {

using namespace Corvane::Rasterloom;

std::unique_ptr<Codecs::EncoderOptions> SaveChoices::For(std::int64_t format) const {
    auto options = Codecs::FormatManager::CreateEncoderOptions(format);
    if (auto* const jpeg = dynamic_cast<Codecs::JpegEncoderOptions*>(options.get())) {
        if (Quality) {
            jpeg->set_Quality(*Quality);
        }
        if (RestartInterval) {
            jpeg->set_RestartInterval(*RestartInterval);
        }
        jpeg->set_IsProgressive(Progressive);
        jpeg->set_ChromaSubsamplingEnabled(ChromaSubsampling);
    }
    if (auto* const png = dynamic_cast<Codecs::PngEncoderOptions*>(options.get())) {
        png->set_Interlaced(Interlaced);
        if (CompressionLevel) {
            png->set_CompressionLevel(*CompressionLevel);
        }
        if (Filter) {
            png->set_Filter(*Filter);
        }
    }
    if (auto* const bmp = dynamic_cast<Codecs::BmpEncoderOptions*>(options.get()); bmp != nullptr && RunLengths) {
        bmp->set_Compression(Codecs::CompressionType::Rle);
    }
    return options;
}

} // namespace Tool
