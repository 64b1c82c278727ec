#include "TestProfiles.h"
#include "metadata/MetaData.h"

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/FormatReader.h>
#include <Corvane/Rasterloom/Codecs/Frame.h>
#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include <gtest/gtest.h>

namespace Corvane::Rasterloom::Codecs {
namespace {

namespace engine = ImagingFramework;

/// A format of one frame that consists of a profile alone.
class ProfiledMetaData : public engine::MetaData {
public:
    explicit ProfiledMetaData(TestProfiles::Bytes profile) : m_profile(std::move(profile)) {}
    bool GetItem(engine::ItemTag& tag) override {
        switch (tag.GetMetaDataId()) {
        case engine::MetaDataId::FrameCount:
            tag = std::int32_t{1};
            return true;
        case engine::MetaDataId::ColorProfile:
            tag = new engine::ColorProfileData(m_profile);
            return true;
        default:
            return MetaData::GetItem(tag);
        }
    }

protected:
    void RefreshRead() override {}
    void RefreshWrite() override {}
    void DetachFrames() override {}
    std::span<const engine::PixelFormat> GetSavedPixelFormats() const override { return {}; }
    engine::PixelFormat GetAppropriateFormatInternal(engine::PixelFormat format) const override { return format; }

private:
    TestProfiles::Bytes m_profile;
};

class ProfiledFrame : public Frame {
public:
    ProfiledFrame(FormatReader& reader, std::int32_t index) : Frame(reader, index) {}
};

class ProfiledReader : public FormatReader {
public:
    explicit ProfiledReader(const TestProfiles::Bytes& profile)
        : FormatReader(FormatManager::BmpFormat, std::make_unique<ProfiledMetaData>(profile)) {}
    ~ProfiledReader() override { DisposeFinally(); }
    std::unique_ptr<IFormatReader> Clone() override { return nullptr; }

protected:
    std::unique_ptr<Frame> OnFrameLoad(std::int32_t index) override {
        return std::make_unique<ProfiledFrame>(*this, index);
    }
};

TEST(FrameColorProfile, ComesFromTheReaderOnce) {
    const auto stream = std::make_shared<Host::MemoryStream>();
    stream->Write("any", 3);
    const TestProfiles::Bytes bytes = TestProfiles::Gray();
    const auto profileOf = [&](const TestProfiles::Bytes& embedded) {
        stream->set_Position(0);
        ProfiledReader reader(embedded);
        reader.Open(stream);
        const auto frame = reader.LoadFrame(0);
        const auto profile = frame->get_ColorProfile();
        EXPECT_EQ(frame->get_ColorProfile(), profile);
        return profile;
    };
    const auto profile = profileOf(bytes); // outlives frame and reader
    EXPECT_EQ(profile->get_Model(), "Scanner");
    EXPECT_EQ(TestProfiles::ReadFile(profile->get_FileName()), bytes);
    // Nothing, and what is no profile, are none; the picture is not refused for it.
    EXPECT_EQ(profileOf({}), nullptr);
    EXPECT_EQ(profileOf(TestProfiles::Bytes(300, 1)), nullptr);
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
