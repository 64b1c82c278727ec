#include "metadata/Exif/ExifDataStorage.h"

#include "ExifBlocks.h"
#include "Throws.h"
#include "metadata/Exif/ExifText.h"

#include <gtest/gtest.h>
#include <set>
#include <tuple>

namespace ImagingFramework {
namespace {

using Bytes = std::vector<std::uint8_t>;
using namespace std::string_literals;

bool SetText(ExifDataStorage& exif, std::uint32_t key, const std::string& text) {
    return exif.SetItem(key, DataItem(new std::string(text)));
}
bool SetBytes(ExifDataStorage& exif, std::uint32_t key, const Bytes& bytes) {
    return exif.SetItem(key, DataItem(new Bytes(bytes)));
}
bool SetNumbers(ExifDataStorage& exif, std::uint32_t key, const std::vector<std::uint32_t>& numbers) {
    std::vector<DataItem> items;
    for (const std::uint32_t number : numbers) {
        items.emplace_back(number);
    }
    return exif.SetItemArray(key, items);
}
std::string GetText(const ExifDataStorage& exif, std::uint32_t key) {
    DataItem item;
    const std::string text = exif.GetItem(key, item) ? static_cast<std::string&>(item) : "-";
    item.FreePointerValue();
    return text;
}
Bytes Stored(const ExifDataStorage& exif, std::uint32_t key) {
    const ExifTagPlace place = ExifKey::TranslateKey(key);
    return exif.GetTag(place.Tag, place.Ifd)->Data;
}

TEST(ExifKey, BareAndPseudo) {
    const auto translate = [](std::uint32_t key) {
        const ExifTagPlace place = ExifKey::TranslateKey(key);
        return std::pair(place.Tag, static_cast<std::uint32_t>(place.Ifd));
    };
    using Place = std::pair<std::uint16_t, std::uint32_t>;
    EXPECT_EQ(translate(0x010F), Place(0x010F, 0));
    EXPECT_EQ(translate(0x829A), Place(0x829A, 2));
    EXPECT_EQ(translate(0), Place(0, 3));
    EXPECT_EQ(translate(1), Place(1, 4));
    EXPECT_EQ(translate(0x1E), Place(0x1E, 3));
    EXPECT_EQ(translate(0xFFFF), Place(0xFFFF, 0));
    EXPECT_EQ(translate(0xF0010112), Place(0x0112, 1));
    EXPECT_EQ(translate(0xF004FFFF), Place(0xFFFF, 4));
    ExifDataStorage exif;
    DataItem value;
    std::string text;
    for (const std::uint32_t key : {0x10000U, 0xF0050000U, 0xE0000100U, 0xF00FF00EU, 0xFFFFFFFFU}) {
        EXPECT_EQ(ThrownText<ArgumentException>([&] { ExifKey::TranslateKey(key); }),
                  "Argument has an unappropriate value (key).");
        EXPECT_THROW(exif.GetItem(key, value), ArgumentException);
        EXPECT_THROW(exif.SetEntry(key, 1, &value), ArgumentException);
        EXPECT_THROW(exif.Remove(key), ArgumentException);
        EXPECT_FALSE(exif.Contains(key));
        EXPECT_FALSE(exif.KeyToName(key, text));
    }
    EXPECT_THROW(ExifKey::TranslateKey(ExifKey::Thumbnail), ArgumentException);
}

TEST(ExifKey, NamesGoBothWays) {
    ExifDataStorage exif;
    std::string name;
    std::uint32_t key = 0;
    const std::pair<const char*, std::uint32_t> examples[] = {{"ExifThumbnailWidth", 0xF0010100},
                                                              {"ExifThumbnailJPEGInterchangeFormat", 0xF0010201},
                                                              {"ExifGpsLatitudeRef", 0xF0030001},
                                                              {"ExifInteroperabilityIndex", 0xF0040001},
                                                              {"ExifThumbnail", 0xF00FF00F}};
    for (const auto& [expected, expectedKey] : examples) {
        EXPECT_TRUE(exif.KeyToName(expectedKey, name) && name == expected) << name;
        EXPECT_TRUE(exif.NameToKey(expected, key) && key == expectedKey) << expected;
    }
    EXPECT_TRUE(exif.KeyToName(0x829A, name));
    EXPECT_EQ(name, "ExifExposureTime");
    EXPECT_TRUE(exif.NameToKey("EXIFexposureTIME", key));
    EXPECT_EQ(key, 0xF002829AU);
    EXPECT_FALSE(exif.NameToKey("ExposureTime", key));
    EXPECT_FALSE(exif.KeyToName(0xF002FDE8, name));
    std::set<std::string> names;
    for (std::uint32_t ifd = 0; ifd < ExifIfdCount; ++ifd) {
        for (const ExifTagInfo& info : GetExifTagTable(static_cast<ExifIfd>(ifd))) {
            const std::uint32_t made = ExifKey::MakeKey({info.Tag, static_cast<ExifIfd>(ifd)});
            ASSERT_TRUE(exif.KeyToName(made, name));
            EXPECT_TRUE(names.insert(name).second) << name;
            EXPECT_TRUE(exif.NameToKey(name, key) && key == made) << name;
            EXPECT_TRUE(exif.GetKeyDescription(made, name) && !name.empty());
        }
    }
    EXPECT_EQ(names.size(), 32U + 32 + 56 + 31 + 1);
}

TEST(ExifDataStorage, TextsAndBytesFollowTheTable) {
    ExifDataStorage exif;
    const std::tuple<std::uint32_t, const char*, std::string> texts[] = {
        {0x0132, "2004:02:29 23:59:58.12345", "2004:02:29 23:59:58\0"s}, // 19 characters and the NUL
        {0x9003, "2004", "2004" + std::string(16, '\0')},
        {0x010F, "Zeiß", "Zeiß\0"s},                      // UTF-8 and its NUL
        {0xA004, "abcdefghijkß.wav", "abcdefghijk\0\0"s}, // no half of a character
        {0xF0030001, "North", "N\0"s},
        {0x0131, "", "\0"s},
    };
    for (const auto& [key, text, stored] : texts) {
        EXPECT_TRUE(SetText(exif, key, text));
        EXPECT_EQ(Stored(exif, key), Bytes(stored.begin(), stored.end())) << text;
        EXPECT_EQ(GetText(exif, key), stored.c_str());
    }

    EXPECT_TRUE(SetBytes(exif, 0x9000, Bytes{'0', '2'}));
    EXPECT_EQ(Stored(exif, 0x9000), (Bytes{'0', '2', 0, 0}));
    EXPECT_TRUE(SetBytes(exif, 0, Bytes{2, 3, 0, 0, 9}));
    EXPECT_EQ(Stored(exif, 0), (Bytes{2, 3, 0, 0}));
    EXPECT_TRUE(SetBytes(exif, 0x927C, Bytes(100000, 7)));
    EXPECT_EQ(Stored(exif, 0x927C).size(), 100000U);
    EXPECT_TRUE(SetBytes(exif, 0x9286, Bytes{}));
    EXPECT_EQ(GetText(exif, 0x9999), "-");

    // The wrong kind of value stays the caller's, and what was there stays.
    std::string mine = "mine";
    EXPECT_THROW(exif.SetItem(0x9000, DataItem(&mine)), InvalidTypeCastException);
    EXPECT_THROW(exif.SetItem(0x0112, DataItem(&mine)), InvalidTypeCastException);
    EXPECT_THROW(exif.SetItem(0x010F, DataItem(std::uint32_t{5})), InvalidTypeCastException);
    EXPECT_EQ(GetText(exif, 0x010F), "Zeiß");
    EXPECT_FALSE(SetText(exif, 0xF002FDE8, "not in the table"));
    EXPECT_FALSE(SetText(exif, 0xF0020132, "a tag of another directory"));
    EXPECT_EQ(exif.GetCount(), 10U);
}

TEST(ExifDataStorage, NumbersFollowTheTable) {
    ExifDataStorage exif;
    EXPECT_TRUE(SetNumbers(exif, 0x0112, {6}));
    EXPECT_TRUE(SetNumbers(exif, 0x8827, {100, 200, 65535}));
    EXPECT_TRUE(SetNumbers(exif, 0xA002, {4000000000U}));
    EXPECT_TRUE(SetNumbers(exif, 0xA214, {3, 4}));
    EXPECT_TRUE(exif.SetItem(0x829A, DataItem(UnsignedRational{1, 4000000000U})));
    EXPECT_TRUE(exif.SetItem(0x9204, DataItem(Rational{-1, 3})));
    EXPECT_TRUE(exif.SetItem(0x0115, DataItem(std::int32_t{3})));
    std::vector<DataItem> values;
    EXPECT_TRUE(exif.GetItemArray(0x8827, values));
    ASSERT_EQ(values.size(), 3U);
    EXPECT_EQ(static_cast<std::uint32_t>(values[2]), 65535U);
    EXPECT_EQ(values[2].GetType(), DataType::UInt32);
    EXPECT_FALSE(exif.GetItemArray(0x9207, values));
    EXPECT_EQ(values.size(), 3U);
    DataItem value(std::int32_t{1});
    EXPECT_TRUE(exif.GetItem(0x9204, value));
    EXPECT_EQ(static_cast<Rational>(value), (Rational{-1, 3}));
    EXPECT_TRUE(exif.GetItem(0x829A, value));
    EXPECT_EQ(static_cast<UnsignedRational>(value), (UnsignedRational{1, 4000000000U}));
    EXPECT_FALSE(exif.GetItem(0x9207, value));
    EXPECT_TRUE(value.IsEmpty());
    exif.SetTagInternal(0xEA1C, ExifIfd::MainImage, {ExifDataType::SignedLong, {0xFE, 0xFF, 0xFF, 0xFF}});
    EXPECT_TRUE(exif.GetItem(0xEA1C, value));
    EXPECT_EQ(static_cast<std::int32_t>(value), -2);

    for (const auto& [key, count] : {std::pair(0xA214U, 1U), std::pair(0xA214U, 3U), std::pair(0x0112U, 2U),
                                     std::pair(0x8827U, 0U), std::pair(0x012DU, 767U)}) {
        EXPECT_EQ(ThrownText<ArgumentOutOfRangeException>(
                      [&, key = key, count = count] { SetNumbers(exif, key, std::vector<std::uint32_t>(count, 1)); }),
                  "Argument 'number of values' is out of range (Number of values is incorrect for specified EXIF "
                  "tag.).");
    }
    EXPECT_TRUE(SetNumbers(exif, 0x012D, std::vector<std::uint32_t>(768, 1)));
    EXPECT_THROW(SetNumbers(exif, 0x0112, {65536}), ArgumentOutOfRangeException);
    EXPECT_THROW(exif.SetItem(0x0112, DataItem(std::int32_t{-1})), ArgumentOutOfRangeException);
    EXPECT_EQ(exif.GetTag(0x0112, ExifIfd::MainImage)->GetNumber(), 6U);
}

TEST(ExifDataStorage, KeysAreWalkedByDirectory) {
    ExifDataStorage exif;
    SetText(exif, 1, "R98");
    SetText(exif, 0x0110, "X");
    for (const std::uint32_t key : {0x8827U, 0x8822U, 0xF0010112U}) {
        SetNumbers(exif, key, {1});
    }
    std::vector<std::uint32_t> keys;
    std::uint32_t key = 0;
    while (exif.GetKey(static_cast<std::uint32_t>(keys.size()), key)) {
        keys.push_back(key);
    }
    EXPECT_EQ(keys, (std::vector<std::uint32_t>{0xF0000110, 0xF0010112, 0xF0028822, 0xF0028827, 0xF0040001}));
    EXPECT_EQ(exif.GetCount(), 5U);
    ExifDataStorage copy = exif;
    EXPECT_TRUE(copy.Remove(0x8822));
    EXPECT_FALSE(copy.Contains(0xF0028822));
    EXPECT_THROW(copy.Remove(0x8822), ArgumentException);
    copy.Clear();
    EXPECT_EQ(copy.GetCount(), 0U);
    EXPECT_EQ(exif.GetCount(), 5U);
}

TEST(ExifDataStorage, BuiltFromNothing) {
    ExifDataStorage exif;
    EXPECT_TRUE(exif.SerializeForJpeg().empty());
    // Only a position: the other directories are found through the first one, which has nothing else.
    EXPECT_TRUE(SetText(exif, 1, "R98"));
    EXPECT_TRUE(SetBytes(exif, 5, Bytes{1}));
    ExifBuilder b(true);
    const std::uint32_t image = b.Directory({b.Long(0x8769, {0}), b.Long(0x8825, {0})});
    const std::uint32_t exifPlace = b.Directory({b.Long(0xA005, {0})});
    const std::uint32_t gps = b.Directory({b.Raw(5, 1, {1})});
    const std::uint32_t interoperability = b.Directory({b.Ascii(1, "R98")});
    b.SetField(image, 0, exifPlace);
    b.SetField(image, 1, gps);
    b.SetField(exifPlace, 0, interoperability);
    EXPECT_EQ(WriteExif(exif), b.Get());
    exif.SetLittleEndian(false);
    EXPECT_EQ(exif.SerializeForJpeg()[6], 'M');
}

TEST(ExifText, OfValues) {
    const auto text = [](std::uint32_t key, ExifTag tag, bool little = true) {
        ExifDataStorage exif;
        exif.SetLittleEndian(little);
        const ExifTagPlace place = ExifKey::TranslateKey(key);
        exif.SetTagInternal(place.Tag, place.Ifd, std::move(tag));
        std::string result;
        exif.GetItemString(key, result);
        return result;
    };
    const auto make = [](ExifDataType type) {
        return [=](const std::string& value) { return ExifTag{type, Bytes(value.begin(), value.end())}; };
    };
    const auto ascii = make(ExifDataType::Ascii);
    const auto undefined = make(ExifDataType::Undefined);
    EXPECT_EQ(text(0x8298, ascii("One\0Two\0\0"s)), "One; Two");
    EXPECT_EQ(text(0x010F, ascii("Zei\xDF \x80\0"s)), "Zeiß €") << "windows-1252";
    EXPECT_EQ(text(0x010F, ascii("Zeiß\0"s)), "Zeiß");
    EXPECT_EQ(text(0x0106, ExifTag::FromShort(5)), "Cmyk");
    EXPECT_EQ(text(0x0106, ExifTag::FromShort(8)), "CIE Lab");
    EXPECT_EQ(text(0xF0010106, ExifTag::FromShort(6)), "YCbCr");
    EXPECT_EQ(text(0x9208, ExifTag::FromShort(20)), "D55");
    EXPECT_EQ(text(0x9208, ExifTag::FromShort(21)), "D65");
    EXPECT_EQ(text(0x9208, ExifTag::FromShort(22)), "D75");
    EXPECT_EQ(text(0x9208, ExifTag::FromShort(99)), "99");
    EXPECT_EQ(text(0x9209, ExifTag::FromShort(0)), "Flash did not fire");
    EXPECT_EQ(text(0x9209, ExifTag::FromShort(0x0F)), "Flash fired, return light detected, compulsory firing");
    EXPECT_EQ(text(0x0212, {ExifDataType::Short, {2, 0, 1, 0}}), "YCbCr4:2:2");
    EXPECT_EQ(text(0x0212, {ExifDataType::Short, {1, 0, 1, 0}}), "1, 1");
    EXPECT_EQ(text(0xA000, undefined("0100")), "1.00");
    EXPECT_EQ(text(0x9000, undefined("02x0")), "02x0");
    EXPECT_EQ(text(0x9286, undefined("ASCII\0\0\0Hello  "s)), "Hello");
    EXPECT_EQ(text(0x9286, undefined("\0\0\0\0\0\0\0\0     "s)), "");
    EXPECT_EQ(text(0x9286, undefined("UNICODE\0H\0\xDF\0\x3D\xD8\x00\xDE"s)), "Hß\U0001F600");
    EXPECT_EQ(text(0x9286, undefined("UNICODE\0\0H\0\xDF"s), false), "Hß");
    EXPECT_EQ(text(0x9286, undefined("UNICODE\0\xFE\xFF\0H"s)), "H") << "a mark says the order";
    EXPECT_EQ(text(0x9286, undefined("UNICODE\0\x3D\xD8H"s)), "");
    EXPECT_EQ(text(0x9286, undefined("bare")), "bare");
    EXPECT_EQ(text(0x001B, undefined("ASCII\0\0\0GPS"s)), "GPS");
    EXPECT_EQ(text(0x927C, undefined(std::string(1000, '\1'))), "(1000 bytes)");
    EXPECT_EQ(text(0xA302, undefined("\1\xAB"s)), "01 AB");
    EXPECT_EQ(text(0x9204, {ExifDataType::SignedRational, Bytes(8, 0xFF)}), "-1/-1");
    EXPECT_EQ(text(0x829A, {ExifDataType::Rational, Bytes(8, 0xFF)}), "4294967295/4294967295");
    EXPECT_EQ(text(0x0002, {ExifDataType::Rational, Bytes(16, 0)}), "0/0, 0/0") << "no three numbers";
}

} // namespace
} // namespace ImagingFramework
