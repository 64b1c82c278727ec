// Loads the input as a JPEG file: its pixels, every metadata block, and a thumbnail of each kind, plain and from a frame that
// the library has reduced. Engine failures are answers; anything else is a finding.

#include "metadata/Jpeg/JpegMetaData.h"
#include "metadata/Streams/MemoryStream.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

using namespace ImagingFramework;

namespace {

class Input {
public:
    explicit Input(const std::shared_ptr<MemoryStream>& stream, bool fastThumbnails) {
        m_metaData.SetFastThumbnails(fastThumbnails);
        m_metaData.AttachToRead(stream);
    }

    void Get(ItemTag tag) {
        try {
            m_metaData.GetItem(tag);
        } catch (const Exception&) {
            return;
        }
        tag.FreePointerValue();
    }

    void GetThumbnail(InterpolationMode mode) {
        ItemTag tag(MetaDataId::FrameThumbnail);
        tag.SetThumbnailWidth(5);
        tag.SetThumbnailHeight(5);
        tag.SetThumbnailInterpolation(mode);
        Get(tag);
    }

private:
    JpegMetaData m_metaData;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    const auto stream = std::make_shared<MemoryStream>(std::vector<std::uint8_t>(pData, pData + size));
    try {
        Input plain(stream, false);
        plain.Get(ItemTag(MetaDataId::FrameBitmap));
        for (const MetaDataId id : {MetaDataId::ColorProfile, MetaDataId::Exif, MetaDataId::Iptc, MetaDataId::Xmp,
                                    MetaDataId::AdobeResources, MetaDataId::JpegRestartOption}) {
            plain.Get(ItemTag(id));
        }
        plain.GetThumbnail(InterpolationMode::Lanczos3Filter);
        Input fast(stream, true);
        for (const InterpolationMode mode :
             {InterpolationMode::NearestNeighbour, InterpolationMode::Anisotropic4, InterpolationMode::Lanczos3Filter}) {
            fast.GetThumbnail(mode);
        }
    } catch (const Exception&) {
        // no JPEG file, or a broken one
    }
    return 0;
}
