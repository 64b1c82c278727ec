#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/GlobalSettings.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include "TestProfiles.h"
#include "Throws.h"

#include <gtest/gtest.h>
#include <span>

namespace Corvane::Rasterloom {
namespace {

using TestProfiles::Bytes;

std::unique_ptr<ColorProfile> FromBytes(const Bytes& bytes) { return std::make_unique<ColorProfile>(std::span(bytes)); }

TEST(ColorProfile, ReadsFromFilesBytesAndStreams) {
    const Bytes bytes = TestProfiles::Gray();
    const TestProfiles::File file(bytes);
    ColorProfile named(file.Path());
    EXPECT_EQ(named.get_FileName(), file.Path());
    EXPECT_EQ(named.get_ColorSpace(), ColorSpace::GrayScale);
    EXPECT_EQ(named.get_DeviceClass(), ColorProfileClass::Display);
    EXPECT_EQ(named.get_Name(), "Scanner - Maker");
    EXPECT_EQ(named.get_Model(), "Scanner");
    EXPECT_EQ(named.get_Manufacturer(), "Maker");
    const auto printer = FromBytes(TestProfiles::Cmyk());
    EXPECT_EQ(printer->get_ColorSpace(), ColorSpace::Cmyk);
    EXPECT_EQ(printer->get_DeviceClass(), ColorProfileClass::Output);
    EXPECT_EQ(printer->get_Description(), "Printer");
    EXPECT_EQ(printer->get_Info(), "Printer\r\n");
    EXPECT_EQ(printer->get_Copyright(), "");
    const auto stream = std::make_shared<Host::MemoryStream>();
    stream->Write("....", 4);
    stream->Write(bytes.data(), bytes.size());
    stream->set_Position(4);
    ColorProfile streamed(stream);
    EXPECT_EQ(streamed.get_Name(), "Scanner - Maker");
    EXPECT_EQ(TestProfiles::ReadFile(streamed.get_FileName()), bytes);
    // A space that no pixel format has is no failure.
    EXPECT_EQ(FromBytes(TestProfiles::Lab())->get_ColorSpace(), ColorSpace::Unknown);
}

TEST(ColorProfile, RemovesItsTemporaryFileWithTheLastOwner) {
    std::filesystem::path path;
    {
        auto profile = FromBytes(TestProfiles::SRgb());
        path = profile->get_FileName();
        const auto clone = profile->Clone();
        EXPECT_EQ(clone->get_FileName(), path); // no second file
        Bitmap bitmap(2, 2, PixelFormat::Format24bppRgb);
        bitmap.set_ColorProfile(clone->Clone());
        const auto copy = bitmap.Clone();
        bitmap.Dispose();
        profile.reset();
        clone->Dispose();
        EXPECT_TRUE(std::filesystem::exists(path));
        EXPECT_EQ(copy->get_ColorProfile()->get_FileName(), path);
        copy->get_Transforms()->Resize(1, 1);
        EXPECT_EQ(copy->get_ColorProfile()->get_FileName(), path);
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(ColorProfile, SavesAndFailsByName) {
    const Bytes bytes = TestProfiles::SRgb();
    auto profile = FromBytes(bytes);
    const std::filesystem::path target = std::filesystem::temp_directory_path() / "rasterloom-saved.icc";
    profile->Save(target);
    EXPECT_EQ(TestProfiles::ReadFile(target), bytes);
    ColorProfile saved(target);
    saved.Save(target); // onto itself
    EXPECT_EQ(TestProfiles::ReadFile(target), bytes);
    const auto stream = std::make_shared<Host::MemoryStream>();
    saved.Save(stream);
    EXPECT_EQ(stream->get_Length(), static_cast<std::int64_t>(bytes.size()));
    std::filesystem::remove(target);
    EXPECT_THROW(saved.Save(stream), Host::IOException); // the file is gone
    profile->Dispose();
    profile->Dispose();
    EXPECT_EQ(ThrownText<Host::ObjectDisposedException>([&] { profile->get_Name(); }),
              ThrownText<Host::ObjectDisposedException>([] { throw Host::ObjectDisposedException("ColorProfile"); }));
    EXPECT_THROW(profile->get_FileName(), Host::ObjectDisposedException);
    EXPECT_THROW(profile->Clone(), Host::ObjectDisposedException);
    Bitmap bitmap(1, 1, PixelFormat::Format24bppRgb);
    EXPECT_THROW(bitmap.set_ColorProfile(std::move(profile)), Host::ObjectDisposedException);
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([] { ColorProfile{std::filesystem::path()}; }), "fileName");
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([] { ColorProfile{std::span<const std::uint8_t>()}; }), "data");
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([] { ColorProfile{std::shared_ptr<Host::Stream>()}; }), "stream");
    EXPECT_EQ(ThrownText<CMOpenProfileException>([] { ColorProfile("/nonexistent/p.icc"); }),
              "Unable to open color profile '/nonexistent/p.icc'.");
    EXPECT_THROW(FromBytes(Bytes(200, 7)), CMOpenProfileException);
    Bytes six = bytes;
    std::copy_n("6CLR", 4, six.begin() + 16);
    EXPECT_THROW(FromBytes(six), UnsupportedPixelFormatException);
}

TEST(ColorProfile, HasSRgbWhateverTheSystemHas) {
    EXPECT_EQ(ColorProfile::FromSrgb()->get_ColorSpace(), ColorSpace::Rgb);
    EXPECT_NE(ColorProfile::FromScreen(), nullptr);
    int device = 0;
    EXPECT_NE(ColorProfile::FromHdc(&device), nullptr);
    EXPECT_EQ(ThrownParameter<Host::ArgumentException>([] { ColorProfile::FromHdc(nullptr); }), "hdc");
    EXPECT_FALSE(ColorProfile::get_ProfileDirectory().empty());
    EXPECT_FALSE(GlobalSettings::get_IsAdobeCmmAccessible());
}

TEST(BitmapColorProfile, IsAPropertyOfTheRaster) {
    Bitmap bitmap(2, 1, PixelFormat::Format24bppRgb);
    EXPECT_EQ(bitmap.get_ColorProfile(), nullptr);
    {
        // A named file is copied: what becomes of it is nothing to the bitmap.
        const TestProfiles::File file(TestProfiles::Rgb());
        const auto profile = std::make_shared<ColorProfile>(file.Path());
        bitmap.set_ColorProfile(profile);
        EXPECT_NE(bitmap.get_ColorProfile()->get_FileName(), file.Path());
    }
    const auto profile = bitmap.get_ColorProfile();
    EXPECT_EQ(profile->get_Description(), "Wide display");
    EXPECT_EQ(bitmap.get_ColorProfile(), profile);
    {
        const auto view = bitmap.LockBits();
        EXPECT_THROW(bitmap.get_ColorProfile(), BitmapLockedException);
    }
    bitmap.set_ColorProfile(nullptr);
    EXPECT_EQ(bitmap.get_ColorProfile(), nullptr);
    EXPECT_EQ(profile->get_Description(), "Wide display"); // the host's own still
    // Another raster has another profile.
    bitmap.set_ColorProfile(profile);
    bitmap.Create(1, 1, PixelFormat::Format24bppRgb);
    EXPECT_EQ(bitmap.get_ColorProfile(), nullptr);
    bitmap.Unload();
    EXPECT_THROW(bitmap.set_ColorProfile(profile), BitmapEmptyException);
    EXPECT_EQ(bitmap.get_ColorProfile(), nullptr);
}

} // namespace
} // namespace Corvane::Rasterloom
