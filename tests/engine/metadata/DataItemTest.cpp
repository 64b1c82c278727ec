#include "metadata/ItemTag.h"

#include "MemoryManagement/Memory.h"

#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

enum class Outcome { Value, WrongType, Empty };

template <class T>
Outcome Read(const DataItem& item) {
    try {
        static_cast<void>(static_cast<T>(item));
        return Outcome::Value;
    } catch (const InvalidTypeCastException&) {
        return Outcome::WrongType;
    } catch (const NotInitializedException&) {
        return Outcome::Empty;
    }
}

/// One letter per accepted type: i int, u unsigned, f float, d double, p pixel format, m media format, c compression,
/// x disposal, r rational, R unsigned rational, j progression, then the pointers B M S Y T.
std::string Readable(const DataItem& item) {
    std::string text;
    const auto add = [&text](char letter, Outcome outcome) {
        EXPECT_NE(outcome, Outcome::Empty);
        text += outcome == Outcome::Value ? std::string(1, letter) : "";
    };
    add('i', Read<std::int32_t>(item));
    add('u', Read<std::uint32_t>(item));
    add('f', Read<float>(item));
    add('d', Read<double>(item));
    add('p', Read<PixelFormat>(item));
    add('m', Read<FileFormat>(item));
    add('c', Read<FrameCompressionType>(item));
    add('x', Read<FrameDisposalMethod>(item));
    add('r', Read<Rational>(item));
    add('R', Read<UnsignedRational>(item));
    add('j', Read<Jpeg2kProgressionOrder>(item));
    add('B', Read<BitmapData*>(item));
    add('M', Read<ColorMap*>(item));
    add('S', Read<std::string*>(item));
    add('Y', Read<std::vector<std::uint8_t>*>(item));
    add('T', Read<TiffExtraChannelList*>(item));
    return text;
}

TEST(DataItem, EachTypeReadsAsItsOwnAndNothingElse) {
    struct Case {
        DataItem Item;
        std::uint32_t Code;
        const char* Readable;
    };
    BitmapData raster;
    ColorMap map;
    std::string text;
    std::vector<std::uint8_t> bytes;
    TiffExtraChannelList channels;
    const Case cases[] = {
        {DataItem(std::int32_t{-5}), 1, "iufd"},
        {DataItem(std::uint32_t{5}), 2, "iufd"},
        {DataItem(PixelFormat::Format24bppRgb), 3, "iufdp"},
        {DataItem(FileFormat::Bmp), 4, "iufdm"},
        {DataItem(FrameCompressionType::Rle), 9, "iufdc"},
        {DataItem(FrameDisposalMethod::Leave), 10, "x"},
        {DataItem(Rational{1, 2}), 11, "dr"},
        {DataItem(UnsignedRational{1, 2}), 12, "dR"},
        {DataItem(Jpeg2kProgressionOrder::Rpcl), 17, "iufdj"},
        {DataItem(1.5F), 18, "fd"},
        {DataItem(1.5), 19, "fd"},
        {DataItem(&raster), 0x10000005, "B"},
        {DataItem(&map), 0x10000006, "M"},
        {DataItem(&text), 0x1000000D, "S"},
        {DataItem(&bytes), 0x1000000E, "Y"},
        {DataItem(&channels), 0x10000019, "T"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(static_cast<std::uint32_t>(c.Item.GetType()), c.Code);
        EXPECT_EQ(Readable(c.Item), c.Readable) << c.Code;
    }
    EXPECT_EQ(Read<std::int32_t>(DataItem()), Outcome::Empty);
    EXPECT_EQ(Read<BitmapData*>(DataItem()), Outcome::Empty);
}

TEST(DataItem, ValuesConvertWithTheirBits) {
    const DataItem negative(std::int32_t{-1});
    EXPECT_EQ(static_cast<std::uint32_t>(negative), 0xFFFFFFFFU);
    EXPECT_EQ(static_cast<double>(negative), 4294967295.0);
    EXPECT_EQ(static_cast<std::int32_t>(DataItem(std::uint32_t{0x80000000})), INT32_MIN);
    EXPECT_EQ(static_cast<double>(DataItem(Rational{-3, 4})), -0.75);
    EXPECT_EQ(static_cast<double>(DataItem(Rational{-7, 0})), -7.0);
    EXPECT_EQ(static_cast<double>(DataItem(UnsignedRational{3000000000U, 0})), 3e9);
    EXPECT_EQ(static_cast<double>(DataItem(0.1F)), static_cast<double>(0.1F));
    const auto custom = static_cast<FileFormat>(0x123456789A);
    EXPECT_EQ(static_cast<FileFormat>(DataItem(custom)), custom);
    EXPECT_EQ(static_cast<FileFormat>(DataItem(FileFormat::UnknownBeforeOpen)), FileFormat::UnknownBeforeOpen);
    EXPECT_THROW(static_cast<void>(static_cast<BitmapData&>(DataItem(static_cast<BitmapData*>(nullptr)))),
                 NotInitializedException);
}

/// Tells when it dies.
class Storage : public IDataItemObject {
public:
    static constexpr DataType ItemType = DataType::AdobeResources;
    explicit Storage(int& deaths) : m_deaths(deaths) {}
    ~Storage() override { ++m_deaths; }

private:
    int& m_deaths;
};

class OtherStorage : public IDataItemObject {
public:
    static constexpr DataType ItemType = DataType::AdobeResources;
};

TEST(DataItem, PointersAreFreedOnlyWhenTold) {
    int deaths = 0;
    {
        DataItem forgotten(new Storage(deaths));
        auto* const pStorage = static_cast<Storage*>(forgotten);
        EXPECT_EQ(Read<OtherStorage*>(forgotten), Outcome::WrongType) << "two classes share the code";
        forgotten.Empty();
        EXPECT_TRUE(forgotten.IsEmpty());
        EXPECT_EQ(deaths, 0);
        DataItem item(pStorage);
        item.FreePointerValue();
        EXPECT_EQ(deaths, 1);
        EXPECT_TRUE(item.IsEmpty());
        item.FreePointerValue();
    }
    EXPECT_EQ(deaths, 1);
    // The leak checker is the judge of these.
    DataItem memory;
    memory.SetMemory(AllocMemory(10));
    DataItem items[] = {DataItem(new BitmapData),
                        DataItem(new ColorMap),
                        DataItem(new std::string("text")),
                        DataItem(new std::vector<std::uint8_t>(3)),
                        DataItem(new TiffExtraChannelList),
                        DataItem(new ColorProfileData({1, 2})),
                        memory};
    for (DataItem& item : items) {
        item.FreePointerValue();
        EXPECT_TRUE(item.IsEmpty());
    }
    DataItem number(std::int32_t{3});
    number.FreePointerValue();
    EXPECT_EQ(static_cast<std::int32_t>(number), 3);
}

TEST(ItemTag, IsTheValueItCarries) {
    ItemTag tag(MetaDataId::Quality, -1);
    EXPECT_EQ(tag.GetThumbnailWidth(), 100U);
    EXPECT_EQ(tag.GetThumbnailHeight(), 100U);
    EXPECT_EQ(tag.GetThumbnailInterpolation(), InterpolationMode::Anisotropic4);
    EXPECT_EQ(tag.GetResolutionUnit(), LinearUnit::Inch);
    tag = std::uint32_t{80};
    EXPECT_EQ(static_cast<std::int32_t>(tag), 80);
    EXPECT_EQ(tag.GetMetaDataId(), MetaDataId::Quality);
    EXPECT_EQ(tag.GetFrameIndex(), -1);
}

} // namespace
} // namespace ImagingFramework
