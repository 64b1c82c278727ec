#include <Corvane/Rasterloom/Codecs/FileStream.h>
#include <Corvane/Rasterloom/Codecs/NonSeekableStreamProxy.h>
#include <Corvane/Rasterloom/Codecs/StreamUtils.h>
#include <Corvane/Rasterloom/Host/Errors.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include "TempFolder.h"
#include "Throws.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace Corvane::Rasterloom::Codecs {
namespace {

namespace fs = std::filesystem;

/// Bytes that come once, a few at a time, as from a pipe.
class PipeStream : public Host::MemoryStream {
public:
    using Host::MemoryStream::MemoryStream;
    bool get_CanSeek() const override { return false; }
    std::int64_t Seek(std::int64_t, Host::SeekOrigin) override { throw Host::NotSupportedException(); }
    std::size_t Read(void* buffer, std::size_t size) override {
        if (Fails) {
            throw Host::IOException("broken pipe");
        }
        if (Boasts) {
            return size + 1;
        }
        return Host::MemoryStream::Read(buffer, std::min<std::size_t>(size, 7));
    }
    bool Fails = false;
    bool Boasts = false; ///< tells more bytes than there was room for
};

std::vector<std::uint8_t> Bytes(std::size_t count) {
    std::vector<std::uint8_t> bytes(count);
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] = static_cast<std::uint8_t>(i * 31);
    }
    return bytes;
}

/// Temporary files go into a folder of the test's own.
class CodecStreams : public testing::Test, protected TempFolder {
protected:
    CodecStreams() { ::setenv("TMPDIR", m_folder.c_str(), 1); }
    ~CodecStreams() override { ::unsetenv("TMPDIR"); }
};

TEST_F(CodecStreams, ProxyForwardsToAStreamThatSeeks) {
    const auto stream = std::make_shared<Host::MemoryStream>(Bytes(10));
    stream->set_Position(4);
    NonSeekableStreamProxy proxy(stream);
    EXPECT_EQ(proxy.get_Mode(), ProxyMode::OriginalStream);
    EXPECT_EQ(proxy.get_Position(), 4);
    proxy.Write("x", 1);
    proxy.SetLength(20);
    EXPECT_EQ(stream->get_Length(), 20);
    EXPECT_EQ(stream->get_Position(), 5);
    EXPECT_TRUE(Names().empty());
    proxy.Close();
    EXPECT_FALSE(proxy.get_CanRead());
    EXPECT_THROW(proxy.get_Length(), Host::ObjectDisposedException);
    EXPECT_TRUE(stream->get_CanRead()); // it is the host's
}

TEST_F(CodecStreams, ProxyCopiesAStreamThatDoesNot) {
    const auto bytes = Bytes(200000);
    {
        NonSeekableStreamProxy proxy(std::make_shared<PipeStream>(bytes));
        EXPECT_EQ(proxy.get_Mode(), ProxyMode::CopiedStream);
        EXPECT_EQ(proxy.get_Position(), 0);
        EXPECT_EQ(proxy.get_Length(), 200000);
        EXPECT_EQ(Names().size(), 1U);
        proxy.Seek(-2, Host::SeekOrigin::End);
        std::vector<std::uint8_t> out(2);
        EXPECT_EQ(proxy.Read(out.data(), 2), 2U);
        EXPECT_TRUE(std::equal(out.begin(), out.end(), bytes.end() - 2));
    }
    EXPECT_TRUE(Names().empty());
    const auto broken = std::make_shared<PipeStream>(bytes);
    broken->Fails = true;
    EXPECT_EQ(ThrownText<Host::IOException>([&] { NonSeekableStreamProxy proxy(broken); }), "broken pipe");
    broken->Fails = false;
    broken->Boasts = true;
    EXPECT_THROW(NonSeekableStreamProxy proxy(broken), Host::IOException);
    EXPECT_TRUE(Names().empty());
    ::setenv("TMPDIR", "/nowhere/at/all", 1);
    EXPECT_THROW(NonSeekableStreamProxy proxy(std::make_shared<PipeStream>(bytes)), Host::IOException);
    EXPECT_THROW(NonSeekableStreamProxy(nullptr), Host::ArgumentNullException);
    broken->Close();
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { NonSeekableStreamProxy proxy(broken); }),
              "The stream has already been closed.");
}

TEST_F(CodecStreams, FileStreamLeavesNoEmptyFile) {
    const fs::path name = m_folder / "file";
    {
        FileStream stream(name, Host::FileMode::Create);
        stream.Write("x", 1);
        stream.SetLength(0);
    }
    EXPECT_FALSE(fs::exists(name));
    {
        const fs::path before = fs::current_path();
        fs::current_path(m_folder);
        FileStream stream("file", Host::FileMode::Create);
        fs::current_path(before); // the name still means the same file
        stream.Close();
        EXPECT_FALSE(fs::exists(name));
        FileStream other(name, Host::FileMode::Create);
        other.Write("x", 1);
    } // the first has had its only look
    EXPECT_EQ(fs::file_size(name), 1U);
    { Host::FileStream plain(name, Host::FileMode::Truncate); }
    { FileStream reader(name, Host::FileMode::Open, Host::FileAccess::Read); }
    EXPECT_TRUE(fs::exists(name));
}

TEST_F(CodecStreams, CopiesAreBounded) {
    const auto bytes = Bytes(150);
    const auto source = std::make_shared<Host::MemoryStream>(bytes);
    const auto target = std::make_shared<Host::MemoryStream>();
    EXPECT_EQ(StreamUtils::Copy(source, target, 101), 101U);
    EXPECT_EQ(source->get_Position(), 101);
    EXPECT_EQ(StreamUtils::Copy(source, target, 1000), 49U); // a short source ends the copy
    EXPECT_EQ(target->GetBuffer(), bytes);
    EXPECT_EQ(StreamUtils::Copy(source, target), 0U);
    source->set_Position(0);
    std::vector<std::uint8_t> memory(160, 0xEE);
    EXPECT_EQ(StreamUtils::Copy(source, memory.data(), 160), 150U);
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), memory.begin()));
    EXPECT_EQ(memory[150], 0xEE);
    target->set_Position(0);
    EXPECT_EQ(StreamUtils::Copy(bytes.data() + 1, target, 3), 3U);
    EXPECT_EQ(target->GetBuffer()[2], bytes[3]);
    EXPECT_EQ(target->get_Length(), 150);

    const std::shared_ptr<Host::Stream> none;
    EXPECT_EQ(StreamUtils::Copy(none, none, 0), 0U);
    EXPECT_THROW(StreamUtils::Copy(none, target, 1), Host::ArgumentNullException);
    EXPECT_THROW(StreamUtils::Copy(source, none, 1), Host::ArgumentNullException);
    EXPECT_THROW(StreamUtils::Copy(source, static_cast<void*>(nullptr), 1), Host::ArgumentNullException);
    EXPECT_THROW(StreamUtils::Copy(static_cast<const void*>(nullptr), target, 1), Host::ArgumentNullException);
    target->Close();
    EXPECT_THROW(StreamUtils::Copy(source, target, 1), Host::NotSupportedException);
    EXPECT_THROW(StreamUtils::Copy(target, source, 1), Host::NotSupportedException);
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
