#include <Corvane/Rasterloom/Host/Errors.h>
#include <Corvane/Rasterloom/Host/FileStream.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>
#include <Corvane/Rasterloom/Host/StdStream.h>

#include "TempFolder.h"

#include <array>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace Corvane::Rasterloom::Host {
namespace {

std::string ReadAll(Stream& stream) {
    std::string text;
    std::array<char, 5> block{};
    while (const std::size_t read = stream.Read(block.data(), block.size())) {
        text.append(block.data(), read);
    }
    return text;
}

/// What every stream that reads, writes and seeks has in common; it must be empty.
void CheckFullStream(Stream& stream) {
    ASSERT_TRUE(stream.get_CanRead() && stream.get_CanWrite() && stream.get_CanSeek());
    stream.Write("hello world", 11);
    EXPECT_EQ(stream.get_Position(), 11);
    EXPECT_EQ(stream.Seek(-5, SeekOrigin::End), 6);
    EXPECT_EQ(ReadAll(stream), "world");
    EXPECT_EQ(stream.Seek(-11, SeekOrigin::Current), 0);
    stream.Write("J", 1);
    EXPECT_EQ(ReadAll(stream), "ello world"); // one position for both
    stream.set_Position(13);                  // beyond the end is legal
    EXPECT_EQ(ReadAll(stream), "");
    stream.Write("!", 1);
    EXPECT_EQ(stream.get_Length(), 14);
    stream.set_Position(0);
    EXPECT_EQ(ReadAll(stream), std::string("Jello world\0\0!", 14));
    stream.Write(nullptr, 0);
    EXPECT_EQ(stream.Read(nullptr, 0), 0U);
    EXPECT_THROW(stream.Write(nullptr, 1), ArgumentNullException);
    stream.set_Position(0);
    EXPECT_THROW(stream.Read(nullptr, 1), ArgumentNullException);
    stream.set_Position(14);
    EXPECT_THROW(stream.Seek(-1, SeekOrigin::Begin), IOException);
    EXPECT_THROW(stream.Seek(1, static_cast<SeekOrigin>(7)), IOException);
    EXPECT_EQ(stream.get_Position(), 14);
    stream.Flush();
}

void CheckClosed(Stream& stream) {
    stream.Close();
    stream.Close();
    EXPECT_FALSE(stream.get_CanRead() || stream.get_CanWrite() || stream.get_CanSeek());
    char byte = 0;
    EXPECT_THROW(stream.Read(&byte, 1), ObjectDisposedException);
    EXPECT_THROW(stream.Write(&byte, 1), ObjectDisposedException);
    EXPECT_THROW(stream.get_Length(), ObjectDisposedException);
    EXPECT_THROW(stream.Seek(0, SeekOrigin::Begin), ObjectDisposedException);
}

class HostStreamFiles : public testing::Test, protected TempFolder {};

TEST_F(HostStreamFiles, MemoryAndFiles) {
    MemoryStream memory;
    CheckFullStream(memory);
    memory.SetLength(5);
    CheckClosed(memory);
    EXPECT_EQ(memory.GetBuffer(), (std::vector<std::uint8_t>{'J', 'e', 'l', 'l', 'o'}));

    FileStream file(m_folder / "file", FileMode::CreateNew);
    CheckFullStream(file);
    file.SetLength(5);
    EXPECT_EQ(file.get_Length(), 5);
    EXPECT_THROW(file.SetLength(-1), ArgumentOutOfRangeException);
    CheckClosed(file);
    EXPECT_EQ(file.get_Name(), m_folder / "file");

    FileStream append(m_folder / "file", FileMode::Append, FileAccess::Write);
    append.Write("w", 1);
    EXPECT_EQ(append.get_Position(), 6);
    EXPECT_THROW(append.Read(nullptr, 1), NotSupportedException);
    FileStream reader(m_folder / "file", FileMode::Open, FileAccess::Read);
    EXPECT_EQ(ReadAll(reader), "Jellow");
    EXPECT_THROW(reader.Write("x", 1), NotSupportedException);
    EXPECT_THROW(reader.SetLength(0), NotSupportedException);
}

TEST_F(HostStreamFiles, FilesThatDoNotOpen) {
    { FileStream empty(m_folder / "file", FileMode::Create, FileAccess::Write); }
    EXPECT_THROW(FileStream("", FileMode::Open), ArgumentException);
    EXPECT_THROW(FileStream(m_folder / "none", FileMode::Open), FileNotFoundException);
    EXPECT_THROW(FileStream(m_folder / "none", FileMode::Truncate, FileAccess::Write), FileNotFoundException);
    EXPECT_THROW(FileStream(m_folder / "none" / "file", FileMode::Create), DirectoryNotFoundException);
    EXPECT_THROW(FileStream(m_folder / "file" / "file", FileMode::Open), DirectoryNotFoundException);
    EXPECT_THROW(FileStream(m_folder / "file", FileMode::CreateNew), IOException);
    EXPECT_THROW(FileStream(m_folder, FileMode::Open), UnauthorizedAccessException);
    EXPECT_THROW(FileStream(m_folder / "file", FileMode::Create, FileAccess::Read), ArgumentException);
    EXPECT_THROW(FileStream(m_folder / "file", static_cast<FileMode>(9)), ArgumentOutOfRangeException);
}

TEST_F(HostStreamFiles, StandardStreams) {
    std::stringstream text;
    StdStream both(text);
    CheckFullStream(both);
    EXPECT_THROW(both.SetLength(1), NotSupportedException);
    CheckClosed(both);
    std::fstream file(m_folder / "file", std::ios::in | std::ios::out | std::ios::trunc | std::ios::binary);
    StdStream onFile(file);
    CheckFullStream(onFile);
    CheckClosed(onFile);

    std::istringstream input("0123456789");
    input.exceptions(std::ios::eofbit | std::ios::failbit);
    input.seekg(3);
    StdStream reader(input);
    EXPECT_EQ(reader.get_Position(), 3);
    EXPECT_EQ(ReadAll(reader), "3456789"); // the end raises nothing
    EXPECT_EQ(reader.get_Length(), 10);
    EXPECT_FALSE(reader.get_CanWrite());
    EXPECT_THROW(reader.Write("x", 1), NotSupportedException);

    /// A buffer that only takes bytes, and not many.
    struct Sink : std::streambuf {
        std::string Taken;
        int_type overflow(int_type c) override {
            if (Taken.size() == 8) {
                return traits_type::eof();
            }
            Taken.push_back(traits_type::to_char_type(c));
            return c;
        }
    } sink;
    std::ostream output(&sink);
    StdStream writer(output);
    EXPECT_FALSE(writer.get_CanSeek());
    EXPECT_THROW(writer.Seek(0, SeekOrigin::Begin), NotSupportedException);
    EXPECT_THROW(writer.get_Length(), NotSupportedException);
    writer.Write("abcd", 4);
    EXPECT_EQ(sink.Taken, "abcd");
    EXPECT_THROW(writer.Write("efghi", 5), IOException);
}

} // namespace
} // namespace Corvane::Rasterloom::Host
