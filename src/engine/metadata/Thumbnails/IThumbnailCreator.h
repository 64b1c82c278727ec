#pragma once

#include "Common/BitmapData.h"
#include "Common/InterpolationMode.h"

#include <cstdint>
#include <memory>

namespace ImagingFramework {

/// Shrinks an image while it is decoded: takes its lines from the top and writes into a `Format32bppArgb` raster of the
/// thumbnail's size, which it does not own.
class IThumbnailCreator {
public:
    virtual ~IThumbnailCreator() = default;
    /// Each line comes once; `rowData` is valid during the call. The thumbnail is complete after the last one.
    virtual void SetScanline(std::uint32_t rowIndex, const std::uint8_t* rowData) = 0;

    /// Modes: `NearestNeighbour`, `Anisotropic4`, `Anisotropic9`, `Lanczos3Filter`; any other fails with
    /// `ArgumentException` ("thumbnail interpolation mode"). The raster and the palette (needed for an indexed image)
    /// must outlive the result. Fails with `ArgumentNullPointerException` ("ppOutThumbnailer", "pThumbBitmapData",
    /// "pImageColorMap"), `ArgumentException` for an empty image ("uintImageWidth", "uintImageHeight") or a thumbnail
    /// that is larger than the image on either side ("thumbnail height", "thumbnail width"), and
    /// `UnsupportedPixelFormatException` for a thumbnail of another format.
    static void CreateThumbnailer(InterpolationMode interpolationMode, std::uint32_t imageWidth,
                                  std::uint32_t imageHeight, PixelFormat imageFormat, const ColorMap* pImageColorMap,
                                  BitmapData* pThumbBitmapData, std::unique_ptr<IThumbnailCreator>* ppOutThumbnailer);
};

} // namespace ImagingFramework
