#include "metadata/AdobeResources/AdobeResources.h"

#include "JpegSegments.h"
#include "Throws.h"

namespace ImagingFramework {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// Four blocks by hand: an empty name takes two bytes, a name of three bytes fills four, one of four bytes is padded to
// six; odd data has a pad byte.
const Bytes Plain = {'8', 'B', 'I', 'M', 0x03, 0xED, 0, 0, 0, 0, 0, 2, 7, 8};
const Bytes OddName = {'8', 'B', 'I', 'M', 0x04, 0x08, 3, 'a', 0xE4, 'c', 0, 0, 0, 3, 1, 2, 3, 0};
const Bytes EvenName = {'8', 'B', 'I', 'M', 0x04, 0x08, 4, 'n', 'a', 'm', 'e', 0, 0, 0, 0, 1, 9, 0};
const Bytes Empty = {'8', 'B', 'I', 'M', 0x27, 0x10, 0, 0, 0, 0, 0, 0};
const Bytes All = Plain + OddName + EvenName + Empty;

AdobeResources Parse(const Bytes& bytes) {
    AdobeResources resources;
    resources.Initialize(bytes.data(), bytes.size());
    return resources;
}

Bytes Saved(const AdobeResources& resources) {
    Bytes bytes{1};
    resources.Save(bytes);
    return bytes;
}

AdobeResourceBlock Take(const AdobeResources& resources, std::uint32_t key) {
    DataItem item;
    EXPECT_TRUE(resources.GetItem(key, item));
    const AdobeResourceBlock block = static_cast<AdobeResourceBlock&>(item);
    item.FreePointerValue();
    return block;
}

DataItem Block(const char* name, Bytes data) {
    return DataItem(new AdobeResourceBlock(0, name, std::move(data)));
}

TEST(AdobeResources, ReadsAndWritesBlocks) {
    const AdobeResources resources = Parse(All);
    EXPECT_EQ(Saved(resources), All);
    ASSERT_EQ(resources.GetCount(), 4U);
    EXPECT_EQ(resources.GetItemIdByIndex(1), 0x408);
    EXPECT_EQ(resources.GetItemIdByIndex(2), 0x408) << "two blocks of one number stay two";
    EXPECT_EQ(resources.GetItemDataByIndex(1), (Bytes{1, 2, 3}));
    EXPECT_EQ(resources.GetItemDataByIndex(3), Bytes());
    EXPECT_EQ(Take(resources, 0x408).GetName(), "aäc");
    EXPECT_EQ(Take(resources, 0x3ED).GetData(), (Bytes{7, 8}));
    std::vector<DataItem> items;
    EXPECT_TRUE(resources.GetItemArray(0x408, items));
    EXPECT_FALSE(resources.GetItemArray(0x409, items));
    ASSERT_EQ(items.size(), 1U);
    items[0].FreePointerValue();
    const Bytes nulInName = {'8', 'B', 'I', 'M', 0, 1, 3, 'a', 0, 'c', 0, 0, 0, 0};
    EXPECT_EQ(Take(Parse(nulInName), 1).GetName(), "a");
    AdobeResources more = resources;
    more.Initialize(Plain.data(), Plain.size());
    EXPECT_EQ(Saved(more), All + Plain) << "appends";
    more.Load(Empty);
    EXPECT_EQ(Saved(more), Empty) << "replaces";
    EXPECT_EQ(Saved(AdobeResources()), Bytes());
}

TEST(AdobeResources, SkipsRubbishAndEndsAtDamage) {
    EXPECT_EQ(Saved(Parse(Plain + Bytes{'8', 'B', 'I', 'x', 0} + OddName + Bytes{0, 0, '8', 'B', 'I'})),
              Plain + OddName);
    Bytes unpadded = OddName;
    unpadded.pop_back();
    EXPECT_EQ(Saved(Parse(unpadded + Plain)), OddName + Plain);
    for (const std::size_t sizeByte : {8U, 9U, 10U, 11U}) {
        Bytes damaged = Plain;
        damaged[sizeByte] = 0xFF;
        EXPECT_EQ(Saved(Parse(OddName + damaged + Plain)), OddName) << sizeByte;
        EXPECT_EQ(Parse(damaged).GetCount(), 0U);
    }
    Bytes longName = EvenName;
    longName[6] = 255;
    EXPECT_EQ(Saved(Parse(Plain + longName)), Plain);
}

TEST(AdobeResources, TruncationAtEveryByte) {
    const std::size_t ends[] = {Plain.size(), (Plain + OddName).size() - 1, (Plain + OddName + EvenName).size() - 1,
                                All.size()};
    for (std::size_t size = 4; size < All.size(); ++size) {
        const Bytes part(All.begin(), All.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(Parse(part).GetCount(), std::ranges::count_if(ends, [&](std::size_t end) { return end <= size; }))
            << size;
    }
}

TEST(AdobeResources, FailuresByName) {
    AdobeResources resources;
    const Bytes later = Bytes{0} + Plain;
    ExpectThrown<ArgumentNullPointerException>("pData", [&] { resources.Initialize(nullptr, 9); });
    ExpectThrown<ArgumentException>("uintSize", [&] { resources.Initialize(All.data(), 0); });
    ExpectThrown<ArgumentException>("objSrcBlock", [&] { resources.Load({}); });
    ExpectThrown<ArgumentOutOfRangeException>("'uintDataSize' is out of range (The value of the argument is too small. "
                                              "Size of the buffer must be at least above signature length.",
                                              [&] { resources.Initialize(All.data(), 3); });
    ExpectThrown<ArgumentException>("pData). (Cannot find signature in specified buffer.",
                                    [&] { resources.Initialize(later.data(), later.size()); });
    ExpectThrown<ArgumentOutOfRangeException>("uintIndex", [&] { resources.GetItemDataByIndex(0); });
    ExpectThrown<ArgumentOutOfRangeException>("uintIndex", [&] { resources.SetItemDataByIndex(0, {}); });
    ExpectThrown<ArgumentOutOfRangeException>("uintIndex", [&] { resources.SetItemNameByIndex(0, ""); });
    ThrownText<ArgumentOutOfRangeException>([&] { resources.SetItem(0x10000, {}); });
    ThrownText<InvalidTypeCastException>([&] { resources.SetItem(1, DataItem(std::int32_t{1})); });
    EXPECT_EQ(resources.GetCount(), 0U);
}

TEST(AdobeResources, SetsValues) {
    AdobeResources resources = Parse(All);
    const AdobeResources before = resources;
    EXPECT_TRUE(resources.SetItem(0x408, Block("x", {5})));
    EXPECT_TRUE(resources.SetItem(0x404, Block("", {})));
    const Bytes changed = {'8', 'B', 'I', 'M', 0x04, 0x08, 1, 'x', 0, 0, 0, 1, 5, 0};
    const Bytes added = {'8', 'B', 'I', 'M', 0x04, 0x04, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(Saved(resources), Plain + changed + EvenName + Empty + added) << "the first of the two";
    EXPECT_TRUE(resources.SetItemArray(0x404, {Block("", {1}), Block("", {2})}));
    EXPECT_EQ(Take(resources, 0x404).GetData(), Bytes{2});
    resources.SetItemDataByIndex(0, {1, 1});
    resources.SetItemNameByIndex(0, std::string(300, 'n'));
    EXPECT_EQ(Take(resources, 0x3ED).GetName().size(), 255U);
    EXPECT_EQ(Parse(Saved(resources)).GetItemDataByIndex(0), (Bytes{1, 1}));
    resources.SetItemNameByIndex(0, "漢é");
    EXPECT_EQ(Take(Parse(Saved(resources)), 0x3ED).GetName(), "?é");
    EXPECT_EQ(Saved(before), All) << "a copy stands alone";
    EXPECT_TRUE(resources.Remove(0x408));
    EXPECT_FALSE(resources.Contains(0x408));
    EXPECT_EQ(resources.GetCount(), 3U);
    EXPECT_FALSE(resources.Remove(0x408));
    std::string text;
    std::uint32_t key = 0;
    EXPECT_FALSE(resources.GetItemString(0x404, text) || resources.GetKeyDescription(0x404, text) ||
                 resources.KeyToName(0x404, text) || resources.NameToKey("x", key) || resources.GetKey(3, key));
}

TEST(AdobeResources, RealBlocksComeOutAsTheyWentIn) {
    ForEachCorpusFile({"jpeg"}, 3, [](const std::string& name, const Bytes& file) {
        const Bytes block = ResourcesOfJpeg(file);
        if (block.empty() || name.starts_with("made-8bim")) {
            return false; // the made ones are damaged
        }
        EXPECT_EQ(Saved(Parse(block)), block);
        return true;
    });
}

} // namespace
} // namespace ImagingFramework
