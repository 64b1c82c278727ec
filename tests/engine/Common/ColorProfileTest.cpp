#include "Common/ColorProfileUtils.h"
#include "Common/LcmsProfile.h"
#include "Common/ProfileCost.h"
#include "Common/SystemProfiles.h"
#include "ErrorHandling/Exceptions.h"
#include "TestProfiles.h"
#include "Throws.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>
#include <sys/stat.h>

namespace ImagingFramework {
namespace {

using TestProfiles::Bytes;

void Put32(Bytes& bytes, std::size_t position, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) {
        bytes.at(position + static_cast<std::size_t>(i)) = static_cast<std::uint8_t>(value >> (24 - 8 * i));
    }
}

LcmsProfile Open(const Bytes& bytes) { return {std::make_shared<LcmsContext>(), std::span(bytes)}; }

// --- What profiles tell

TEST(LcmsProfile, TellsItsTexts) {
    const TestProfiles::File gray(TestProfiles::Gray());
    const LcmsProfile profile(gray.Path());
    EXPECT_EQ(profile.GetModel(), "Scanner");
    EXPECT_EQ(profile.GetManufacturer(), "Maker");
    EXPECT_EQ(profile.GetName(), "Scanner - Maker");
    EXPECT_EQ(profile.GetDeviceClass(), 0x6D6E7472U); // "mntr"
    const LcmsProfile display = Open(TestProfiles::Rgb());
    EXPECT_EQ(display.GetName(), "Wide display");
    EXPECT_EQ(display.GetInfo(), "Wide display\r\nNobody\r\n");
    EXPECT_EQ(display.GetModel(), "");
    // Units of UTF-16 become UTF-8: a letter of two bytes, one of three, a pair of units of four.
    cmsHPROFILE named = cmsCreate_sRGBProfile();
    cmsMLU* const mlu = cmsMLUalloc(nullptr, 1);
    const wchar_t text[] = {0xE9, 0x20AC, 0xD83D, 0xDE00, L'x', 0};
    cmsMLUsetWide(mlu, "en", "US", text);
    cmsWriteTag(named, cmsSigProfileDescriptionTag, mlu);
    cmsMLUfree(mlu);
    EXPECT_EQ(Open(TestProfiles::Save(named)).GetDescription(), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80x");
}

TEST(LcmsProfile, NamesTheColorSpaceOfTheHeader) {
    const std::pair<const char*, std::uint32_t> spaces[] = {
        {"RGB ", 0x01000000}, {"GRAY", 0x12000000}, {"CMYK", 0x14000000}, {"Lab ", 0x18000000},
        {"XYZ ", 0x21000000}, {"Luv ", 0x22000000}, {"YCbr", 0x24000000}, {"Yxy ", 0x28000000},
        {"HSV ", 0x41000000}, {"HLS ", 0x42000000}, {"CMY ", 0x44000000},
    };
    Bytes bytes = TestProfiles::SRgb();
    for (const auto& [signature, code] : spaces) {
        std::copy_n(signature, 4, bytes.begin() + 16);
        EXPECT_EQ(Open(bytes).GetColorSpace(), code) << signature;
    }
    std::copy_n("6CLR", 4, bytes.begin() + 16);
    EXPECT_THROW(Open(bytes).GetColorSpace(), UnsupportedPixelFormatException);
    const TestProfiles::File file(bytes);
    EXPECT_THROW(ValidateColorProfileConsistency(file.Path()), CmUnappropriateProfileException);
}

TEST(LcmsProfile, RefusesWhatIsNoProfile) {
    const Bytes good = TestProfiles::SRgb();
    for (const std::size_t size : {std::size_t{0}, std::size_t{4}, std::size_t{127}, std::size_t{131}}) {
        EXPECT_THROW(Open(Bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size))), CmOpenProfileException);
    }
    Bytes unsignedBytes = good;
    unsignedBytes[36] = 'x';
    EXPECT_THROW(Open(unsignedBytes), CmOpenProfileException);
    Bytes manyTags = good;
    Put32(manyTags, 128, 0xFFFFFFFF);
    EXPECT_THROW(Open(manyTags), CmOpenProfileException);
    EXPECT_THROW(LcmsProfile("/nonexistent/profile"), CmOpenProfileException);
    EXPECT_THROW(LcmsProfile{std::filesystem::temp_directory_path()}, CmOpenProfileException);
    // A pipe is not waited for.
    const TempFolder folder;
    const std::filesystem::path pipe = folder.File("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_THROW(LcmsProfile{pipe}, CmOpenProfileException);
}

// --- Profiles that would take for ever

/// A tag of `count` elements that are all the one at its end.
Bytes ProfileOfElements(std::uint32_t count, const Bytes& element) {
    Bytes bytes(144 + 16 + 8 * std::size_t{count});
    std::copy_n("scnrRGB XYZ ", 12, bytes.begin() + 12);
    std::copy_n("acsp", 4, bytes.begin() + 36);
    Put32(bytes, 8, 0x04300000);
    Put32(bytes, 128, 1);
    std::copy_n("D2B0", 4, bytes.begin() + 132);
    Put32(bytes, 136, 144);
    std::copy_n("mpet", 4, bytes.begin() + 144);
    Put32(bytes, 152, 0x00030003);
    Put32(bytes, 156, count);
    for (std::size_t i = 0; i < count; ++i) {
        Put32(bytes, 160 + 8 * i, 16 + 8 * count);
        Put32(bytes, 164 + 8 * i, static_cast<std::uint32_t>(element.size()));
    }
    bytes.insert(bytes.end(), element.begin(), element.end());
    Put32(bytes, 140, static_cast<std::uint32_t>(bytes.size() - 144));
    Put32(bytes, 0, static_cast<std::uint32_t>(bytes.size()));
    return bytes;
}

Bytes Element(const char* signature, std::uint32_t channels, std::size_t size) {
    Bytes element(size);
    std::copy_n(signature, 4, element.begin());
    Put32(element, 8, channels);
    return element;
}

TEST(ProfileCost, BoundsWhatAColorCosts) {
    const Bytes matrix = Element("matf", 0x00030003, 60); // three to three: 9
    EXPECT_TRUE(IsProfileCostBounded(ProfileOfElements(1000, matrix)));
    EXPECT_FALSE(IsProfileCostBounded(ProfileOfElements(20000, matrix)));
    EXPECT_THROW(Open(ProfileOfElements(20000, matrix)), CmOpenProfileException);
    // A table of 15 inputs is looked up at 2^15 corners, one of three at eight.
    EXPECT_TRUE(IsProfileCostBounded(ProfileOfElements(100, Element("clut", 0x00030003, 40))));
    EXPECT_FALSE(IsProfileCostBounded(ProfileOfElements(1, Element("clut", 0x000F0001, 40))));
    // Three curves of 30,000 segments each.
    Bytes curves = Element("cvst", 0x00030003, 60);
    for (std::size_t i = 0; i < 3; ++i) {
        Put32(curves, 12 + 8 * i, 36);
    }
    std::copy_n("curf", 4, curves.begin() + 36);
    Put32(curves, 44, 30000U << 16);
    EXPECT_FALSE(IsProfileCostBounded(ProfileOfElements(1, curves)));
    Put32(curves, 44, 3U << 16);
    EXPECT_TRUE(IsProfileCostBounded(ProfileOfElements(1, curves)));
    // Positions outside the profile are the library's affair.
    Bytes cut = ProfileOfElements(3, curves);
    cut.resize(170);
    EXPECT_TRUE(IsProfileCostBounded(cut));
    EXPECT_TRUE(IsProfileCostBounded({}));
}

// The library would allocate for them all before it finds that they are not there.
TEST(LcmsProfile, TellsNoTextsWhereOneClaimsTooManyLanguages) {
    Bytes bytes = TestProfiles::Rgb();
    const char signature[] = {'d', 'e', 's', 'c'};
    const auto entry = std::ranges::search(bytes, signature).begin();
    std::uint32_t tag = 0;
    for (int i = 4; i < 8; ++i) {
        tag = tag << 8 | entry[i];
    }
    ASSERT_EQ(bytes.at(tag + 11), 1); // one language
    // As many as there is room for, whatever stands there, and one more.
    const auto room = static_cast<std::uint32_t>((bytes.size() - tag - 16) / 12);
    Put32(bytes, tag + 8, room);
    EXPECT_TRUE(HasRoomForTexts(bytes));
    Put32(bytes, tag + 8, room + 1);
    EXPECT_FALSE(HasRoomForTexts(bytes));
    Put32(bytes, tag + 8, 0x01000003);
    const LcmsProfile profile = Open(bytes);
    EXPECT_EQ(profile.GetName() + profile.GetCopyright() + profile.GetInfo(), "");
    EXPECT_EQ(profile.GetColorSpace(), 0x01000000U); // and is of use all the same
    EXPECT_TRUE(HasRoomForTexts({}));
}

TEST(LcmsContext, LimitsMemoryAndKeepsTheFirstError) {
    // One table of 16^3 x 3 numbers, named 4000 times: 190 MB as floats, and more beside them.
    Bytes table = Element("clut", 0x00030003, 28 + 16 * 16 * 16 * 3 * 4);
    std::fill_n(table.begin() + 12, 3, std::uint8_t{16});
    const auto context = std::make_shared<LcmsContext>();
    const LcmsProfile profile(context, ProfileOfElements(600, table));
    EXPECT_EQ(context->GetErrorText(), "");
    EXPECT_TRUE(context->Claim(LcmsContext::MemoryLimit / 2));
    EXPECT_FALSE(context->Claim(LcmsContext::MemoryLimit / 2 + 1));
    // With half of the memory gone the table does not fit any more.
    EXPECT_TRUE(context->Claim(LcmsContext::MemoryLimit / 2 - (std::uint64_t{1} << 20)));
    EXPECT_EQ(cmsReadTag(profile.Get(), cmsSigDToB0Tag), nullptr);
    const std::string first = context->GetErrorText();
    EXPECT_NE(first, "");
    EXPECT_EQ(cmsOpenProfileFromMemTHR(context->Get(), "short", 5), nullptr);
    EXPECT_EQ(context->GetErrorText(), first);
    context->ClearError();
    EXPECT_EQ(context->GetErrorText(), "");
    context->GiveBack(LcmsContext::MemoryLimit - (std::uint64_t{1} << 20));
}

// --- Files

TEST(ColorProfileUtils, MovesProfilesBetweenFilesAndBytes) {
    const Bytes bytes = TestProfiles::Gray();
    std::filesystem::path path;
    {
        const auto made = CreateProfileByData(bytes);
        path = made->GetPath();
        EXPECT_TRUE(path.filename().string().starts_with("ICM"));
        EXPECT_EQ(path.extension(), ".TMP");
        struct stat status {};
        ASSERT_EQ(::stat(path.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0600U);
        EXPECT_EQ(GetProfileDataSize(&path), bytes.size());
        EXPECT_EQ(GetProfileData(&path), bytes);
        EXPECT_EQ(DuplicateColorProfile(made), made);
        const auto copy = DuplicateColorProfile(path);
        EXPECT_NE(copy->GetPath(), path);
        EXPECT_EQ(TestProfiles::ReadFile(copy->GetPath()), bytes);
        EXPECT_NO_THROW(ValidateColorProfileConsistency(path));
    }
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_THROW(ValidateColorProfileConsistency(path), CmUnappropriateProfileException);
    EXPECT_EQ(ThrownText<CmException>([] { GetProfileData(nullptr); }), "Bitmap doesn't have color profile.");
    EXPECT_EQ(ThrownText<CmException>([] { GetProfileDataSize(nullptr); }), "Bitmap doesn't have color profile.");
    const std::filesystem::path missing = "/nonexistent/p.icc";
    EXPECT_EQ(ThrownText<FileOpenException>([&] { GetProfileDataSize(&missing); }),
              "Unable to open file '/nonexistent/p.icc'.");
    EXPECT_THROW(DuplicateColorProfile(missing), FileOpenException);
}

/// Sets a variable of the environment as long as this lives.
class Variable {
public:
    Variable(const char* name, const std::string& value) : m_name(name) {
        if (const char* const old = std::getenv(name)) {
            m_old = old;
        }
        ::setenv(name, value.c_str(), 1);
    }
    ~Variable() { m_old ? ::setenv(m_name, m_old->c_str(), 1) : ::unsetenv(m_name); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
    std::optional<std::string> m_old;
};

TEST(SystemProfiles, FindsOrMakesSRgb) {
    const TempFolder root;
    const std::filesystem::path profiles = root.File("one/color/icc");
    std::filesystem::create_directories(profiles / "vendor");
    const Variable dirs("XDG_DATA_DIRS", root.File("none").string() + ":" + root.File("one").string());
    const Variable home("XDG_DATA_HOME", root.File("home").string());
    if (!std::filesystem::exists("/usr/share/color/icc")) {
        EXPECT_EQ(GetSystemProfileDirectory(), profiles);
        // Without a file one is made, of version 2.1, always with the same bytes, and shared.
        const auto made = GetSRgbProfile();
        EXPECT_TRUE(made->IsTemporary());
        EXPECT_EQ(GetSRgbProfile(), made);
        const Bytes bytes = TestProfiles::ReadFile(made->GetPath());
        EXPECT_EQ(bytes.at(8), 2);
        EXPECT_EQ(bytes.at(9), 0x10);
        EXPECT_EQ(Open(bytes).GetColorSpace(), 0x01000000U);
        std::filesystem::remove(made->GetPath()); // as those do who tidy up
        EXPECT_EQ(TestProfiles::ReadFile(GetSRgbProfile()->GetPath()), bytes);
    }
    const auto place = [&](const char* name, const Bytes& bytes) {
        return root.Write(profiles / name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    };
    // The well-known name goes before all others, in any case of letters; what is no RGB profile is passed over.
    place("srgb color space profile.ICM", Bytes(500));
    const auto usual = place("vendor/sRGB.icc", TestProfiles::SRgb());
    if (!std::filesystem::exists("/usr/share/color/icc")) {
        EXPECT_EQ(GetSRgbProfile()->GetPath(), usual);
    }
    const auto known = place("vendor/SRGB Color Space Profile.icm", TestProfiles::SRgb());
    EXPECT_EQ(GetSRgbProfile()->GetPath(), known);
    EXPECT_FALSE(GetSRgbProfile()->IsTemporary());
}

} // namespace
} // namespace ImagingFramework
