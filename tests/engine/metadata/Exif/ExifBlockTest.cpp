#include "metadata/Exif/ExifDataStorage.h"

#include "ExifBlocks.h"
#include "JpegSegments.h"
#include "Throws.h"
#include "metadata/Exif/ExifBlockWriter.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <set>

namespace ImagingFramework {
namespace {

using Bytes = ExifBuilder::Bytes;
using Fields = std::vector<ExifBuilder::Field>;

/// A block of one directory.
Bytes SingleDirectory(const ExifBuilder& empty, const Fields& fields) {
    ExifBuilder builder = empty;
    builder.Directory(fields);
    return builder.Get();
}

std::string Text(const ExifDataStorage& exif, std::uint32_t key) {
    std::string text = "-";
    exif.GetItemString(key, text);
    return text;
}

/// All tags that are copied come back equal, the maker note at its place, the thumbnail's file as it was; what we wrote
/// comes back byte for byte.
void ExpectRoundTrip(const Bytes& block) {
    const ExifDataStorage exif = ParseExifTolerantly(block);
    if (exif.SerializeForJpeg().empty()) {
        return;
    }
    const Bytes written = WriteExif(exif);
    const ExifDataStorage again = ParseExif(written);
    EXPECT_EQ(WriteExif(again), written);
    for (std::uint32_t ifd = 0; ifd < ExifIfdCount; ++ifd) {
        const auto directory = static_cast<ExifIfd>(ifd);
        std::vector<std::uint16_t> tags;
        exif.GetTagsIdentifiers(directory, tags);
        for (const std::uint16_t tag : tags) {
            if (ExifBlockWriter::ShouldBeWritten(tag, ifd < 2, true) && again.GetTagCount(directory) != 0 &&
                !ExifBlockWriter::IsOffsetIntoFile(tag)) {
                ASSERT_NE(again.GetTag(tag, directory), nullptr) << ifd << " " << tag;
                EXPECT_EQ(*again.GetTag(tag, directory), *exif.GetTag(tag, directory)) << ifd << " " << tag;
            }
        }
    }
    const ExifTag* const pNote = exif.GetTag(0x927C, ExifIfd::Exif);
    if (pNote != nullptr && pNote->Data.size() > 4) {
        EXPECT_EQ(std::ranges::search(written, pNote->Data).begin() - written.begin(),
                  std::ranges::search(block, pNote->Data).begin() - block.begin());
    }
}

TEST(ExifBlock, ComesBackByteForByte) {
    for (const bool little : {true, false}) {
        for (const bool hasMakerNote : {true, false}) {
            for (const std::size_t noteSize : {5U, 300U, 301U}) {
                const CameraBlock camera(little, hasMakerNote, noteSize);
                const ExifDataStorage exif = ParseExif(camera.Block);
                EXPECT_EQ(exif.IsLittleEndian(), little);
                EXPECT_EQ(WriteExif(exif), camera.Block) << little << hasMakerNote << noteSize;
            }
        }
    }
}

TEST(ExifBlock, ValuesAreThoseOfTheFile) {
    for (const bool little : {true, false}) {
        const CameraBlock camera(little);
        const ExifDataStorage exif = ParseExif(camera.Block);
        const std::pair<std::uint32_t, const char*> texts[] = {
            {0x010F, "Maker & Sons"},
            {0x0112, "Right top"},
            {0x011A, "300/1"},
            {0xF000EA1C, "-2, 7"},
            {0x829A, "1/125"},
            {0x8827, "100, 200"},
            {0x9000, "2.20"},
            {0x9201, "6965784/1000000"},
            {0x9204, "-1/3"},
            {0x9209, "Flash fired, auto mode, red-eye reduction"},
            {0x9286, "made by hand"},
            {0xA001, "sRGB"},
            {0, "2, 2, 0, 0"},
            {2, "48.00/8.00/12.34N"},
            {5, "Above sea level"},
            {7, "10:20:30.50"},
            {1, "Basic file (sRGB)"},
            {0xF001011A, "720000/10000"},
            {0xF001FDE9, "of the thumbnail"},
        };
        for (const auto& [key, text] : texts) {
            EXPECT_EQ(Text(exif, key), text) << std::hex << key;
        }
        EXPECT_EQ(exif.GetTag(0x927C, ExifIfd::Exif)->Data, camera.MakerNote);
        EXPECT_EQ(exif.GetCount(), 13U + 21 + 9 + 3 + 7);
        EXPECT_EQ(exif.GetTag(0xA432, ExifIfd::Exif)->GetValue<UnsignedRational>(2), (UnsignedRational{28, 10}));
        EXPECT_EQ(exif.GetTag(0x0112, ExifIfd::Exif), nullptr);
    }
}

/// Cameras put their directories and values wherever they like.
TEST(ExifBlock, AnyOrderIsReadAndPutInOrder) {
    for (const bool little : {true, false}) {
        ExifBuilder b(little);
        const std::uint32_t text = b.Append(Bytes{'C', 'a', 'm', 0, 0});
        const std::uint32_t gps = b.Directory({b.Rational(2, {1, 1, 2, 1, 3, 1}), b.Raw(0, 1, {2, 2, 0, 0})});
        const std::uint32_t interoperability = b.Directory({b.Ascii(1, "THM")});
        const std::uint32_t exif = b.Directory({b.Long(0xA005, {interoperability}), b.Short(0x9207, {3})});
        const std::uint32_t image =
            b.Directory({b.Long(0x8825, {gps}), {0x0110, 2, 5, b.Number(text, 4)}, b.Long(0x8769, {exif})});
        b.SetFirst(image);
        const ExifDataStorage parsed = ParseExif(b.Get());
        EXPECT_EQ(Text(parsed, 0x0110), "Cam");
        EXPECT_EQ(Text(parsed, 0x9207), "Spot");
        EXPECT_EQ(Text(parsed, 2), "1.00/2.00/3.00");
        EXPECT_EQ(Text(parsed, 1), "Thumbnail file");
        ExpectRoundTrip(b.Get());
    }
}

TEST(ExifBlock, MakerNoteKeepsItsPlaceWhereItCan) {
    const auto parseNote = [](std::uint32_t place, std::uint32_t size, std::uint16_t type = 7) {
        ExifBuilder b(true);
        b.Directory({b.Long(0x8769, {26})});
        b.Directory({{0x927C, type, size, b.Number(place, 4)}});
        b.FillTo(std::max(b.Size(), place));
        Bytes note(size);
        std::iota(note.begin(), note.end(), std::uint8_t{1});
        b.Append(note);
        return ParseExif(b.Get());
    };
    const auto isKept = [&](std::uint32_t place, std::uint32_t size, std::uint16_t type = 7) {
        const ExifDataStorage exif = parseNote(place, size, type);
        const Bytes block = WriteExif(exif);
        const Bytes& note = exif.GetTag(0x927C, ExifIfd::Exif)->Data;
        return place + note.size() <= block.size() && std::equal(note.begin(), note.end(), block.begin() + place);
    };
    EXPECT_TRUE(isKept(777, 5)) << "an odd place, too";
    EXPECT_TRUE(isKept(60000, 5000));
    EXPECT_FALSE(isKept(65400, 100)) << "no room for the directories behind it";
    EXPECT_FALSE(isKept(70000, 100));
    EXPECT_FALSE(isKept(777, 5, 1)) << "bytes, not undefined";
    const ExifDataStorage inlineNote = parseNote(0x04030201, 4);
    EXPECT_LT(inlineNote.SerializeForJpeg().size(), 60U);
    EXPECT_EQ(ParseExif(WriteExif(inlineNote)).GetTag(0x927C, ExifIfd::Exif)->Data, (Bytes{1, 2, 3, 4}));
    // The note lies over the header: 4 is no place for it.
    ExifBuilder b(true);
    b.Directory({b.Long(0x8769, {26})});
    b.Directory({{0x927C, 7, 10, b.Number(4, 4)}});
    ExifDataStorage overHeader = ParseExif(b.Get());
    EXPECT_TRUE(ParseExif(WriteExif(overHeader)).Contains(0x927C));
    overHeader.SetKeepMakerNote(false);
    EXPECT_TRUE(overHeader.SerializeForJpeg().empty()) << "nothing else was there";
}

TEST(ExifBlock, OddFields) {
    const ExifBuilder b(true);
    ExifBuilder::Field tooMany = b.Undefined(0x9286, "123456");
    tooMany.Count = 65536;
    const Bytes block = SingleDirectory(
        b, {{0x9003, 2, 3, {'a', 'b', 'c', 0}}, b.Short(0x0112, {1}), b.Short(0x0112, {2}),
            {0x0131, 2, 6, {'1', '2', '3', '4', '5', '6'}}, tooMany, {0x8827, 3, 0, {0, 0, 0, 0}}, {0x0110, 2, 0, {}}});
    const ExifDataStorage exif = ParseExif(block);
    EXPECT_EQ(exif.GetTag(0x9003, ExifIfd::MainImage)->Data, (Bytes{'a', 'b', 'c', 0}));
    EXPECT_EQ(exif.GetTag(0x0131, ExifIfd::MainImage)->GetCount(), 7U) << "a NUL was added";
    EXPECT_EQ(Text(exif, 0x0112), "Top left") << "the first one counts";
    EXPECT_EQ(exif.GetCount(), 3U) << "too many values, and none, are left out";
    // A type that is none is not looked at when the field is left out for its count.
    EXPECT_EQ(ParseExif(SingleDirectory(b, {{0x9286, 99, 65536, {0, 0, 0, 0}}})).GetCount(), 0U);
}

TEST(ExifBlock, DamageIsToldOrDropped) {
    const ExifBuilder b(true);
    const auto text = [](const Bytes& block) { return ThrownText<ArgumentException>([&] { ParseExif(block); }); };
    const std::string header =
        "Argument has an unappropriate value (pReader). (Wrong or corrupted TIFF-header has been specified.).";
    EXPECT_EQ(text({'X', 'X', 42, 0, 8, 0, 0, 0}), header);
    EXPECT_EQ(text({'I', 'I', 43, 0, 8, 0, 0, 0}), header);
    EXPECT_EQ(text({'M', 'M', 42, 0, 0, 0, 0, 8}), header);
    ExifDataStorage exif;
    EXPECT_THROW(exif.Initialize(nullptr, true), ArgumentNullPointerException);
    EXPECT_THROW(exif.InitializeTolerantly(nullptr, true), ArgumentNullPointerException);
    MemoryReader wrong(header.data(), header.size());
    EXPECT_FALSE(exif.InitializeTolerantly(&wrong, true));

    const Fields good = {b.Short(0x0112, {3}), b.Ascii(0x0131, "some text")};
    const auto withBad = [&](const ExifBuilder::Field& bad) {
        Fields fields = good;
        fields.insert(fields.begin() + 1, bad);
        return SingleDirectory(b, fields);
    };
    for (const std::uint16_t type : std::initializer_list<std::uint16_t>{0, 6, 8, 11, 12, 13, 65535}) {
        const Bytes block = withBad({0x0110, type, 1, {1, 2, 3, 4}});
        EXPECT_EQ(text(block), "Argument has an unappropriate value (type).") << type;
        EXPECT_EQ(ParseExifTolerantly(block).GetCount(), 2U);
    }
    for (const Bytes& block :
         {withBad({0x0110, 2, 100, {0xFF, 0xFF, 0xFF, 0x7F}}), withBad({0x0110, 2, 100, {10, 0, 0, 0}})}) {
        EXPECT_THROW(ParseExif(block), OutOfRangeException);
        EXPECT_EQ(ParseExifTolerantly(block).GetCount(), 2U);
    }
    // Its own directory is outside, so only that is lost.
    const Bytes farDirectory = withBad(b.Long(0x8769, {5000}));
    EXPECT_THROW(ParseExif(farDirectory), OutOfRangeException);
    EXPECT_EQ(ParseExifTolerantly(farDirectory).GetCount(), 3U);
    ExifBuilder noDirectory(false);
    noDirectory.SetFirst(0xFFFFFFFF);
    EXPECT_THROW(ParseExif(noDirectory.Get()), OutOfRangeException);
    EXPECT_EQ(ParseExifTolerantly(noDirectory.Get()).GetCount(), 0U);
}

TEST(ExifBlock, PointersInARingComeToAnEnd) {
    ExifBuilder b(true);
    // Every directory leads to every other one, and the thumbnail's is the first one once more.
    const std::uint32_t place = b.Directory({b.Short(0x0112, {1}), b.Long(0x8769, {8}), b.Long(0x8825, {8}),
                                             b.Long(0xA005, {8})});
    b.SetNext(place, 4, place);
    const ExifDataStorage exif = ParseExif(b.Get());
    EXPECT_EQ(exif.GetCount(), 20U);
    // A directory that was found keeps what it has.
    ExifBuilder two(true);
    const std::uint32_t first = two.Directory({b.Short(0x9207, {1}), b.Long(0x8769, {0})});
    const std::uint32_t second = two.Directory({b.Short(0x9207, {2})});
    two.SetField(first, 1, second);
    two.SetFirst(two.Directory({b.Long(0x8769, {first})}));
    EXPECT_EQ(Text(ParseExif(two.Get()), 0x9207), "Average");
}

/// Fields that all point at the same large value would make gigabytes of a small file.
TEST(ExifBlock, OverlappingValuesAreLimited) {
    ExifBuilder b(true);
    Fields fields;
    for (std::uint16_t i = 0; i < 4000; ++i) {
        fields.push_back({static_cast<std::uint16_t>(i + 1000), 7, 48000, b.Number(8, 4)});
    }
    b.Directory(fields);
    EXPECT_THROW(ParseExif(b.Get()), MediaCorruptedException);
    EXPECT_EQ(ParseExifTolerantly(b.Get()).GetCount(), 4U * b.Size() / 48000) << "what four times the block holds";
}

TEST(ExifBlock, EveryTruncationIsAnAnswer) {
    for (const bool little : {true, false}) {
        const CameraBlock camera(little, true, 301, 200);
        std::uint32_t lastCount = 0;
        for (std::size_t size = 0; size < camera.Block.size(); ++size) {
            const Bytes part(camera.Block.begin(), camera.Block.begin() + static_cast<std::ptrdiff_t>(size));
            const std::uint8_t none = 0;
            MemoryReader reader(size == 0 ? &none : part.data(), size);
            ExifDataStorage exif;
            try {
                exif.Initialize(&reader, true);
                // Only the thumbnail may be shorter than it says, and the zero before it is in no value.
                EXPECT_GE(size + 1, camera.Block.size() - camera.Thumbnail.size()) << size;
            } catch (const OutOfRangeException&) {
                EXPECT_EQ(exif.GetCount(), 0U);
            }
            reader.Seek(0);
            EXPECT_EQ(exif.InitializeTolerantly(&reader, true), size >= 8);
            EXPECT_GE(exif.GetCount(), lastCount) << "more bytes, more tags";
            lastCount = exif.GetCount();
            exif.SerializeForJpeg();
        }
    }
}

TEST(ExifBlock, SizeIsLimited) {
    ExifDataStorage exif;
    // "Exif", header, count, field, next offset and the value: 6 + 8 + 2 + 12 + 4 + size.
    constexpr std::size_t largest = 0xFFFD - 32;
    exif.SetTagInternal(0xC000, ExifIfd::MainImage, {ExifDataType::Undefined, Bytes(largest - 1)});
    EXPECT_EQ(exif.SerializeForJpeg().size(), 0xFFFDU - 1);
    exif.SetTagInternal(0xC000, ExifIfd::MainImage, {ExifDataType::Undefined, Bytes(largest)});
    EXPECT_EQ(ThrownText<UnexpectedException>([&] { exif.SerializeForJpeg(); }),
              "Some unexpected error occured. If you see this message, please contact the Rasterloom issue tracker. "
              "Additional info: EXIF data object is too big, its size exceeds 64K limit (that is defined by Jpeg "
              "standart for APP1 marker data).");
    for (std::uint32_t tag = 0; tag < 65535; ++tag) {
        exif.SetTagInternal(static_cast<std::uint16_t>(tag), ExifIfd::Gps, ExifTag::FromShort(1));
    }
    EXPECT_THROW(exif.SetTagInternal(65535, ExifIfd::Gps, ExifTag::FromShort(1)), UnexpectedException);
    EXPECT_THROW(exif.GetTagCount(static_cast<ExifIfd>(5)), ArgumentOutOfRangeException);
}

/// Collects what a TIFF codec is given.
struct Sink : IExifTagSink {
    void SetTag(ExifIfd ifd, std::uint16_t tag, const ExifTag&) override { Tags.emplace(ifd, tag); }
    std::set<std::pair<ExifIfd, std::uint16_t>> Tags;
};

TEST(ExifBlock, StructureIsNotCopied) {
    ExifDataStorage exif;
    for (std::uint16_t tag = 250; tag < 65000; ++tag) {
        exif.SetTagInternal(tag, ExifIfd::Exif, ExifTag::FromShort(1));
    }
    Sink sink;
    exif.SerializeForTiff(sink);
    std::vector<std::uint16_t> missing;
    for (std::uint16_t tag = 250; tag < 65000; ++tag) {
        if (!sink.Tags.contains({ExifIfd::Exif, tag})) {
            missing.push_back(tag);
        }
    }
    // Structure, and the resolution, which is 282, 283, 296 and 531.
    EXPECT_EQ(missing, (std::vector<std::uint16_t>{256, 257, 258, 259, 262, 273, 277,   278,   279,   282,  283,
                                                   284, 296, 513, 514, 530, 531, 34377, 34665, 34853, 40965}));
    exif.SetKeepMakerNote(false);
    Sink without;
    exif.SerializeForTiff(without);
    EXPECT_EQ(without.Tags.size(), sink.Tags.size() - 1);
    // A JPEG file has its resolution in the main directory; what leads elsewhere in an old file is gone.
    ExifDataStorage small;
    for (const std::uint16_t tag : std::initializer_list<std::uint16_t>{256, 282, 283, 296, 330, 531, 700}) {
        small.SetTagInternal(tag, ExifIfd::MainImage, ExifTag::FromShort(1));
    }
    std::vector<std::uint16_t> tags;
    ParseExif(WriteExif(small)).GetTagsIdentifiers(ExifIfd::MainImage, tags);
    EXPECT_EQ(tags, (std::vector<std::uint16_t>{282, 283, 296, 531, 700}));
}

/// Where a folder of them is at hand.
TEST(ExifBlock, RealCamerasRoundTrip) {
    ForEachCorpusFile({""}, 10, [](const std::string& name, const Bytes& file) {
        const Bytes block = JoinSegments(file, 0xE1, std::string_view("Exif\0\0", 6));
        const bool isPicture = name.ends_with(".jpg") && !block.empty();
        if (isPicture) {
            ExpectRoundTrip(block);
        }
        return isPicture;
    });
}

} // namespace
} // namespace ImagingFramework
