#include "Codecs/StreamWrapper.h"

#include "metadata/Streams/StreamReader.h"
#include "metadata/Streams/StreamWriter.h"

#include <Corvane/Rasterloom/Host/Errors.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include "Throws.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace Corvane::Rasterloom::Codecs {
namespace {

namespace Engine = ImagingFramework;

struct HostFailure {
    int Number;
};

/// A host's stream that can do what it is told and fails in the host's own way.
class MoodyStream : public Host::MemoryStream {
public:
    using Host::MemoryStream::MemoryStream;
    bool Readable = true;
    bool Writable = true;
    bool Seekable = true;
    bool Fails = false;

    bool get_CanRead() const override { return Readable && Host::MemoryStream::get_CanRead(); }
    bool get_CanWrite() const override { return Writable && Host::MemoryStream::get_CanWrite(); }
    bool get_CanSeek() const override {
        if (Fails) {
            throw HostFailure{8};
        }
        return Seekable && Host::MemoryStream::get_CanSeek();
    }
    std::size_t Read(void* buffer, std::size_t size) override {
        if (Fails) {
            throw HostFailure{7};
        }
        return Host::MemoryStream::Read(buffer, std::min<std::size_t>(size, 3)); // in small pieces
    }
    std::int64_t Seek(std::int64_t offset, Host::SeekOrigin origin) override {
        if (!Seekable) {
            throw Host::NotSupportedException();
        }
        return Host::MemoryStream::Seek(offset, origin);
    }
};

std::string FailureText(StreamWrapper& wrapper) {
    try {
        wrapper.RethrowFailure();
    } catch (const Host::Exception& exception) {
        return exception.get_Message();
    }
    return "none";
}

TEST(StreamWrapper, RewindsAndReadsWhole) {
    const auto stream = std::make_shared<MoodyStream>(std::vector<std::uint8_t>(200, 5));
    stream->set_Position(100);
    const auto wrapper = std::make_shared<StreamWrapper>(stream);
    EXPECT_EQ(stream->get_Position(), 0);
    Engine::StreamReader reader(wrapper, 16);
    EXPECT_EQ(reader.ReadBytes(200)[199], 5);
    Engine::StreamWriter writer(wrapper, 16);
    writer.Seek(0, Engine::SeekOrigin::End);
    writer.WriteBytes("0123456789abcdefXYZ", 19);
    writer.Flush();
    EXPECT_EQ(stream->GetBuffer().size(), 219U);
    EXPECT_EQ(stream->GetBuffer()[218], 'Z');
    std::uint64_t size = 0;
    EXPECT_TRUE(wrapper->SetSize(10) && wrapper->Commit() && wrapper->Stat(&size));
    EXPECT_EQ(size, 10U);
    EXPECT_EQ(wrapper->GetFailure(), nullptr);
}

TEST(StreamWrapper, KeepsTheHostsFailure) {
    const auto stream = std::make_shared<MoodyStream>(std::vector<std::uint8_t>(100, 5));
    const auto wrapper = std::make_shared<StreamWrapper>(stream);
    Engine::StreamReader reader(wrapper, 16);
    stream->Fails = true;
    std::uint64_t value = 0;
    EXPECT_FALSE(wrapper->Stat(&value) || wrapper->Seek(0, Engine::SeekOrigin::Current, &value));
    EXPECT_THROW(reader.ReadBytes(50), Engine::StreamReadException);
    try {
        wrapper->RethrowFailure();
        ADD_FAILURE();
    } catch (const HostFailure& failure) {
        EXPECT_EQ(failure.Number, 7);
    }
    EXPECT_NO_THROW(wrapper->RethrowFailure()); // once
}

TEST(StreamWrapper, WhatTheStreamCannotDo) {
    EXPECT_THROW(StreamWrapper(nullptr), Host::ArgumentNullException);
    const auto stream = std::make_shared<MoodyStream>(std::vector<std::uint8_t>(100, 5));
    stream->Seekable = false;
    StreamWrapper wrapper(stream);
    std::uint64_t value = 0;
    EXPECT_FALSE(wrapper.Stat(&value) || wrapper.Seek(0, Engine::SeekOrigin::Current, &value));
    EXPECT_EQ(wrapper.GetFailure(), nullptr); // only questions
    EXPECT_FALSE(wrapper.Seek(0, Engine::SeekOrigin::Begin, nullptr));
    EXPECT_EQ(FailureText(wrapper), "Seek method is not supported in the given stream type.");
    stream->Readable = stream->Writable = false;
    EXPECT_FALSE(wrapper.Read(&value, 1, nullptr));
    EXPECT_EQ(FailureText(wrapper), "Read method is not supported in the given stream type.");
    EXPECT_FALSE(wrapper.Write(&value, 1, &value));
    EXPECT_EQ(value, 0U);
    EXPECT_EQ(FailureText(wrapper), "Write method is not supported in the given stream type!");
    stream->Seekable = true;
    EXPECT_FALSE(wrapper.Seek(0, static_cast<Engine::SeekOrigin>(3), nullptr));
    EXPECT_EQ(FailureText(wrapper), "dwOrigin has unappropriated value.");
    stream->Close();
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { StreamWrapper closed(stream); }), "Stream has been closed.");
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
