#pragma once

#include <Corvane/Rasterloom/Codecs/Frame.h>

namespace Corvane::Rasterloom::Codecs {

/// A frame over a raster that exists already. Left and top are 0; setting them and `SetBitmap` do nothing.
class RASTERLOOM_API PreLoadedFrame : public Frame {
public:
    /// Takes the raster. Fails with `Host::ArgumentNullException` and `BitmapEmptyException` ("pBitmap").
    PreLoadedFrame(std::unique_ptr<ImagingFramework::BitmapData> pBitmap, std::int32_t index, std::string name = {});
    ~PreLoadedFrame() override;

    void _SetBitmap(Bitmap& bitmap) override;
    void _SetLeft(std::int32_t value) override;
    void _SetTop(std::int32_t value) override;
};

} // namespace Corvane::Rasterloom::Codecs
