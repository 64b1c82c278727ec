#pragma once

#include <Corvane/Rasterloom/Transforms/BitmapTransform.h>

namespace Corvane::Rasterloom::Transforms {

/// The base of operations that keep the size and so can be applied through a mask, or to a part of a bitmap.
///
/// A mask is a `Format8bppGrayScale` bitmap of the source's size: 255 takes the result, 0 keeps the source, values
/// between mix them in integers, for 16-bit samples as well. It is locked during the work. A mask of another size or
/// format fails with `Host::ArgumentException`, an empty one with `BitmapEmptyException` ("mask"), a packed 16-bit
/// source with `UnsupportedPixelFormatException`.
class RASTERLOOM_API MaskedBitmapTransform : public BitmapTransform {
public:
    ~MaskedBitmapTransform() override;

    using BitmapTransform::ApplyTransform;
    /// In place on a view, whose rows are replaced.
    void ApplyTransform(BitmapData& bitmapData);

    /// In place, through a mask.
    void ApplyMaskTransform(Bitmap& bitmap, Bitmap& mask);
    void ApplyMaskTransform(BitmapData& bitmapData, Bitmap& mask);
    /// The destination becomes a copy of the source with the result mixed in.
    void ApplyMaskTransform(Bitmap& source, Bitmap& destination, Bitmap& mask);
    void ApplyMaskTransform(BitmapData& sourceData, Bitmap& destination, Bitmap& mask);

protected:
    MaskedBitmapTransform(BitmapChange change, std::unique_ptr<ImagingFramework::Transform> transform);

    bool SetDestinationData(std::unique_ptr<ImagingFramework::BitmapData>& destBitmapData) override;
};

} // namespace Corvane::Rasterloom::Transforms
