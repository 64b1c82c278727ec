#include "metadata/MetaData.h"

#include "BmpRasters.h"

#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

std::shared_ptr<IStream> MakeStream() {
    return std::make_shared<MemoryStream>(BmpBuilder{.Width = 3, .Height = -2, .Pixels = Bytes(24)}.Build());
}

template <class T>
T Get(MetaData& metaData, MetaDataId id, std::int32_t frameIndex = 0) {
    ItemTag tag(id, frameIndex);
    EXPECT_TRUE(metaData.GetItem(tag)) << static_cast<int>(id);
    return static_cast<T>(tag);
}

TEST(MetaData, ItemsOfAnOpenFile) {
    const auto pStream = MakeStream();
    pStream->Seek(20, SeekOrigin::Begin, nullptr); // a file is read from its beginning, wherever the stream stands
    BitmapMetaData metaData;
    metaData.AttachToRead(pStream);
    EXPECT_EQ(Get<std::uint32_t>(metaData, MetaDataId::FrameWidth), 3U);
    EXPECT_EQ(Get<std::uint32_t>(metaData, MetaDataId::FrameHeight, ItemTag::WholeFile), 2U);
    EXPECT_EQ(Get<PixelFormat>(metaData, MetaDataId::FramePixelFormat), PixelFormat::Format24bppRgb);
    EXPECT_EQ(Get<FileFormat>(metaData, MetaDataId::MediaFormat), FileFormat::Bmp);
    EXPECT_EQ(Get<std::int32_t>(metaData, MetaDataId::CanReadFrames), 1);
    EXPECT_EQ(Get<std::int32_t>(metaData, MetaDataId::FrameLeft), 0);
    EXPECT_EQ(Get<std::uint32_t>(metaData, MetaDataId::FrameCount, ItemTag::WholeFile), 1U);
    EXPECT_EQ(Get<FrameCompressionType>(metaData, MetaDataId::FrameCompression), FrameCompressionType::None);
    ItemTag unknown(MetaDataId::Exif);
    EXPECT_FALSE(metaData.GetItem(unknown));
    EXPECT_TRUE(unknown.IsEmpty());
    std::vector<ItemTag> tags = {ItemTag(MetaDataId::FrameWidth), ItemTag(MetaDataId::FrameHeight)};
    metaData.GetItems(tags);
    EXPECT_EQ(static_cast<std::uint32_t>(tags[1]), 2U);
}

TEST(MetaData, FrameIndices) {
    BitmapMetaData metaData;
    metaData.AttachToRead(MakeStream());
    for (const std::int32_t index : {-2, 1, 1000}) {
        ItemTag tag(MetaDataId::FrameWidth, index);
        EXPECT_THROW(metaData.GetItem(tag), ArgumentException) << index;
    }
    ItemTag whole(MetaDataId::FrameBitmap, ItemTag::WholeFile);
    EXPECT_THROW(metaData.GetItem(whole), ArgumentOutOfRangeException);
}

TEST(MetaData, States) {
    BitmapMetaData metaData;
    ItemTag tag(MetaDataId::FrameWidth);
    EXPECT_THROW(metaData.GetItem(tag), NotInitializedException);
    EXPECT_THROW(metaData.SetItem(tag), NotInitializedException);
    EXPECT_THROW(metaData.AttachToRead(std::shared_ptr<IStream>()), ArgumentNullPointerException);
    metaData.AttachToRead(MakeStream());
    EXPECT_TRUE(metaData.IsInReadState());
    EXPECT_THROW(metaData.SetItem(tag), MetaDataWritingNotAllowedException);
    metaData.AttachToWrite(std::make_shared<MemoryStream>());
    EXPECT_TRUE(metaData.IsInWriteState());
    EXPECT_FALSE(metaData.IsInReadState());
    EXPECT_THROW(metaData.GetItem(tag), MetaDataReadingNotAllowedException);
    EXPECT_FALSE(metaData.SetItem(tag)) << "the width follows from the raster";
    EXPECT_THROW(metaData.AttachToRead(std::make_shared<MemoryStream>()), MediaUnsupportedException);
    EXPECT_FALSE(metaData.IsInReadState() || metaData.IsInWriteState()) << "a failure closes";
    EXPECT_THROW(metaData.AttachToRead("no such folder/file.bmp"), Exception);
}

} // namespace
} // namespace ImagingFramework
