#include "metadata/Thumbnails/IThumbnailCreator.h"

#include "BmpBuilder.h"
#include "transforms/ResizeTransform.h"

#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

constexpr InterpolationMode Modes[] = {InterpolationMode::NearestNeighbour, InterpolationMode::Anisotropic4,
                                       InterpolationMode::Anisotropic9, InterpolationMode::Lanczos3Filter};

BitmapData MakeThumbnail(InterpolationMode mode, const BitmapData& image, std::uint32_t width, std::uint32_t height) {
    BitmapData thumbnail(width, height, PixelFormat::Format32bppArgb);
    std::unique_ptr<IThumbnailCreator> pCreator;
    IThumbnailCreator::CreateThumbnailer(mode, image.GetWidth(), image.GetHeight(), image.GetPixelFormat(),
                                         image.GetColorMapRef(), &thumbnail, &pCreator);
    for (std::uint32_t y = 0; y < image.GetHeight(); ++y) {
        pCreator->SetScanline(y, image.GetScanlineRef(y));
    }
    return thumbnail;
}

/// One byte per pixel of a gray thumbnail; the others are held to be right.
Bytes GrayOf(const BitmapData& thumbnail) {
    Bytes gray;
    const Bytes pixels = PixelBytes(thumbnail);
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        EXPECT_EQ(
            Bytes(pixels.begin() + static_cast<std::ptrdiff_t>(i), pixels.begin() + static_cast<std::ptrdiff_t>(i) + 4),
            (Bytes{pixels[i], pixels[i], pixels[i], 255}));
        gray.push_back(pixels[i]);
    }
    return gray;
}

Bytes GrayThumbnail(InterpolationMode mode, std::uint32_t width, std::uint32_t height, const Bytes& pixels,
                    std::uint32_t newWidth, std::uint32_t newHeight) {
    return GrayOf(
        MakeThumbnail(mode, MakeRaster(width, height, PixelFormat::Format8bppGrayScale, pixels), newWidth, newHeight));
}

TEST(ThumbnailCreator, NearestTakesTheFirstToReachAPixel) {
    // Five to two: positions 0, 0.4, 0.8, 1.2, 1.6.
    EXPECT_EQ(GrayThumbnail(InterpolationMode::NearestNeighbour, 5, 1, {1, 2, 3, 4, 5}, 2, 1), (Bytes{1, 4}));
    EXPECT_EQ(GrayThumbnail(InterpolationMode::NearestNeighbour, 1, 5, {1, 2, 3, 4, 5}, 1, 2), (Bytes{1, 4}));
}

TEST(ThumbnailCreator, AnisotropicMeansOfSamples) {
    // Four to two with 2 by 2 samples: step 1.5, so 0, 1, 3 and 4, which is cut to 3.
    Bytes pixels = {10, 21, 0, 40, 31, 40, 0, 50, 0, 0, 0, 0, 60, 70, 0, 90};
    EXPECT_EQ(GrayThumbnail(InterpolationMode::Anisotropic4, 4, 4, pixels, 2, 2),
              (Bytes{(10 + 21 + 31 + 40) / 4, (40 + 50) / 2, (60 + 70) / 2, 90}));
    // Three to two with 3 by 3 samples: step 2/3, so 0, 0, 1 and 2, 2 (2.67), 2 (cut); nine samples of six pixels.
    pixels = {9, 30, 90, 18, 60, 180, 0, 0, 0};
    EXPECT_EQ(GrayThumbnail(InterpolationMode::Anisotropic9, 3, 3, pixels, 2, 2)[0],
              (2 * (9 + 9 + 30) + 18 + 18 + 60) / 9);
    // Rows may come in any order.
    BitmapData thumbnail(2, 2, PixelFormat::Format32bppArgb);
    std::unique_ptr<IThumbnailCreator> pCreator;
    const BitmapData image = MakeRaster(3, 3, PixelFormat::Format8bppGrayScale, pixels);
    IThumbnailCreator::CreateThumbnailer(InterpolationMode::Anisotropic9, 3, 3, image.GetPixelFormat(), nullptr,
                                         &thumbnail, &pCreator);
    for (const std::uint32_t row : {2U, 0U, 1U}) {
        pCreator->SetScanline(row, image.GetScanlineRef(row));
    }
    EXPECT_EQ(GrayOf(thumbnail), GrayThumbnail(InterpolationMode::Anisotropic9, 3, 3, pixels, 2, 2));
}

TEST(ThumbnailCreator, LanczosByRowsEqualsTheWholeImage) {
    const Bytes step = {0, 0, 0, 0, 255, 255, 255, 255};
    EXPECT_EQ(GrayThumbnail(InterpolationMode::Lanczos3Filter, 8, 1, step, 4, 1), (Bytes{0, 22, 233, 255}));
    EXPECT_EQ(GrayThumbnail(InterpolationMode::Lanczos3Filter, 1, 8, step, 1, 4), (Bytes{0, 22, 233, 255}));
    const BitmapData image = MakeRaster(97, 61, PixelFormat::Format24bppRgb, NoiseBytes(97 * 3 * 61));
    for (const auto& [width, height] : {std::pair{20U, 15U}, {96U, 60U}, {1U, 61U}, {97U, 1U}, {1U, 1U}}) {
        std::unique_ptr<BitmapData> pResized;
        ResizeTransform transform;
        transform.SetWidth(width);
        transform.SetHeight(height);
        transform.SetInterpolationMode(InterpolationMode::Lanczos3Filter);
        const Bytes thumbnail = PixelBytes(MakeThumbnail(InterpolationMode::Lanczos3Filter, image, width, height));
        transform.ApplyTransform(&image, nullptr, pResized);
        const Bytes whole = PixelBytes(*pResized);
        for (std::size_t i = 0; i < std::size_t{width} * height; ++i) {
            for (std::size_t channel = 0; channel < 3; ++channel) {
                // The weights are the same numbers, found by another order of the same operations.
                ASSERT_NEAR(thumbnail[4 * i + channel], whole[3 * i + channel], 1) << width << " " << height;
            }
        }
    }
}

TEST(ThumbnailCreator, AThumbnailOfTheImagesSizeIsAConversion) {
    const std::pair<PixelFormat, Bytes> images[] = {
        {PixelFormat::Format8bppIndexed, {0, 100, 254}},
        {PixelFormat::Format24bppRgb, {1, 2, 3, 101, 102, 103, 255, 0, 1}},
        {PixelFormat::Format48bppRgb, {9, 1, 9, 2, 9, 3, 9, 101, 9, 102, 9, 103, 9, 255, 9, 0, 9, 1}},
    };
    for (const auto& [format, pixels] : images) {
        for (const InterpolationMode mode : Modes) {
            const Bytes thumbnail = PixelBytes(MakeThumbnail(mode, MakeRaster(3, 1, format, pixels), 3, 1));
            const Bytes rgb = {1, 2, 3, 255, 101, 102, 103, 255, 255, 0, 1, 255};
            EXPECT_EQ(thumbnail, rgb) << ToWord(format) << " " << static_cast<int>(mode);
        }
    }
    for (const InterpolationMode mode : Modes) {
        EXPECT_EQ(GrayThumbnail(mode, 1, 1, {77}, 1, 1), Bytes{77});
        EXPECT_EQ(GrayThumbnail(mode, 40, 30, Bytes(1200, 77), 7, 1), Bytes(7, 77)) << static_cast<int>(mode);
    }
}

TEST(ThumbnailCreator, Misuse) {
    BitmapData thumbnail(2, 2, PixelFormat::Format32bppArgb);
    std::unique_ptr<IThumbnailCreator> pCreator;
    const auto create = [&](InterpolationMode mode, std::uint32_t width, std::uint32_t height,
                            PixelFormat format = PixelFormat::Format24bppRgb) {
        IThumbnailCreator::CreateThumbnailer(mode, width, height, format, nullptr, &thumbnail, &pCreator);
    };
    EXPECT_THROW(create(InterpolationMode::Bilinear, 4, 4), ArgumentException);
    for (const InterpolationMode mode : Modes) {
        EXPECT_THROW(create(mode, 0, 4), ArgumentException);
        EXPECT_THROW(create(mode, 4, 0), ArgumentException);
        EXPECT_THROW(create(mode, 4, 4, PixelFormat::Format8bppIndexed), ArgumentNullPointerException);
        if (mode != InterpolationMode::NearestNeighbour) {
            EXPECT_THROW(create(mode, 1, 4), ArgumentException);
            EXPECT_THROW(create(mode, 4, 1), ArgumentException);
        }
    }
    EXPECT_THROW(
        IThumbnailCreator::CreateThumbnailer(Modes[0], 4, 4, PixelFormat::Format24bppRgb, nullptr, nullptr, &pCreator),
        ArgumentNullPointerException);
    EXPECT_THROW(
        IThumbnailCreator::CreateThumbnailer(Modes[0], 4, 4, PixelFormat::Format24bppRgb, nullptr, &thumbnail, nullptr),
        ArgumentNullPointerException);
    const Bytes row(12);
    create(InterpolationMode::Lanczos3Filter, 4, 4);
    pCreator->SetScanline(0, row.data());
    pCreator->SetScanline(1, row.data());
    EXPECT_THROW(pCreator->SetScanline(3, row.data()), UnsupportedScanlinesOrderException);
    BitmapData wrong(2, 2, PixelFormat::Format24bppRgb);
    EXPECT_THROW(
        IThumbnailCreator::CreateThumbnailer(Modes[0], 4, 4, PixelFormat::Format24bppRgb, nullptr, &wrong, &pCreator),
        UnsupportedPixelFormatException);
}

/// Through a decoder: a packed bottom-up file, whose lines must be turned round first, and a raw one.
TEST(ThumbnailCreator, WhileAFileIsDecoded) {
    const BitmapData image = MakeRaster(30, 20, PixelFormat::Format8bppIndexed, NoiseBytes(600));
    for (const FrameCompressionType compression : {FrameCompressionType::None, FrameCompressionType::Rle}) {
        for (const InterpolationMode mode : Modes) {
            BitmapMetaData metaData;
            metaData.AttachToRead(std::make_shared<MemoryStream>(SaveBmp(image, compression)));
            ItemTag tag(MetaDataId::FrameThumbnail);
            tag.SetThumbnailWidth(15);
            tag.SetThumbnailInterpolation(mode);
            ASSERT_TRUE(metaData.GetItem(tag));
            const std::unique_ptr<BitmapData> pThumbnail(static_cast<BitmapData*>(tag));
            EXPECT_EQ(pThumbnail->GetPixelFormat(), PixelFormat::Format32bppArgb);
            EXPECT_EQ(PixelBytes(*pThumbnail), PixelBytes(MakeThumbnail(mode, image, 15, 10)));
        }
    }
}

} // namespace
} // namespace ImagingFramework
