#include "metadata/Iptc/IptcDataStorage.h"

#include "JpegSegments.h"
#include "Throws.h"
#include "metadata/AdobeResources/AdobeResources.h"
#include "metadata/Streams/MemoryReader.h"

namespace ImagingFramework {
namespace {

using Bytes = std::vector<std::uint8_t>;
using namespace std::string_view_literals;
constexpr std::uint16_t Keyword = 0x219;
constexpr std::uint16_t City = 0x25A;
constexpr std::uint16_t CharacterSet = 0x15A;

/// Data sets in this order.
Bytes Block(std::initializer_list<std::pair<std::uint16_t, std::string_view>> datasets) {
    Bytes block;
    for (const auto& [key, data] : datasets) {
        for (const std::size_t byte :
             {std::size_t{0x1C}, std::size_t{key} >> 8, std::size_t{key}, data.size() >> 8, data.size()}) {
            block.push_back(static_cast<std::uint8_t>(byte));
        }
        block.insert(block.end(), data.begin(), data.end());
    }
    return block;
}

/// As a picture desk writes it: version, city, two keywords, a data set without data, one that has no name.
const Bytes Typical = Block({{0x200, "\0\4"sv},
                             {Keyword, "lake"},
                             {Keyword, "alps"},
                             {0x228, ""},
                             {City, "Z\xFCrich"},
                             {0x2BB, "\xFF\xFE\x01"}});

void Read(IptcData& data, const Bytes& block) {
    const std::uint8_t none = 0;
    MemoryReader reader(block.empty() ? &none : block.data(), block.size());
    data.Initialize(&reader);
}

Bytes Binary(const IptcData& data) {
    Bytes bytes{1, 2, 3};
    const std::uint64_t size = data.GetIptcAsBinary(bytes);
    EXPECT_EQ(size, bytes.size());
    return bytes;
}

template <class T>
T Take(DataItem item) {
    const T value = static_cast<T&>(item);
    item.FreePointerValue();
    return value;
}

std::string Text(const IptcDataStorage& storage, std::uint32_t key) {
    DataItem item;
    return storage.GetItem(key, item) ? Take<std::string>(item) : "(none)";
}

std::vector<std::string> Texts(const IptcDataStorage& storage, std::uint32_t key) {
    std::vector<DataItem> items;
    storage.GetItemArray(key, items);
    std::vector<std::string> texts;
    for (const DataItem& item : items) {
        texts.push_back(Take<std::string>(item));
    }
    return texts;
}

DataItem String(const char* text) {
    return DataItem(new std::string(text));
}

TEST(IptcDataStorage, ReadsAndWritesABlock) {
    IptcDataStorage storage;
    Read(storage, Typical);
    EXPECT_EQ(Binary(storage), Typical);
    EXPECT_EQ(storage.GetDatasetCount(), 6U);
    EXPECT_EQ(storage.GetTagsIdentifiers(), (std::vector<std::uint16_t>{0x200, 0x219, 0x228, 0x25A, 0x2BB}));
    EXPECT_EQ(Texts(storage, Keyword), (std::vector<std::string>{"lake", "alps"}));
    EXPECT_EQ(Text(storage, Keyword), "lake");
    EXPECT_EQ(Text(storage, City), "Zürich");
    EXPECT_EQ(Text(storage, 0x228), "") << "no data is an empty text";
    DataItem item;
    ASSERT_TRUE(storage.GetItem(0x2BB, item));
    EXPECT_EQ(Take<Bytes>(item), (Bytes{0xFF, 0xFE, 1})) << "a key without a name gives bytes";
    std::string text;
    EXPECT_TRUE(storage.GetItemString(Keyword, text));
    EXPECT_EQ(text, "lake; alps");
    EXPECT_TRUE(storage.GetItemString(0x2BB, text));
    EXPECT_EQ(text, "");
    EXPECT_FALSE(storage.GetItemString(0x250, text));
    EXPECT_FALSE(storage.GetItem(0x10219, item)) << "keys are not cut to 16 bits";
    Read(storage, {});
    EXPECT_EQ(Binary(storage), Bytes()) << "a block replaces the contents";
}

TEST(IptcDataStorage, DataSetsAreSortedAndEqualKeysKeepTheirOrder) {
    IptcDataStorage storage;
    Read(storage, Block({{City, "b"}, {Keyword, "2"}, {City, "a"}, {Keyword, "1"}, {0x100, "v"}}));
    EXPECT_EQ(Binary(storage), Block({{0x100, "v"}, {Keyword, "2"}, {Keyword, "1"}, {City, "b"}, {City, "a"}}));
    std::string third = "0";
    EXPECT_TRUE(storage.AddDataset(Keyword, DataItem(&third)));
    EXPECT_EQ(Texts(storage, Keyword), (std::vector<std::string>{"2", "1", "0"}));
    third.clear();
    EXPECT_FALSE(storage.AddDataset(0x250, DataItem(&third)));
    EXPECT_FALSE(storage.Contains(0x250));
}

TEST(IptcDataStorage, SetsValues) {
    IptcDataStorage storage;
    EXPECT_TRUE(storage.SetItemArray(Keyword, {String("one"), String("two")}));
    EXPECT_TRUE(storage.SetItem(City, String("Genève €")));
    EXPECT_TRUE(storage.SetItem(0x2BB, DataItem(new Bytes{0, 1})));
    EXPECT_EQ(Binary(storage),
              Block({{Keyword, "one"}, {Keyword, "two"}, {City, "Gen\xE8ve \x80"}, {0x2BB, "\0\1"sv}}));
    EXPECT_FALSE(storage.SetItemArray(Keyword, {String("three"), String(""), String("four")}));
    EXPECT_EQ(Texts(storage, Keyword), std::vector<std::string>{"three"}) << "stops at the empty one";
    EXPECT_FALSE(storage.SetItem(Keyword, String("")));
    EXPECT_FALSE(storage.Contains(Keyword));
    EXPECT_FALSE(storage.SetItem(0x2BB, DataItem(new Bytes)));
    EXPECT_EQ(storage.GetCount(), 1U);
    EXPECT_TRUE(storage.SetItem(City, String("漢x")));
    EXPECT_EQ(Text(storage, City), "?x");
    ThrownText<InvalidTypeCastException>([&] { storage.SetItem(City, DataItem(std::int32_t{1})); });
    ThrownText<ArgumentOutOfRangeException>([&] { storage.SetItem(0x1025A, DataItem(std::int32_t{1})); });
    ThrownText<ArgumentOutOfRangeException>([&] { storage.SetItemArray(0x1025A, {}); });
    EXPECT_EQ(Text(storage, City), "?x") << "a failure changes nothing";
    EXPECT_FALSE(storage.Remove(0x1025A));
    EXPECT_TRUE(storage.Remove(City));
    EXPECT_EQ(storage.GetCount(), 0U);
}

TEST(IptcDataStorage, TextsFollowTheDeclaredEncoding) {
    const Bytes block = Block({{CharacterSet, "\x1B%G"}, {City, "Köln"}, {0x278, "broken \xE9"}});
    IptcDataStorage storage;
    Read(storage, block);
    EXPECT_EQ(storage.GetEncoding(), IptcEncoding::Utf8);
    EXPECT_EQ(Text(storage, City), "Köln");
    EXPECT_EQ(Text(storage, 0x278), "broken é") << "bytes that cannot be what the block declares";
    EXPECT_EQ(Binary(storage), block);
    storage.SetItem(Keyword, String("漢"));
    EXPECT_EQ(Text(storage, Keyword), "漢");
    storage.Remove(CharacterSet);
    EXPECT_EQ(Text(storage, City), "Köln");
    EXPECT_EQ(Text(storage, Keyword), "?");
    const Bytes ansi = Block({{Keyword, "?"}, {City, "K\xF6ln"}, {0x278, "broken \xE9"}});
    EXPECT_EQ(Binary(storage), ansi);
    storage.SetItem(CharacterSet, DataItem(new Bytes{0x1B, '%', 'G'}));
    EXPECT_EQ(Text(storage, 0x278), "broken é");
    EXPECT_EQ(Binary(storage).size(), ansi.size() + 2 + 8);
}

TEST(IptcDataStorage, SizesAndDamage) {
    IptcDataStorage storage;
    IptcDataStorage copy;
    storage.SetItem(City, DataItem(new Bytes(32767, 'x')));
    Read(copy, Binary(storage));
    EXPECT_EQ(Text(copy, City).size(), 32767U);
    storage.SetItem(City, DataItem(new Bytes(32768, 'x')));
    ExpectThrown<UnexpectedException>("Large IPTC tags (> 0x7FFF bytes long) are not supported by now.",
                                      [&] { Binary(storage); });
    Bytes block = Typical;
    block.insert(block.end(), {0x1C, 2, 0x78, 0x80, 0x04, 0, 0, 0, 1, 'x'});
    Read(storage, block);
    EXPECT_EQ(Binary(storage), Typical) << "the extended form ends the block";
    block = Typical;
    block.insert(block.end(), {0, 0x1C, 2, 0x78, 0, 1, 'x'});
    Read(storage, block);
    EXPECT_EQ(Binary(storage), Typical) << "rubbish ends the block";
    EXPECT_THROW(storage.Initialize(nullptr), ArgumentNullPointerException);
    const Bytes padded = Block({{City, "Bern\0\0"sv}, {0x278, "\0\0"sv}});
    Read(storage, padded);
    EXPECT_EQ(Text(storage, City), "Bern");
    DataItem item;
    ASSERT_TRUE(storage.GetItem(0x278, item));
    EXPECT_EQ(Take<Bytes>(item), Bytes(2)) << "data that gives no text";
    EXPECT_EQ(Binary(storage), padded);
}

/// What is cut off between two data sets, or before the size of one, is a shorter block; a cut inside is a failure that
/// keeps the data sets before it.
TEST(IptcDataStorage, TruncationAtEveryByte) {
    for (std::size_t size = 0; size < Typical.size(); ++size) {
        IptcDataStorage storage;
        try {
            Read(storage, Bytes(Typical.begin(), Typical.begin() + static_cast<std::ptrdiff_t>(size)));
        } catch (const OutOfRangeException&) {
        }
        const Bytes kept = Binary(storage);
        EXPECT_LE(kept.size(), size);
        EXPECT_TRUE(std::equal(kept.begin(), kept.end(), Typical.begin())) << size;
    }
}

TEST(IptcDataStorage, NamesAndDescriptions) {
    const IptcDataStorage storage;
    std::string text;
    std::uint32_t key = 0;
    EXPECT_TRUE(storage.KeyToName(Keyword, text));
    EXPECT_EQ(text, "IptcKeyword");
    EXPECT_TRUE(storage.NameToKey("iPTCbylinetitle", key));
    EXPECT_EQ(key, 0x255U);
    EXPECT_TRUE(storage.GetKeyDescription(0x27A, text));
    EXPECT_EQ(text, "Writer/Editor");
    EXPECT_FALSE(storage.KeyToName(0x200, text) || storage.KeyToName(0x10219, text) || storage.NameToKey("Iptc", key));
    EXPECT_FALSE(storage.GetKeyDescription(0x200, text));
}

/// The data sets of a sound block in the order of their keys.
Bytes Sorted(const Bytes& block) {
    std::vector<Bytes> datasets;
    for (std::size_t at = 0; at + 5 <= block.size() && block[at] == 0x1C && block[at + 3] < 0x80;) {
        const std::size_t size = 5 + (static_cast<std::size_t>(block[at + 3]) << 8) + block[at + 4];
        datasets.emplace_back(block.begin() + static_cast<std::ptrdiff_t>(at),
                              block.begin() + static_cast<std::ptrdiff_t>(at + size));
        at += size;
    }
    std::ranges::stable_sort(datasets, {}, [](const Bytes& dataset) { return dataset[1] << 8 | dataset[2]; });
    Bytes sorted;
    for (const Bytes& dataset : datasets) {
        sorted.insert(sorted.end(), dataset.begin(), dataset.end());
    }
    return sorted;
}

/// Blocks of cameras and editors; some of these do not sort their data sets.
TEST(IptcDataStorage, RealBlocksComeOutAsTheyWentIn) {
    ForEachCorpusFile({"jpeg"}, 3, [](const std::string&, const Bytes& file) {
        const Bytes resources = ResourcesOfJpeg(file);
        AdobeResources blocks;
        DataItem item;
        try {
            blocks.Initialize(resources.data(), resources.size());
        } catch (const Exception&) {
            return false;
        }
        if (!blocks.GetItem(AdobeResources::IptcId, item)) {
            return false;
        }
        const Bytes block = Take<AdobeResourceBlock>(item).GetData();
        IptcDataStorage storage;
        Read(storage, block);
        EXPECT_EQ(Binary(storage), Sorted(block));
        return true;
    });
}

} // namespace
} // namespace ImagingFramework
