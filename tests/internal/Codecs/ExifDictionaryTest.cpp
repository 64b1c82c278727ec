#include <Corvane/Rasterloom/Codecs/ExifDictionary.h>

#include "Throws.h"
#include "metadata/Exif/ExifDataStorage.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include <gtest/gtest.h>

namespace Corvane::Rasterloom::Codecs {
namespace {

namespace engine = ImagingFramework;

TEST(ExifDictionary, KeysAreThoseOfTheNames) {
    const std::pair<const char*, std::uint32_t> keys[] = {
        {"ExifImageHeight", ExifDictionary::ImageLength},
        {"ExifThumbnailWidth", ExifDictionary::ThumbnailWidth},
        {"ExifExifVersion", ExifDictionary::ExifVersion},
        {"ExifGpsDifferential", ExifDictionary::GpsDifferential},
        {"ExifInteroperabilityIndex", ExifDictionary::InteroperabilityIndex},
        {"ExifThumbnail", ExifDictionary::Thumbnail},
    };
    for (const auto& [name, key] : keys) {
        std::uint32_t found = 0;
        EXPECT_TRUE(engine::ExifKey::NameToKey(name, found));
        EXPECT_EQ(found, key) << name;
    }
    EXPECT_EQ(ExifDictionary::ImageWidth, 0xF0000100U);
}

TEST(ExifDictionary, TellsWhatAKeyTakes) {
    const auto info = [](std::uint32_t key) {
        const ExifItemInfo item = ExifDictionary::GetItemInfo(key);
        return std::pair(item.get_Type(), item.get_ValueCount());
    };
    using Info = std::pair<std::type_index, std::uint32_t>;
    EXPECT_EQ(info(ExifDictionary::DateTime), Info(typeid(std::string), 20));
    EXPECT_EQ(info(ExifDictionary::Make), Info(typeid(std::string), ExifItemInfo::AnyCount));
    EXPECT_EQ(info(ExifDictionary::Orientation), Info(typeid(std::uint32_t), 1));
    EXPECT_EQ(info(ExifDictionary::ExposureTime), Info(typeid(UnsignedRational), 1));
    EXPECT_EQ(info(ExifDictionary::ExposureBiasValue), Info(typeid(Rational), 1));
    EXPECT_EQ(info(ExifDictionary::GpsLatitude), Info(typeid(UnsignedRational), 3));
    EXPECT_EQ(info(ExifDictionary::GpsAltitudeRef), Info(typeid(std::vector<std::uint8_t>), 1));
    EXPECT_EQ(info(ExifDictionary::Thumbnail), Info(typeid(std::shared_ptr<Bitmap>), 1));
    for (const std::int64_t key : {0xFDE8, 0x12345}) {
        EXPECT_EQ(ThrownParameter<Host::ArgumentException>([&] { ExifDictionary::GetItemInfo(key); }), "key");
    }
    EXPECT_TRUE(ThrownText<Host::ArgumentException>([] { ExifDictionary::GetItemInfo(0xFDE8); })
                    .starts_with("Unknown key."));
}

TEST(ExifDictionary, HoldsValuesOfEveryKind) {
    ExifDictionary exif;
    const std::vector<MetadataValue> latitude = {UnsignedRational(48, 1), UnsignedRational(8, 1),
                                                 UnsignedRational(1234, 100)};
    exif.Add(ExifDictionary::Make, std::string("Maker"));
    exif.Add(ExifDictionary::Orientation, std::int32_t{6});
    exif.Add(ExifDictionary::ExposureBiasValue, Rational(-1, 3));
    exif.Add(ExifDictionary::GpsLatitude, latitude);
    exif.Add(ExifDictionary::UserComment, std::vector<std::uint8_t>{1, 2, 3});
    exif.Add(ExifDictionary::Thumbnail,
             std::make_shared<Bitmap>(RgbColor::Red, 2, 1, PixelFormat::Format24bppRgb));
    exif.set_Item(0xFDE8, std::string("unknown")); // does nothing
    EXPECT_EQ(exif.get_Count(), 6);
    EXPECT_TRUE(exif.GetItemArray(ExifDictionary::GpsLatitude) == latitude);
    EXPECT_EQ(exif.GetItemString(ExifDictionary::GpsLatitude), "48.00/8.00/12.34");
    EXPECT_EQ(exif.GetItemString(ExifDictionary::Thumbnail), "2 x 1");
    EXPECT_EQ(std::get<std::uint32_t>(exif.get_Item(0x0112)), 6U) << "the bare number";
    EXPECT_EQ(std::get<std::shared_ptr<Bitmap>>(exif.get_Item(ExifDictionary::Thumbnail))->get_Width(), 2);
    EXPECT_THROW(exif.Add(0x0112, std::uint32_t{1}), Host::ArgumentException) << "it is there under its pseudo key";
    EXPECT_THROW(exif.set_Item(ExifDictionary::Make, std::uint32_t{1}), Host::InvalidCastException);
    EXPECT_THROW(exif.SetItemArray(ExifDictionary::GpsLatitude, {UnsignedRational(1, 1)}),
                 Host::ArgumentOutOfRangeException);
    EXPECT_THROW(exif.get_Item(0x12345), Host::ArgumentException);
    EXPECT_THROW(exif.Remove(ExifDictionary::Model), Host::ArgumentException);

    const std::unique_ptr<ExifDictionary> copy = exif.Clone();
    exif.Clear();
    EXPECT_EQ(copy->get_Count(), 6);
    EXPECT_EQ(copy->get__InternalData().GetTagCount(engine::ExifIfd::Exif), 2U);
    EXPECT_EQ(copy->get_Keys().back(), ExifDictionary::Thumbnail);
    EXPECT_THROW(ExifDictionary(std::unique_ptr<engine::ExifDataStorage>()), Host::ArgumentNullException);
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
