#include "metadata/RecognizeMediaFormat.h"

#include "ErrorHandling/Exceptions.h"
#include "FaultyStream.h"
#include "metadata/MimeTypes.h"

#include <gtest/gtest.h>
#include <string>

namespace ImagingFramework {
namespace {

using namespace std::string_literals;

/// Memory that claims to be a file.
class NamedStream : public IFileStream {
public:
    NamedStream(std::string name, const std::string& bytes)
        : m_name(std::move(name)), m_stream({bytes.begin(), bytes.end()}) {}
    bool Read(void* pBuffer, std::uint64_t size, std::uint64_t* pRead) override {
        return m_stream.Read(pBuffer, size, pRead);
    }
    bool Write(const void*, std::uint64_t, std::uint64_t*) override { return false; }
    bool Seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* pPosition) override {
        return m_stream.Seek(offset, origin, pPosition);
    }
    bool Stat(std::uint64_t* pSize) override { return m_stream.Stat(pSize); }
    bool SetSize(std::uint64_t) override { return false; }
    bool Commit() override { return true; }
    std::filesystem::path GetFileName() const override { return m_name; }

private:
    std::filesystem::path m_name;
    MemoryStream m_stream;
};

FileFormat Recognize(const std::string& bytes) {
    FaultyStream stream({bytes.begin(), bytes.end()});
    const FileFormat format = RecognizeMediaFormat(&stream);
    EXPECT_EQ(stream.Position(), 0U) << "the position is kept";
    return format;
}

TEST(RecognizeMediaFormat, ByContent) {
    const std::string jp2 = "\x00\x00\x00\x0C\x6A\x50\x20\x20\x0D\x0A\x87\x0A"s;
    const std::string asf = "\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"s;
    const std::string wbmp = "\x00\x00\x81\x00\x05\xFF"s; // 128 by 5
    const std::pair<std::string, FileFormat> cases[] = {
        {"\xFF\xD8\xFF"s, FileFormat::Jpeg},
        {"BM", FileFormat::Bmp},
        {"\x89PNG"s, FileFormat::Png},
        {"II", FileFormat::Tiff},
        {"MM", FileFormat::Tiff},
        {"\x0A\x63\x01"s, FileFormat::Pcx},
        {"GIF", FileFormat::Gif},
        {"8BPS", FileFormat::Psd},
        {jp2, FileFormat::Jpeg2k},
        {"RIFF", FileFormat::Avi},
        {asf, FileFormat::Asf},
        {wbmp, FileFormat::Wbmp},
    };
    for (const auto& [bytes, format] : cases) {
        EXPECT_EQ(Recognize(bytes + "rest of the file"s), format) << bytes;
        EXPECT_EQ(Recognize(bytes), format) << "nothing behind it: " << bytes;
        EXPECT_EQ(Recognize(bytes.substr(0, bytes.size() - 1)), FileFormat::Unknown) << bytes;
    }
    EXPECT_EQ(Recognize(""), FileFormat::Unknown);
    EXPECT_EQ(Recognize("\x0A\x05\x02"s), FileFormat::Unknown) << "another encoding";
    EXPECT_THROW(RecognizeMediaFormat(nullptr), ArgumentNullPointerException);
    EXPECT_THROW(TryWbmpFormat(nullptr), ArgumentNullPointerException);
}

TEST(RecognizeMediaFormat, WirelessBitmaps) {
    const std::pair<std::string, bool> cases[] = {
        {"\x00\x00"s, false},
        {"\x00\x00\x01\x01\x80"s, true},
        {"\x00\x00\x01\x01"s, false},             // no pixels
        {"\x00\x00\x00\x01\x80"s, false},         // width 0
        {"\x00\x00\x01\x80\x80\x00\x80"s, false}, // height 0 in three bytes
        {"\x00\x01\x01\x01\x80"s, false},         // an extended header
        {"\x01\x00\x01\x01\x80"s, false},         // another type
        {"\x00\x00"s + std::string(9, '\x80') + "\x01\x01\x80"s, true},
        {"\x00\x00"s + std::string(10, '\x80') + "\x01\x01\x80"s, false}, // eleven bytes
        {"\x00\x00\x8F\xFF\xFF\xFF\x7F\x01\x80"s, true},               // 2^32 - 1
        {"\x00\x00\x90\x80\x80\x80\x00\x01\x80"s, false},              // 2^32
    };
    for (const auto& [bytes, matches] : cases) {
        FaultyStream stream({bytes.begin(), bytes.end()});
        EXPECT_EQ(TryWbmpFormat(&stream), matches) << testing::PrintToString(bytes);
        EXPECT_EQ(stream.Position(), 0U);
    }
}

TEST(RecognizeMediaFormat, AFailingStreamIsNoMatchAndAPositionIsABeginning) {
    FaultyStream failing({'B', 'M', 0, 0});
    failing.FailReadAt = 1;
    EXPECT_EQ(RecognizeMediaFormat(&failing), FileFormat::Unknown);
    FaultyStream inside({'x', 'x', 'G', 'I', 'F'});
    inside.Seek(2, SeekOrigin::Begin, nullptr);
    EXPECT_EQ(RecognizeMediaFormat(&inside), FileFormat::Gif);
    EXPECT_EQ(inside.Position(), 2U);
}

TEST(RecognizeMediaFormat, TheNameOnlyChangesTheOrder) {
    NamedStream jpegNamedPng("dir.png/picture.png", "\xFF\xD8\xFF\xE0"s);
    EXPECT_EQ(RecognizeMediaFormat(&jpegNamedPng), FileFormat::Jpeg);
    for (const char* name : {"a.pcx", "a.PCX", "a", "a.bmp"}) {
        NamedStream stream(name, "\x0A\x05\x01"s);
        EXPECT_EQ(RecognizeMediaFormat(&stream), FileFormat::Pcx) << name;
    }
}

TEST(MimeTypes, TheEndsOfTheTable) {
    EXPECT_EQ(MimeTypes::GetFormatDescriptionRef(FileFormat::UnknownBeforeOpen), "Unknown (no file has been opened)");
    EXPECT_EQ(MimeTypes::GetFilterStringRef(FileFormat::Bmp), "*.bmp;*.dib");
    EXPECT_EQ(MimeTypes::GetDefaultExtensionRef(FileFormat::Wbmp), "*.wbmp");
    EXPECT_EQ(MimeTypes::GetMimeTypeRef(FileFormat::Jpeg2k), "image/jp2");
    EXPECT_EQ(MimeTypes::GetFormatNameRef(FileFormat::Mpeg), "MPEG");
    EXPECT_THROW(MimeTypes::GetFormatNameRef(static_cast<FileFormat>(17)), UnexpectedException);
    EXPECT_THROW(MimeTypes::GetFormatNameRef(static_cast<FileFormat>(-2)), UnexpectedException);
}

} // namespace
} // namespace ImagingFramework
