#include "Throws.h"
#include "metadata/DataItem.h"
#include "metadata/IDictionary.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/MetadataDictionary.h>
#include <Corvane/Rasterloom/Codecs/MetadataEnumerator.h>
#include <Corvane/Rasterloom/Codecs/PreLoadedFrame.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include <map>

namespace Corvane::Rasterloom::Codecs {
namespace {

using ImagingFramework::DataItem;
using ImagingFramework::DataType;

/// Owns what it is given, and gives copies.
class MapStorage : public MetadataDictionary::Storage {
public:
    ~MapStorage() override { Clear(); }

    bool GetItemArray(const std::uint32_t& key, std::vector<DataItem>& values) const override {
        const auto found = m_items.find(key);
        if (found == m_items.end()) {
            return false;
        }
        for (const DataItem& item : found->second) {
            values.push_back(Copy(item));
        }
        return true;
    }
    bool GetItem(const std::uint32_t& key, DataItem& value) const override {
        const auto found = m_items.find(key);
        if (found != m_items.end()) {
            value = Copy(found->second.front());
        }
        return found != m_items.end();
    }
    bool GetItemString(const std::uint32_t& key, std::string& text) const override {
        text = "text";
        return Contains(key);
    }
    bool GetKeyDescription(const std::uint32_t& key, std::string& text) const override {
        text = "key";
        return Contains(key);
    }
    bool SetItemArray(const std::uint32_t& key, const std::vector<DataItem>& values) override {
        if (Refuses) {
            throw ImagingFramework::ArgumentException("key");
        }
        Remove(key);
        m_items[key] = values;
        return true;
    }
    bool SetItem(const std::uint32_t& key, const DataItem& value) override { return SetItemArray(key, {value}); }
    bool KeyToName(const std::uint32_t&, std::string&) const override { return false; }
    bool NameToKey(std::string_view, std::uint32_t&) const override { return false; }
    std::uint32_t GetCount() const override { return static_cast<std::uint32_t>(m_items.size()); }
    bool GetKey(std::uint32_t index, std::uint32_t& key) const override {
        key = std::next(m_items.begin(), index)->first;
        return true;
    }
    void Clear() override {
        while (!m_items.empty()) {
            Remove(m_items.begin()->first);
        }
    }
    bool Remove(const std::uint32_t& key) override {
        for (DataItem& item : m_items[key]) {
            item.FreePointerValue();
        }
        return m_items.erase(key) != 0;
    }
    bool Contains(const std::uint32_t& key) const override { return m_items.contains(key); }

    bool Refuses = false;
    std::map<std::uint32_t, std::vector<DataItem>> m_items;

private:
    static DataItem Copy(const DataItem& item) {
        switch (item.GetType()) {
        case DataType::String:
            return DataItem(new std::string(static_cast<std::string&>(item)));
        case DataType::Bytes:
            return DataItem(new std::vector<std::uint8_t>(static_cast<std::vector<std::uint8_t>&>(item)));
        case DataType::BitmapData:
            return DataItem(new ImagingFramework::BitmapData(static_cast<ImagingFramework::BitmapData&>(item)));
        default:
            return item;
        }
    }
};

class TestDictionary : public MetadataDictionary {
public:
    explicit TestDictionary(std::unique_ptr<Storage> storage) : MetadataDictionary(std::move(storage)) {}
    MapStorage& Map() { return static_cast<MapStorage&>(get__Storage()); }
};

TEST(MetadataDictionary, CarriesEveryKindOfValue) {
    TestDictionary dictionary(std::make_unique<MapStorage>());
    const std::vector<std::pair<MetadataValue, DataType>> values = {
        {std::int32_t{-5}, DataType::Int32},
        {std::uint32_t{4000000000U}, DataType::UInt32},
        {Rational(-1, 2), DataType::Rational},
        {UnsignedRational(3, 4), DataType::UnsignedRational},
        {std::string("text"), DataType::String},
        {std::vector<std::uint8_t>{1, 2, 3}, DataType::Bytes},
    };
    std::uint32_t key = 10;
    for (const auto& [value, type] : values) {
        dictionary.Add(key, value);
        EXPECT_EQ(dictionary.Map().m_items[key].front().GetType(), type);
        EXPECT_TRUE(dictionary.get_Item(key) == value);
        ++key;
    }
    dictionary.Add(key, std::int64_t{0x1FFFFFFFF});
    EXPECT_EQ(std::get<std::uint32_t>(dictionary.get_Item(key)), 0xFFFFFFFFU) << "the low 32 bits";
    EXPECT_EQ(std::get<std::uint32_t>(dictionary.get_Item(key | 0x700000000)), 0xFFFFFFFFU) << "of keys, too";
    auto bitmap = std::make_shared<Bitmap>(RgbColor::Red, 2, 1, PixelFormat::Format24bppRgb);
    dictionary.set_Item(1, bitmap);
    bitmap->Clear(RgbColor::Blue);
    EXPECT_EQ(std::get<std::shared_ptr<Bitmap>>(dictionary.get_Item(1))->GetPixel(1, 0).ToInt32(), 0xFFFF0000U);
    dictionary.Map().m_items[2] = {DataItem(1.5)};
    EXPECT_EQ(ThrownParameter<Host::ArgumentException>([&] { dictionary.get_Item(2); }), "pSrcValue");
    EXPECT_EQ(dictionary.GetItemString(1), "text");
    EXPECT_EQ(dictionary.GetKeyDescription(99), "");
}

TEST(MetadataDictionary, AddRefusesWhatIsThere) {
    TestDictionary dictionary(std::make_unique<MapStorage>());
    dictionary.Add(7, std::vector<MetadataValue>{std::int32_t{1}, std::string("two")});
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { dictionary.Add(7, std::int32_t{3}); }),
              "An element with the same key already exists in the dictionary.");
    EXPECT_EQ(dictionary.GetItemArray(7).size(), 2U);
    EXPECT_EQ(ThrownParameter<Host::ArgumentException>([&] { dictionary.get_Item(8); }), "key");
    EXPECT_EQ(ThrownParameter<Host::ArgumentException>([&] { dictionary.GetItemArray(8); }), "key");
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([&] { dictionary.Add(8, MetadataValue()); }), "value");
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>(
                  [&] { dictionary.Add(8, std::vector<MetadataValue>{std::string("leaks?"), {}}); }),
              "values");
    dictionary.Map().Refuses = true;
    EXPECT_THROW(dictionary.set_Item(9, std::string("leaks?")), Host::ArgumentException);
    EXPECT_EQ(dictionary.get_Count(), 1);
    EXPECT_FALSE(dictionary.get_Locked());
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([] { TestDictionary null(nullptr); }), "metaData");
    dictionary.Dispose();
    EXPECT_THROW(dictionary.get_Keys(), Host::ObjectDisposedException);
}

TEST(MetadataDictionary, IsWalkedInTheOrderOfTheKeys) {
    auto owner = std::make_unique<TestDictionary>(std::make_unique<MapStorage>());
    TestDictionary& dictionary = *owner;
    dictionary.Add(3, std::int32_t{30});
    dictionary.Add(1, std::int32_t{10});
    auto entries = dictionary.GetEnumerator();
    EXPECT_THROW(entries.get_Key(), Host::InvalidOperationException);
    ASSERT_TRUE(entries.MoveNext());
    EXPECT_EQ(entries.get_Key(), 1U);
    ASSERT_TRUE(entries.MoveNext());
    EXPECT_EQ(std::get<std::int32_t>(entries.get_Entry().second), 30);
    EXPECT_FALSE(entries.MoveNext());
    EXPECT_THROW(entries.get_Value(), Host::InvalidOperationException);
    std::vector<MetadataEntry> array(3);
    dictionary.CopyTo(array, 1);
    EXPECT_EQ(array[1].first, 1U);
    EXPECT_EQ(array[2].first, 3U);
    EXPECT_EQ(ThrownParameter<Host::ArgumentException>([&] { dictionary.CopyTo(array, 2); }), "array");
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { dictionary.CopyTo(array, -1); }), "index");
    dictionary.Remove(3);
    EXPECT_EQ(dictionary.get_Keys(), std::vector<std::uint32_t>{1});
    dictionary.Clear();
    EXPECT_TRUE(dictionary.get_Values().empty());
    entries.Reset();
    ASSERT_TRUE(entries.MoveNext());
    EXPECT_EQ(ThrownParameter<Host::ArgumentException>([&] { entries.get_Value(); }), "key") << "removed";
    owner.reset();
    EXPECT_THROW(entries.get_Value(), Host::ObjectDisposedException);
}

TEST(Rational, IsKeptAsItIs) {
    EXPECT_FALSE(Rational(1, 2) == Rational(2, 4));
    EXPECT_EQ(Rational(-1, 2).ToString(), "-1/2");
    EXPECT_EQ(static_cast<double>(Rational(-1, 2)), -0.5);
    EXPECT_EQ(static_cast<double>(UnsignedRational(4000000000U, 0)), 4e9);
    EXPECT_EQ(Rational(5, 6).GetHashCode(), Rational(5, 6).GetHashCode());
}

TEST(PreLoadedFrame, StandsOnARaster) {
    const auto raster = [] {
        return std::make_unique<ImagingFramework::BitmapData>(4, 2, ImagingFramework::PixelFormat::Format24bppRgb);
    };
    PreLoadedFrame frame(raster(), 5, "layer");
    Bitmap other(1, 1, PixelFormat::Format24bppRgb);
    frame.set_Left(9);
    frame.SetBitmap(&other);
    EXPECT_EQ(frame.get_Index(), 5);
    EXPECT_EQ(frame.get_Name(), "layer");
    EXPECT_EQ(frame.get_Left(), 0);
    EXPECT_EQ(frame.get_Width(), 4);
    frame.GetBitmap(&other);
    EXPECT_EQ(other.get_Width(), 4);
    EXPECT_EQ(ThrownText<BitmapEmptyException>(
                  [] { PreLoadedFrame(std::make_unique<ImagingFramework::BitmapData>(), 0); }),
              "Bitmap \"pBitmap\" has not been filled up with data.");
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
