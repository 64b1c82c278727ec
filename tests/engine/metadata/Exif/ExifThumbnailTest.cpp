#include "metadata/Exif/ExifDataStorage.h"

#include "ExifBlocks.h"
#include "TestThumbnailCodec.h"
#include "Throws.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

using Bytes = ExifBuilder::Bytes;
using Fields = std::vector<ExifBuilder::Field>;

/// The main directory, the thumbnail's, and bytes at place 500.
Bytes Block(const ExifBuilder& empty, const Fields& main, const Fields& thumbnail, const Bytes& atPlace500) {
    ExifBuilder b = empty;
    const std::uint32_t image = b.Directory(main);
    b.SetNext(image, static_cast<std::uint32_t>(main.size()), b.Directory(thumbnail));
    b.FillTo(500);
    b.Append(atPlace500);
    return b.Get();
}

Bytes BlockWithThumbnail(const ExifBuilder& empty, const Fields& thumbnail, const Bytes& atPlace500) {
    return Block(empty, {empty.Short(0x0112, {1})}, thumbnail, atPlace500);
}

const Bytes TwoPixels = {0xFF, 0xD8, 2, 1, 10, 20, 30, 40, 50, 60};

TEST(ExifThumbnail, IsReadWithItsResolution) {
    const TestThumbnailCodec codec(FileFormat::Jpeg);
    for (const auto& [unit, perInch] : {std::pair(2U, 1.0), {3U, 2.54}, {4U, 25.4}, {5U, 25400.0}, {1U, 1.0}}) {
        for (const bool little : {true, false}) {
            const ExifBuilder b(little);
            const Fields fields = {b.Rational(0x011A, {50, 1}), b.Rational(0x011B, {30, 0}), b.Short(0x0128, {unit}),
                                   b.Long(0x0201, {500}), b.Short(0x0202, {10})};
            const ExifDataStorage exif = ParseExif(BlockWithThumbnail(b, fields, TwoPixels));
            ASSERT_NE(exif.GetThumbnailRef(), nullptr);
            EXPECT_DOUBLE_EQ(exif.GetThumbnailRef()->GetHorizontalResolution(), 50 * perInch);
            EXPECT_DOUBLE_EQ(exif.GetThumbnailRef()->GetVerticalResolution(), 30 * perInch) << "over 0: the dividend";
            EXPECT_EQ(exif.GetCount(), 7U);
            std::uint32_t key = 0;
            EXPECT_TRUE(exif.GetKey(6, key));
            EXPECT_EQ(key, ExifKey::Thumbnail);
            EXPECT_FALSE(exif.GetKey(7, key));
            DataItem item;
            ASSERT_TRUE(exif.GetItem(ExifKey::Thumbnail, item));
            EXPECT_EQ(static_cast<BitmapData&>(item).GetScanlineRef(0)[5], 60);
            item.FreePointerValue();
        }
    }
    const ExifBuilder b(true);
    const Bytes noResolution = BlockWithThumbnail(b, {b.Long(0x0201, {500}), b.Long(0x0202, {10})}, TwoPixels);
    EXPECT_EQ(ParseExif(noResolution).GetThumbnailRef()->GetHorizontalResolution(), 72);
    EXPECT_EQ(ParseExif(noResolution, false).GetThumbnailRef(), nullptr);
}

TEST(ExifThumbnail, KeepsItsFileUntilItIsReplaced) {
    const TestThumbnailCodec codec(FileFormat::Jpeg);
    const ExifBuilder b(false);
    Bytes file = TwoPixels;
    file.push_back(99); // a codec would not write this byte
    ExifDataStorage exif = ParseExif(BlockWithThumbnail(
        b, {b.Rational(0x011A, {100, 2}), b.Long(0x0201, {500}), b.Long(0x0202, {11})}, file));
    const auto thumbnailOf = [](const ExifDataStorage& written) {
        const Bytes block = WriteExif(written);
        return Bytes(block.end() - written.GetTag(0x0202, ExifIfd::Thumbnail)->GetNumber().value_or(0), block.end());
    };
    const ExifDataStorage kept = ParseExif(WriteExif(exif));
    EXPECT_EQ(thumbnailOf(kept), file);
    EXPECT_EQ(kept.GetTag(0x011A, ExifIfd::Thumbnail)->GetValue<UnsignedRational>(0), (UnsignedRational{50, 1}));
    EXPECT_EQ(kept.GetTag(0x011B, ExifIfd::Thumbnail)->GetValue<UnsignedRational>(0), (UnsignedRational{72, 1}));

    auto* const pRaster = new BitmapData(1, 2, PixelFormat::Format24bppRgb);
    pRaster->GetScanlineRef(1)[2] = 7;
    pRaster->SetHorizontalResolution(96.25);
    ASSERT_TRUE(exif.SetItem(ExifKey::Thumbnail, DataItem(pRaster)));
    const ExifDataStorage replaced = ParseExif(WriteExif(exif));
    EXPECT_EQ(thumbnailOf(replaced), (Bytes{0xFF, 0xD8, 1, 2, 0, 0, 0, 0, 0, 7}));
    EXPECT_EQ(replaced.GetTag(0x0103, ExifIfd::Thumbnail)->GetNumber(), 6U);
    EXPECT_EQ(replaced.GetTag(0x0128, ExifIfd::Thumbnail)->GetNumber(), 2U);
    EXPECT_EQ(replaced.GetTag(0x011A, ExifIfd::Thumbnail)->GetValue<UnsignedRational>(0),
              (UnsignedRational{962500, 10000}));
    EXPECT_EQ(replaced.GetThumbnailRef()->GetHorizontalResolution(), 96.25);

    ExifDataStorage copy = exif;
    copy.RemoveEntry(ExifKey::Thumbnail);
    EXPECT_EQ(ParseExif(WriteExif(copy)).GetTagCount(ExifIfd::Thumbnail), 0U);
    EXPECT_THROW(copy.Remove(ExifKey::Thumbnail), ArgumentException);
    EXPECT_TRUE(exif.Contains(ExifKey::Thumbnail));
}

TEST(ExifThumbnail, WithoutACodecTheFileIsKept) {
    const ExifBuilder b(true);
    ExifDataStorage exif = ParseExif(BlockWithThumbnail(b, {b.Long(0x0201, {500}), b.Long(0x0202, {10})}, TwoPixels));
    EXPECT_EQ(exif.GetThumbnailRef(), nullptr);
    EXPECT_EQ(ParseExif(WriteExif(exif)).GetTagCount(ExifIfd::Thumbnail), 6U);
    EXPECT_THROW(IThumbnailCodec::Register(FileFormat::Png, nullptr), ArgumentException);
    exif.SetThumbnail(std::make_shared<BitmapData>(1, 1, PixelFormat::Format24bppRgb));
    EXPECT_THROW(exif.SerializeForJpeg(), MediaUnsupportedException);
}

TEST(ExifThumbnail, WrongOnesAreToldOrDropped) {
    const TestThumbnailCodec codec(FileFormat::Jpeg);
    const ExifBuilder b(true);
    const auto block = [&](const Fields& fields) { return BlockWithThumbnail(b, fields, TwoPixels); };
    for (const Fields& none : {Fields{b.Long(0x0201, {0}), b.Long(0x0202, {10})},
                               Fields{b.Long(0x0201, {500}), b.Long(0x0202, {0})},
                               Fields{b.Long(0x0201, {5000}), b.Long(0x0202, {10})}, Fields{b.Short(0x0112, {1})}}) {
        EXPECT_EQ(ParseExif(block(none)).GetThumbnailRef(), nullptr);
    }
    const Bytes cut = block({b.Long(0x0201, {500}), b.Long(0x0202, {0xFFFFFFFF})});
    EXPECT_EQ(ParseExif(cut).GetThumbnailRef()->GetWidth(), 2U) << "the length is cut to what is there";
    const Bytes noLength = block({b.Long(0x0201, {500})});
    EXPECT_THROW(ParseExif(noLength), UnexpectedException);
    EXPECT_EQ(ParseExifTolerantly(noLength).GetCount(), 2U);
    const Bytes damaged = block({b.Long(0x0201, {500}), b.Long(0x0202, {9})});
    EXPECT_THROW(ParseExif(damaged), MediaCorruptedException) << "as the codec tells";
    EXPECT_EQ(ParseExifTolerantly(damaged).GetThumbnailRef(), nullptr);
    const auto text = [&](const Fields& fields) {
        const std::string whole = ThrownText<UnexpectedException>([&] { ParseExif(block(fields)); });
        return whole.substr(whole.find("Additional info: ") + 17);
    };
    EXPECT_EQ(text({b.Long(0x0111, {500})}), "Error occured while decoding thumbnail (0x0).");
    EXPECT_EQ(text({b.Long(0x0111, {500}), b.Rational(0x0117, {6, 1})}),
              "Error occured while decoding thumbnail (0x0).");
    EXPECT_EQ(text({b.Long(0x0111, {500}), b.Long(0x0117, {0})}), "Error occured while decoding thumbnail (0x3).");
    EXPECT_THROW(ParseExif(block({b.Long(0x0111, {500}), b.Long(0x0117, {100000})})), MediaCorruptedException);
    EXPECT_THROW(ParseExif(block({b.Long(0x0111, {500}), b.Long(0x0117, {11})})), OutOfRangeException);
}

/// Whatever the order of the block, the codec gets a little-endian file of the directory and its strips.
TEST(ExifThumbnail, UncompressedOnesBecomeATiffFile) {
    const TestThumbnailCodec codec(FileFormat::Tiff);
    for (const bool little : {true, false}) {
        const ExifBuilder empty(little);
        const auto fields = [](const ExifBuilder& b, std::uint32_t first, std::uint32_t second) {
            return Fields{b.Short(0x0100, {1}), b.Short(0x0102, {8, 8, 8}), b.Long(0x0111, {first, second}),
                          b.Short(0x0117, {2, 1}), b.Rational(0x011A, {96, 1})};
        };
        const ExifDataStorage exif =
            ParseExif(BlockWithThumbnail(empty, fields(empty, 501, 505), {0, 11, 12, 0, 0, 13}));
        ASSERT_NE(exif.GetThumbnailRef(), nullptr);
        EXPECT_EQ(exif.GetThumbnailRef()->GetHorizontalResolution(), 96);
        ExifBuilder file(true);
        const std::uint32_t end = 8 + 2 + 5 * 12 + 4 + 6 + 8 + 8;
        file.Directory(fields(file, end, end + 2));
        file.Append({11, 12, 13});
        EXPECT_EQ(codec.LastFile, file.Get());
    }
}

TEST(ExifThumbnail, StandsInImageResourcesToo) {
    const TestThumbnailCodec codec(FileFormat::Jpeg);
    const auto resource = [](std::uint8_t id, const Bytes& file, const Bytes& next = {}) {
        Bytes bytes = {'8', 'B', 'I', 'M', 4, id, 0, 0, 0, 0, 0, static_cast<std::uint8_t>(28 + file.size())};
        bytes.resize(bytes.size() + 28);
        bytes.insert(bytes.end(), file.begin(), file.end());
        bytes.insert(bytes.end(), next.begin(), next.end());
        return bytes;
    };
    const ExifBuilder b(true);
    const Fields own = {b.Long(0x0201, {500}), b.Long(0x0202, {10})};
    const auto block = [&](const Bytes& resources, const Fields& thumbnail = {}) {
        return Block(b, {b.Raw(0x8649, 1, resources)}, thumbnail, TwoPixels);
    };
    const Bytes one = {0, 0, 1, 1, 1, 2, 3, 0};
    const Bytes tall = {0, 0, 1, 2, 1, 2, 3, 4, 5, 6};
    const Bytes both = resource(9, one, resource(5, {1, 2}, resource(12, tall)));
    EXPECT_EQ(ParseExif(block(both)).GetThumbnailRef()->GetHeight(), 2U) << "the later one";
    EXPECT_EQ(ParseExif(block(both, own)).GetThumbnailRef()->GetWidth(), 2U) << "its own directory comes last";
    EXPECT_EQ(ParseExif(block(resource(5, one))).GetThumbnailRef(), nullptr);
    EXPECT_EQ(ParseExif(block({'8', 'B', 'I', 'M', 4, 9, 0, 0, 0, 0, 0, 0})).GetThumbnailRef(), nullptr);
    EXPECT_EQ(ParseExif(block(Bytes(40, 'x'))).GetThumbnailRef(), nullptr);
    const std::string text = ThrownText<UnexpectedException>([&] { ParseExif(block(resource(9, {}))); });
    EXPECT_TRUE(text.ends_with("Cannot create stream object for thumbnail decoding."));
    EXPECT_EQ(ParseExifTolerantly(block(resource(9, {}))).GetCount(), 1U);
}

} // namespace
} // namespace ImagingFramework
