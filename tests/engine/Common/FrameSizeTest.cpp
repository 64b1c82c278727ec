#include "Common/FrameSize.h"

#include "Throws.h"

#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

class FrameSize : public testing::Test {
protected:
    ~FrameSize() override {
        SetMaximumFramePixels(0);
        SetMaximumFrameBytes(0);
        SetMaximumFrameCount(0);
    }

    static std::string Refusal(std::uint64_t width, std::uint64_t height, PixelFormat format) {
        try {
            CheckFrameSize(width, height, format);
            return {};
        } catch (const MediaCorruptedException& failure) {
            return failure.GetExceptionStringRef();
        }
    }
};

TEST_F(FrameSize, ARasterOfTheFrameCanExist) {
    EXPECT_EQ(Refusal(1, 1, PixelFormat::Format1bppIndexed), "");
    EXPECT_EQ(Refusal(65532, 65537, PixelFormat::Format8bppGrayScale), "");
    EXPECT_EQ(Refusal(65536, 65536, PixelFormat::Format8bppGrayScale),
              "The frame of 65536 x 65536 pixels with 8 bits each is larger than the limit of 4294967295 bytes.");
    EXPECT_NE(Refusal(0, 5, PixelFormat::Format24bppRgb), "");
    EXPECT_NE(Refusal(5, 0, PixelFormat::Format24bppRgb), "");
    // Products and widths that would wrap.
    EXPECT_NE(Refusal(1ULL << 40, 1, PixelFormat::Format1bppIndexed), "");
    EXPECT_NE(Refusal(1ULL << 32, 1ULL << 32, PixelFormat::Format80bppAcmyk), "");
    EXPECT_NE(Refusal(0xFFFFFFFFU, 0xFFFFFFFFU, PixelFormat::Format80bppAcmyk), "");
}

TEST_F(FrameSize, LimitsHoldToThePixelAndTheByte) {
    SetMaximumFramePixels(12);
    EXPECT_EQ(Refusal(4, 3, PixelFormat::Format80bppAcmyk), "");
    EXPECT_EQ(Refusal(13, 1, PixelFormat::Format1bppIndexed),
              "The frame of 13 x 1 pixels is larger than the limit of 12 pixels.");
    EXPECT_NE(Refusal(1ULL << 33, 1ULL << 31, PixelFormat::Format1bppIndexed), "") << "2^64 pixels are not 0";
    SetMaximumFramePixels(0);
    SetMaximumFrameBytes(24); // 3 scanlines of 8 bytes: 5 bytes and padding
    EXPECT_EQ(Refusal(5, 3, PixelFormat::Format8bppGrayScale), "");
    EXPECT_EQ(Refusal(9, 3, PixelFormat::Format8bppGrayScale),
              "The frame of 9 x 3 pixels with 8 bits each is larger than the limit of 24 bytes.");
    EXPECT_NE(Refusal(5, 4, PixelFormat::Format8bppGrayScale), "");
    SetMaximumFrameBytes(1ULL << 40); // more than can be
    EXPECT_NE(Refusal(65536, 65536, PixelFormat::Format8bppGrayScale), "");
}

TEST_F(FrameSize, FramesAreCounted) {
    EXPECT_NO_THROW(CheckFrameCount(1ULL << 40));
    SetMaximumFrameCount(3);
    EXPECT_NO_THROW(CheckFrameCount(3));
    EXPECT_EQ(ThrownText<MediaCorruptedException>([] { CheckFrameCount(4); }),
              "The file has more frames (4) than the limit of 3.");
}

} // namespace
} // namespace ImagingFramework
