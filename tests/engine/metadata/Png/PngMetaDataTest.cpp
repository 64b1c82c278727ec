#include "metadata/Png/PngMetaData.h"

#include "EventsProbe.h"
#include "FrameFiles.h"
#include "TestProfiles.h"

#include <gtest/gtest.h>
#include <string_view>
#include <zlib.h>

namespace ImagingFramework {
namespace {

void PutBig(Bytes& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

/// PNG files put together by hand.
struct PngBuilder {
    std::uint32_t Width = 1;
    std::uint32_t Height = 1;
    std::uint8_t BitDepth = 8;
    std::uint8_t ColorType = 0;
    std::uint8_t Interlace = 0;
    Bytes Chunks{}; ///< between header and pixels
    Bytes Lines{};  ///< with their filter bytes

    static void AddChunk(Bytes& file, const char* pName, const Bytes& data) {
        PutBig(file, static_cast<std::uint32_t>(data.size()));
        const std::size_t begin = file.size();
        file.insert(file.end(), pName, pName + 4);
        file.insert(file.end(), data.begin(), data.end());
        PutBig(file, static_cast<std::uint32_t>(crc32(0, file.data() + begin, static_cast<uInt>(file.size() - begin))));
    }
    PngBuilder& With(const char* pName, const Bytes& data) {
        AddChunk(Chunks, pName, data);
        return *this;
    }
    PngBuilder& WithResolution(std::uint32_t x, std::uint32_t y, std::uint8_t unit) {
        Bytes data;
        PutBig(data, x);
        PutBig(data, y);
        data.push_back(unit);
        return With("pHYs", data);
    }
    Bytes Build() const {
        Bytes file = {0x89, 'P', 'N', 'G', 13, 10, 26, 10};
        Bytes header;
        PutBig(header, Width);
        PutBig(header, Height);
        header.insert(header.end(), {BitDepth, ColorType, 0, 0, Interlace});
        AddChunk(file, "IHDR", header);
        file.insert(file.end(), Chunks.begin(), Chunks.end());
        Bytes packed(compressBound(static_cast<uLong>(Lines.size())));
        uLongf size = packed.size();
        compress(packed.data(), &size, Lines.data(), static_cast<uLong>(Lines.size()));
        packed.resize(size);
        AddChunk(file, "IDAT", packed);
        AddChunk(file, "IEND", {});
        return file;
    }
};

std::unique_ptr<BitmapData> Load(const Bytes& file) {
    PngMetaData metaData;
    return LoadFrame(file, metaData);
}

Bytes Save(BitmapData& raster, IInternalEvents* pEvents = nullptr, const PngSettings& settings = {}) {
    PngMetaData metaData;
    return SaveFrame(raster, metaData, [&] {
        metaData.SetEvents(pEvents);
        metaData.SetCompressionLevel(settings.CompressionLevel);
        metaData.SetFilter(settings.Filter);
        ItemTag option(MetaDataId::Interlaced);
        option = std::int32_t{settings.Interlaced};
        metaData.SetItem(option);
    });
}

TEST(PngMetaData, TwoBitSamplesBecomeFour) {
    // 0 1 2 3 2 in one line.
    PngBuilder gray{.Width = 5, .BitDepth = 2, .Lines = {0, 0x1B, 0x80}};
    const auto raster = Load(gray.Build());
    EXPECT_EQ(raster->GetPixelFormat(), PixelFormat::Format4bppIndexed);
    EXPECT_EQ(Row(*raster, 0), (Bytes{0x01, 0x23, 0x20}));
    ASSERT_EQ(raster->GetColorMapRef()->GetEntryCount(), 4U);
    EXPECT_EQ(Entry(*raster, 1), (Bytes{85, 85, 85, 255}));
    EXPECT_EQ(Entry(*raster, 3), (Bytes{255, 255, 255, 255}));

    // Three entries only: the index 3 is none of them.
    gray.ColorType = 3;
    gray.With("PLTE", {1, 2, 3, 4, 5, 6, 7, 8, 9}).With("tRNS", {10, 20});
    const auto indexed = Load(gray.Build());
    EXPECT_EQ(Row(*indexed, 0), (Bytes{0x01, 0x20, 0x20}));
    EXPECT_EQ(indexed->GetColorMapRef()->GetPixelFormat(), PixelFormat::Format32bppArgb);
    EXPECT_EQ(Entry(*indexed, 1), (Bytes{6, 5, 4, 20}));
    EXPECT_EQ(Entry(*indexed, 2), (Bytes{9, 8, 7, 255}));
}

/// A file of random samples, written by the library alone, and what its lines must become.
class RandomFile {
public:
    static constexpr std::uint32_t Width = 13;
    static constexpr std::uint32_t Height = 11;

    RandomFile(int colorType, int bitDepth, bool interlaced) : m_bits(static_cast<std::uint32_t>(bitDepth)) {
        const bool hasColor = colorType == PNG_COLOR_TYPE_RGB || colorType == PNG_COLOR_TYPE_RGB_ALPHA;
        m_colors = hasColor ? 3 : 1;
        m_channels = m_colors + ((colorType & PNG_COLOR_MASK_ALPHA) != 0 ? 1 : 0);
        std::vector<Bytes> lines;
        for (std::uint32_t y = 0; y < Height; ++y) {
            std::vector<std::uint32_t> samples;
            for (std::uint32_t i = 0; i < Width * m_channels; ++i) {
                m_state = m_state * 1664525 + 1013904223;
                samples.push_back(m_state >> (32 - m_bits));
            }
            lines.push_back(Pack(samples, m_bits));
            Expected.push_back(InMemory(samples));
        }
        Write(colorType, interlaced, lines);
    }

    Bytes File{};
    std::vector<Bytes> Expected{};

private:
    static Bytes Pack(const std::vector<std::uint32_t>& samples, std::uint32_t bits) {
        Bytes line((samples.size() * bits + 7) / 8);
        for (std::size_t i = 0; i < samples.size() * bits; ++i) {
            const std::uint32_t bit = samples[i / bits] >> (bits - 1 - i % bits) & 1;
            line[i / 8] = static_cast<std::uint8_t>(line[i / 8] | bit << (7 - i % 8));
        }
        return line;
    }

    Bytes InMemory(const std::vector<std::uint32_t>& samples) const {
        if (m_bits < 8) {
            return Pack(samples, m_bits == 2 ? 4 : m_bits);
        }
        Bytes line;
        for (std::size_t pixel = 0; pixel < samples.size(); pixel += m_channels) {
            for (std::size_t c = 0; c < m_channels; ++c) {
                const std::uint32_t sample = samples[pixel + (c < m_colors ? m_colors - 1 - c : c)];
                line.push_back(static_cast<std::uint8_t>(sample));
                if (m_bits == 16) {
                    line.push_back(static_cast<std::uint8_t>(sample >> 8));
                }
            }
        }
        return line;
    }

    void Write(int colorType, bool interlaced, const std::vector<Bytes>& lines) {
        png_structp pPng = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop pInfo = png_create_info_struct(pPng);
        png_set_write_fn(
            pPng, &File,
            [](png_structp pThis, png_bytep pData, std::size_t size) {
                auto* const pFile = static_cast<Bytes*>(png_get_io_ptr(pThis));
                pFile->insert(pFile->end(), pData, pData + size);
            },
            nullptr);
        png_set_IHDR(pPng, pInfo, Width, Height, static_cast<int>(m_bits), colorType,
                     interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                     PNG_FILTER_TYPE_DEFAULT);
        if (colorType == PNG_COLOR_TYPE_PALETTE) {
            std::vector<png_color> palette(std::size_t{1} << m_bits, png_color{1, 2, 3});
            png_set_PLTE(pPng, pInfo, palette.data(), static_cast<int>(palette.size()));
            const png_byte alphas[] = {9, 8};
            png_set_tRNS(pPng, pInfo, alphas, 2, nullptr);
        } else if (m_channels == m_colors) {
            const png_color_16 transparent{}; // a colour, which the frame does not know
            png_set_tRNS(pPng, pInfo, nullptr, 0, &transparent);
        }
        png_write_info(pPng, pInfo);
        const int passes = png_set_interlace_handling(pPng);
        for (int pass = 0; pass < passes; ++pass) {
            for (const Bytes& line : lines) {
                png_write_row(pPng, line.data());
            }
        }
        png_write_end(pPng, pInfo);
        png_destroy_write_struct(&pPng, &pInfo);
    }

    std::uint32_t m_bits;
    std::size_t m_colors = 1;
    std::size_t m_channels = 1;
    std::uint32_t m_state = 1;
};

TEST(PngMetaData, EveryTypeAndDepthOfTheLibrary) {
    const struct {
        int ColorType;
        int BitDepth;
        PixelFormat Format;
    } types[] = {
        {0, 1, PixelFormat::Format1bppIndexed},      {0, 2, PixelFormat::Format4bppIndexed},
        {0, 4, PixelFormat::Format4bppIndexed},      {0, 8, PixelFormat::Format8bppGrayScale},
        {0, 16, PixelFormat::Format16bppGrayScale},  {2, 8, PixelFormat::Format24bppRgb},
        {2, 16, PixelFormat::Format48bppRgb},        {3, 1, PixelFormat::Format1bppIndexed},
        {3, 2, PixelFormat::Format4bppIndexed},      {3, 4, PixelFormat::Format4bppIndexed},
        {3, 8, PixelFormat::Format8bppIndexed},      {4, 8, PixelFormat::Format16bppAGrayScale},
        {4, 16, PixelFormat::Format32bppAGrayScale}, {6, 8, PixelFormat::Format32bppArgb},
        {6, 16, PixelFormat::Format64bppArgb},
    };
    for (const auto& type : types) {
        for (const bool interlaced : {false, true}) {
            const RandomFile file(type.ColorType, type.BitDepth, interlaced);
            const auto raster = Load(file.File);
            ASSERT_EQ(raster->GetPixelFormat(), type.Format);
            for (std::uint32_t y = 0; y < RandomFile::Height; ++y) {
                EXPECT_EQ(Row(*raster, y), file.Expected[y])
                    << "type " << type.ColorType << ", " << type.BitDepth << " bits, " << interlaced << ", line " << y;
            }
        }
    }
}

TEST(PngMetaData, ThumbnailsDoNotSeeThePasses) {
    const auto thumbnail = [](bool interlaced) {
        PngMetaData metaData;
        metaData.AttachToRead(std::make_shared<MemoryStream>(RandomFile(6, 8, interlaced).File));
        ItemTag tag(MetaDataId::FrameThumbnail);
        tag.SetThumbnailWidth(5);
        tag.SetThumbnailHeight(5);
        tag.SetThumbnailInterpolation(InterpolationMode::Lanczos3Filter);
        metaData.GetItem(tag);
        const std::unique_ptr<BitmapData> raster(static_cast<BitmapData*>(tag));
        std::vector<Bytes> rows;
        for (std::uint32_t y = 0; y < raster->GetHeight(); ++y) {
            rows.push_back(Row(*raster, y));
        }
        return rows;
    };
    EXPECT_EQ(thumbnail(true), thumbnail(false));
}

TEST(PngMetaData, Resolution) {
    const auto resolution = [](PngBuilder file) {
        file.Lines = {0, 0};
        const auto raster = Load(file.Build());
        return std::pair(raster->GetHorizontalResolution(), raster->GetVerticalResolution());
    };
    const double unset = BitmapData::DefaultResolution;
    EXPECT_EQ(resolution({}), std::pair(unset, unset));
    EXPECT_EQ(resolution(PngBuilder().WithResolution(300, 200, 0)), std::pair(200.0, unset));
    const auto metres = resolution(PngBuilder().WithResolution(11811, 10000, 1));
    EXPECT_DOUBLE_EQ(metres.first, 11811 * 0.0254);
    EXPECT_DOUBLE_EQ(metres.second, 254.0);

    BitmapData raster(1, 1, PixelFormat::Format8bppGrayScale);
    raster.SetHorizontalResolution(300); // 11811.02 pixels per metre
    raster.SetVerticalResolution(96);    // 3779.5
    const auto saved = Load(Save(raster));
    EXPECT_DOUBLE_EQ(saved->GetHorizontalResolution(), 11811 * 0.0254);
    EXPECT_DOUBLE_EQ(saved->GetVerticalResolution(), 3779 * 0.0254);
}

TEST(PngMetaData, EveryFormatComesBack) {
    for (const PixelFormat format :
         {PixelFormat::Format1bppIndexed, PixelFormat::Format4bppIndexed, PixelFormat::Format8bppIndexed,
          PixelFormat::Format8bppGrayScale, PixelFormat::Format16bppGrayScale, PixelFormat::Format16bppAGrayScale,
          PixelFormat::Format32bppAGrayScale, PixelFormat::Format24bppRgb, PixelFormat::Format48bppRgb,
          PixelFormat::Format32bppArgb, PixelFormat::Format64bppArgb}) {
        BitmapData raster(16, 11, format);
        std::uint32_t state = 1;
        for (std::uint32_t y = 0; y < 11; ++y) {
            for (std::size_t i = 0; i < raster.GetRowSize(); ++i) {
                state = state * 1664525 + 1013904223;
                raster.GetScanlineRef(y)[i] = static_cast<std::uint8_t>(state >> 24);
            }
        }
        if (PixelFormatIsIndexed(format)) {
            auto map = std::make_shared<ColorMap>(1U << PixelFormatSize(format), PixelFormat::Format32bppArgb);
            map->SetAlpha(1, 77);
            raster.SetColorMapRef(map);
        }
        for (const bool interlaced : {false, true}) {
            const auto loaded = Load(Save(raster, nullptr, {.Interlaced = interlaced}));
            ASSERT_EQ(loaded->GetPixelFormat(), format);
            for (std::uint32_t y = 0; y < 11; ++y) {
                EXPECT_EQ(Row(*loaded, y), Row(raster, y)) << y;
            }
            if (PixelFormatIsIndexed(format)) {
                EXPECT_EQ(*loaded->GetColorMapRef(), *raster.GetColorMapRef());
            }
        }
    }
}

TEST(PngMetaData, WhatAFileCannotHold) {
    BitmapData padded(1, 1, PixelFormat::Format32bppRgb);
    const std::uint8_t pixel[4] = {1, 2, 3, 200};
    std::copy(pixel, pixel + 4, padded.GetScanlineRef(0));
    const auto loaded = Load(Save(padded));
    EXPECT_EQ(loaded->GetPixelFormat(), PixelFormat::Format24bppRgb);
    EXPECT_EQ(Row(*loaded, 0), (Bytes{1, 2, 3}));

    BitmapData indexed(2, 1, PixelFormat::Format8bppIndexed);
    indexed.SetColorMapRef(nullptr);
    EXPECT_THROW(Save(indexed), PaletteException);
    indexed.SetColorMapRef(std::make_shared<ColorMap>(3, PixelFormat::Format24bppRgb));
    indexed.GetScanlineRef(0)[0] = 2;
    indexed.GetScanlineRef(0)[1] = 3;
    EXPECT_EQ(Row(*Load(Save(indexed)), 0), (Bytes{2, 0})) << "an index beyond the palette";
}

TEST(PngMetaData, ProfilesOfTheFramesColours) {
    const auto profileAfter = [](PixelFormat format, const Bytes& profile) {
        BitmapData raster(3, 2, format);
        raster.SetProfile(profile.data(), profile.size());
        const auto loaded = Load(Save(raster));
        return loaded->GetProfileNameRef() == nullptr ? Bytes() : loaded->GetProfileData();
    };
    Bytes large = TestProfiles::Rgb();
    const std::size_t sound = large.size();
    large.resize(200000);
    for (std::size_t i = sound; i < large.size(); ++i) {
        large[i] = static_cast<std::uint8_t>(i * 7);
    }
    std::copy_n(Bytes{0, 3, 0x0D, 0x40}.begin(), 4, large.begin()); // its size
    EXPECT_EQ(profileAfter(PixelFormat::Format24bppRgb, large), large);
    EXPECT_EQ(profileAfter(PixelFormat::Format8bppGrayScale, TestProfiles::Gray()), TestProfiles::Gray());
    // What the library would refuse is left out.
    EXPECT_EQ(profileAfter(PixelFormat::Format8bppGrayScale, large), Bytes());
    EXPECT_EQ(profileAfter(PixelFormat::Format32bppArgb, TestProfiles::Gray()), Bytes());
    EXPECT_EQ(profileAfter(PixelFormat::Format24bppRgb, TestProfiles::Cmyk()), Bytes());
    large.resize(150000); // shorter than it says
    EXPECT_EQ(profileAfter(PixelFormat::Format24bppRgb, large), Bytes());
}

TEST(PngMetaData, LevelsAndFilters) {
    BitmapData raster(50, 40, PixelFormat::Format24bppRgb);
    for (std::uint32_t y = 0; y < 40; ++y) {
        for (std::uint32_t x = 0; x < 150; ++x) {
            raster.GetScanlineRef(y)[x] = static_cast<std::uint8_t>(x * y);
        }
    }
    // The bytes in front of the lines tell how each was filtered.
    const auto filters = [&](PngFilter filter) {
        const Bytes file = Save(raster, nullptr, {.CompressionLevel = 0, .Filter = filter});
        const std::string_view text(reinterpret_cast<const char*>(file.data()), file.size());
        const std::size_t begin = text.find("IDAT") + 4;
        Bytes lines(151 * 40);
        uLongf size = lines.size();
        EXPECT_EQ(uncompress(lines.data(), &size, file.data() + begin, static_cast<uLong>(file.size() - begin)), Z_OK);
        Bytes kinds;
        for (std::size_t y = 0; y < 40; ++y) {
            kinds.push_back(lines[151 * y]);
        }
        return kinds;
    };
    EXPECT_EQ(filters(PngFilter::None), Bytes(40, 0));
    EXPECT_EQ(filters(PngFilter::Sub), Bytes(40, 1));
    EXPECT_EQ(filters(PngFilter::Up), Bytes(40, 2));
    EXPECT_EQ(filters(PngFilter::Average), Bytes(40, 3));
    EXPECT_EQ(filters(PngFilter::Paeth), Bytes(40, 4));

    const Bytes usual = Save(raster);
    EXPECT_GT(Save(raster, nullptr, {.CompressionLevel = 0}).size(), 150U * 40);
    EXPECT_LT(Save(raster, nullptr, {.CompressionLevel = 9}).size(), usual.size() + 1);
    for (const std::int32_t level : {-2, 10}) {
        EXPECT_THROW(PngMetaData().SetCompressionLevel(level), ArgumentOutOfRangeException);
    }
}

TEST(PngMetaData, ProgressCountsPasses) {
    for (const bool interlaced : {false, true}) {
        const int passes = interlaced ? 7 : 1;
        BitmapData raster(3000, 10, PixelFormat::Format24bppRgb);
        Testing::EventsProbe saving;
        // The probe begins with a range of its own.
        const std::int32_t before = saving.Announced();
        const Bytes file = Save(raster, &saving, {.Interlaced = interlaced});
        EXPECT_EQ(saving.Announced() - before, 10 * passes);
        EXPECT_EQ(saving.Steps(), 10 * passes);

        Testing::EventsProbe loading;
        PngMetaData metaData;
        metaData.SetEvents(&loading);
        LoadFrame(file, metaData);
        EXPECT_EQ(loading.Announced() - before, 10 * (passes + 1));
        EXPECT_EQ(loading.Steps(), 10 * (passes + 1));
    }
}

TEST(PngMetaData, HugeFramesNeedData) {
    for (const auto& [width, height] : {std::pair(30000U, 30000U), std::pair(1U, 0x7FFFFFFFU), std::pair(0x7FFFFFFFU, 1U)}) {
        PngBuilder file{.Width = width, .Height = height, .ColorType = 2, .Lines = {0}};
        EXPECT_THROW(Load(file.Build()), MediaCorruptedException) << width;
    }
}

} // namespace
} // namespace ImagingFramework
