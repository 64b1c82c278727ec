#include "metadata/Jpeg/JpegThumbnailCodec.h"

#include "colorconversion/ColorSpaceManager.h"
#include "metadata/Jpeg/JpegFrameDecoder.h"
#include "metadata/Jpeg/JpegFrameEncoder.h"
#include "metadata/Streams/MemoryReader.h"
#include "metadata/Streams/MemoryStream.h"

namespace ImagingFramework {

void JpegThumbnailCodec::RegisterOnce() {
    static const JpegThumbnailCodec s_codec;
    static const bool s_registered = [] {
        IThumbnailCodec::Register(FileFormat::Jpeg, &s_codec);
        return true;
    }();
    static_cast<void>(s_registered);
}

void JpegThumbnailCodec::Decode(std::span<const std::uint8_t> file, BitmapData& raster) const {
    if (file.empty()) {
        throw MediaCorruptedException();
    }
    MemoryReader reader(file.data(), file.size());
    JpegFrameDecoder decoder;
    decoder.Attach(ObjPtr<AbstractReader>(&reader, false));
    if (std::uint64_t{decoder.GetFrameWidth()} * decoder.GetFrameHeight() > MaxPixelCount) {
        throw MediaCorruptedException();
    }
    BitmapData* pRaster = &raster;
    decoder.DecodeFrame(pRaster, 0);
}

std::vector<std::uint8_t> JpegThumbnailCodec::Encode(const BitmapData& raster) const {
    JpegFrameEncoder encoder;
    std::unique_ptr<BitmapData> converted;
    const BitmapData* pSource = &raster;
    if (!encoder.IsPixelFormatSupported(raster.GetPixelFormat())) {
        ColorSpaceManager manager;
        manager.TransformBitmapData(raster, encoder.GetClosestPixelFormat(raster.GetPixelFormat()), converted);
        pSource = converted.get();
    }
    const auto stream = std::make_shared<MemoryStream>();
    encoder.Attach(stream, 0, 0);
    encoder.EncodeFrame(*pSource, 0, 0);
    encoder.Detach();
    return stream->GetBytes();
}

} // namespace ImagingFramework
