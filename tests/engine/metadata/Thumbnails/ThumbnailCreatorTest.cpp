#include "metadata/Thumbnails/IThumbnailCreator.h"

#include "BmpRasters.h"
#include "EventsProbe.h"
#include "colorconversion/ColorSpaceManager.h"
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

TEST(ThumbnailCreator, LanczosNumbers) {
    const Bytes step = {0, 0, 0, 0, 255, 255, 255, 255};
    EXPECT_EQ(GrayThumbnail(InterpolationMode::Lanczos3Filter, 8, 1, step, 4, 1), (Bytes{0, 22, 233, 255}));
    EXPECT_EQ(GrayThumbnail(InterpolationMode::Lanczos3Filter, 1, 8, step, 1, 4), (Bytes{0, 22, 233, 255}));
}

std::unique_ptr<BitmapData> Resize(const BitmapData& image, std::uint32_t width, std::uint32_t height,
                                   InterpolationMode mode) {
    ResizeTransform transform;
    transform.SetWidth(width);
    transform.SetHeight(height);
    transform.SetInterpolationMode(mode);
    std::unique_ptr<BitmapData> resized;
    transform.ApplyTransform(&image, nullptr, resized);
    return resized;
}

BitmapData ToArgb(const BitmapData& raster) {
    std::unique_ptr<BitmapData> result;
    ColorSpaceManager().TransformBitmapData(raster, PixelFormat::Format32bppArgb, result);
    return *result;
}

/// Noise; where there is alpha, opaque.
BitmapData OpaqueNoise(std::uint32_t width, std::uint32_t height, PixelFormat format) {
    BitmapData raster(width, height, format);
    const std::uint32_t alphaBytes = !PixelFormatHasAlpha(format) ? 0 : PixelFormatIsExtended(format) ? 2 : 1;
    const std::uint32_t pixelBytes = PixelFormatSize(format) / 8;
    const Bytes noise = NoiseBytes(std::size_t{raster.GetRowSize()} * height, width);
    for (std::uint32_t i = 0; i < noise.size(); ++i) {
        const bool alpha = i % raster.GetRowSize() % pixelBytes >= pixelBytes - alphaBytes;
        raster.GetScanlineRef(i / raster.GetRowSize())[i % raster.GetRowSize()] = alpha ? std::uint8_t{255} : noise[i];
    }
    return raster;
}

constexpr PixelFormat WholeFormats[] = {
    PixelFormat::Format24bppRgb,        PixelFormat::Format32bppArgb,     PixelFormat::Format48bppRgb,
    PixelFormat::Format64bppArgb,       PixelFormat::Format32bppCmyk,     PixelFormat::Format8bppGrayScale,
    PixelFormat::Format16bppGrayScale,  PixelFormat::Format16bppAGrayScale, PixelFormat::Format32bppAGrayScale,
    PixelFormat::Format64bppCmyk,       PixelFormat::Format40bppAcmyk,    PixelFormat::Format80bppAcmyk,
};

// Row by row and as a whole: the same weights, the same roundings. Heights leave all kinds of rests behind blocks of rows;
// in the last case the weights of the columns are made in pieces.
TEST(ThumbnailCreator, LanczosEqualsResizingAnOpaqueImage) {
    struct Case {
        std::uint32_t Width, Height, NewWidth, NewHeight;
    };
    for (const PixelFormat format : WholeFormats) {
        for (const Case& c : {Case{97, 61, 20, 15}, {97, 61, 96, 60}, {97, 61, 1, 61}, {97, 64, 97, 1}, {97, 16, 1, 1},
                              {3, 200, 2, 3}, {1, 40, 1, 7}}) {
            const BitmapData image = OpaqueNoise(c.Width, c.Height, format);
            ASSERT_EQ(PixelBytes(MakeThumbnail(InterpolationMode::Lanczos3Filter, image, c.NewWidth, c.NewHeight)),
                      PixelBytes(ToArgb(*Resize(image, c.NewWidth, c.NewHeight, InterpolationMode::Lanczos3Filter))))
                << std::hex << ToWord(format) << std::dec << " " << c.NewWidth << " " << c.NewHeight;
        }
    }
    const BitmapData wide = OpaqueNoise(150000, 18, PixelFormat::Format8bppGrayScale);
    EXPECT_EQ(PixelBytes(MakeThumbnail(InterpolationMode::Lanczos3Filter, wide, 9, 2)),
              PixelBytes(ToArgb(*Resize(wide, 9, 2, InterpolationMode::Lanczos3Filter))));
}

TEST(ThumbnailCreator, AnisotropicEqualsResizingAnOpaqueImage) {
    for (const PixelFormat format : {PixelFormat::Format24bppRgb, PixelFormat::Format32bppArgb}) {
        const BitmapData image = OpaqueNoise(97, 61, format);
        for (const InterpolationMode mode : {InterpolationMode::Anisotropic4, InterpolationMode::Anisotropic9}) {
            for (const auto& [width, height] : {std::pair{20U, 15U}, {96U, 60U}, {97U, 1U}, {1U, 61U}}) {
                EXPECT_EQ(PixelBytes(MakeThumbnail(mode, image, width, height)),
                          PixelBytes(ToArgb(*Resize(image, width, height, mode))));
            }
        }
    }
}

// Every pixel's neighbours in a byte are of other colours, so that one that is taken from a wrong place shows.
TEST(ThumbnailCreator, PackedIndicesAreTakenOneByOne) {
    for (const PixelFormat format : {PixelFormat::Format1bppIndexed, PixelFormat::Format4bppIndexed}) {
        BitmapData image = MakeRaster(61, 23, format, NoiseBytes(2000));
        const BitmapData expanded = ToArgb(image);
        for (const InterpolationMode mode : Modes) {
            EXPECT_EQ(PixelBytes(MakeThumbnail(mode, image, 17, 9)), PixelBytes(MakeThumbnail(mode, expanded, 17, 9)));
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
        EXPECT_THROW(create(mode, 1, 4), ArgumentException) << "never enlarged";
        EXPECT_THROW(create(mode, 4, 1), ArgumentException);
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

/// A frame whose lines come in the order of an interlaced file.
class InterlacedDecoder : public IFrameDecoderImpl {
public:
    explicit InterlacedDecoder(const BitmapData& image) : m_image(image) {
        m_uintFrameCount = 1;
        m_uintWidth = image.GetWidth();
        m_uintHeight = image.GetHeight();
        m_pixelFormat = image.GetPixelFormat();
    }
    using IFrameDecoderImpl::Attach;
    void Attach(ObjPtr<AbstractReader>) override {}
    double GetResolutionX() const override { return 90.0; }
    double GetResolutionY() const override { return 80.0; }
    std::shared_ptr<ColorMap> GetColorMap() override { return m_image.GetColorMap(); }

    int Runs = 0;

protected:
    void DecodeFrameInternal() override {
        ++Runs;
        CreateBitmapData();
        SetResolution();
        if (m_image.GetColorMapRef() != nullptr) {
            SetColorMap(GetColorMap());
        }
        for (const std::uint32_t pass : {0U, 2U, 1U, 3U}) {
            for (std::uint32_t row = pass; row < m_uintHeight; row += 4) {
                SetScanline(m_image.GetScanlineRef(row), row);
                UpdateEvents(1);
            }
        }
    }

private:
    const BitmapData& m_image;
};

TEST(ThumbnailCreator, LinesOutOfOrderGiveTheSameThumbnail) {
    for (const PixelFormat format : {PixelFormat::Format8bppIndexed, PixelFormat::Format32bppArgb}) {
        const BitmapData image = MakeRaster(30, 21, format, NoiseBytes(30 * 21 * 4));
        for (const InterpolationMode mode : Modes) {
            InterlacedDecoder decoder(image);
            decoder.SetThumbnailKind(mode);
            BitmapData* pThumbnail = nullptr;
            decoder.DecodeFrameToThumbnail(10, 0, pThumbnail, 0);
            const std::unique_ptr<BitmapData> owned(pThumbnail);
            EXPECT_EQ(PixelBytes(*owned), PixelBytes(MakeThumbnail(mode, image, 10, 7)));
            EXPECT_DOUBLE_EQ(owned->GetVerticalResolution(), 80.0);
            EXPECT_EQ(decoder.Runs, mode == InterpolationMode::Lanczos3Filter ? 2 : 1);
            // Into a raster of the caller's, and stopped in the second run.
            BitmapData given;
            pThumbnail = &given;
            decoder.DecodeFrameToThumbnail(0, 7, pThumbnail, 0);
            EXPECT_EQ(PixelBytes(given), PixelBytes(*owned));
            Testing::EventsProbe events(25);
            decoder.SetEvents(&events);
            BitmapData* pNone = nullptr;
            if (mode == InterpolationMode::Lanczos3Filter) {
                EXPECT_THROW(decoder.DecodeFrameToThumbnail(10, 0, pNone, 0), AbortedException);
            }
            EXPECT_EQ(pNone, nullptr);
        }
    }
}

// A decoder may hand over a line again, better than before.
TEST(ThumbnailCreator, LanczosTakesALineThatComesAgain) {
    const BitmapData image = OpaqueNoise(40, 40, PixelFormat::Format24bppRgb);
    BitmapData thumbnail(9, 9, PixelFormat::Format32bppArgb);
    std::unique_ptr<IThumbnailCreator> pCreator;
    IThumbnailCreator::CreateThumbnailer(InterpolationMode::Lanczos3Filter, 40, 40, image.GetPixelFormat(), nullptr,
                                         &thumbnail, &pCreator);
    const Bytes rough(image.GetRowSize(), 99);
    for (std::uint32_t y = 0; y < 40; ++y) {
        if (y % 2 == 1 && y + 1 < 40) {
            pCreator->SetScanline(y, rough.data());
        }
        pCreator->SetScanline(y, image.GetScanlineRef(y));
    }
    EXPECT_EQ(PixelBytes(thumbnail), PixelBytes(MakeThumbnail(InterpolationMode::Lanczos3Filter, image, 9, 9)));
}

} // namespace
} // namespace ImagingFramework
