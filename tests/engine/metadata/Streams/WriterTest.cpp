#include "ErrorHandling/Exceptions.h"
#include "FaultyStream.h"
#include "metadata/Streams/AbstractReader.h"
#include "metadata/Streams/MemoryWriter.h"
#include "metadata/Streams/RandomNumbers.h"
#include "metadata/Streams/StreamWriter.h"

#include <array>
#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

using Bytes = std::vector<std::uint8_t>;

/// Puts single bits; what every writer must equal.
void SetBits(Bytes& bytes, std::uint64_t at, const Bytes& source, std::uint64_t skip, std::uint64_t count) {
    for (std::uint64_t i = 0; i < count; ++i) {
        const auto mask = static_cast<std::uint8_t>(0x80U >> (at + i) % 8);
        const bool bit = (source[(skip + i) / 8] << (skip + i) % 8 & 0x80) != 0;
        std::uint8_t& byte = bytes[(at + i) / 8];
        byte = static_cast<std::uint8_t>(bit ? byte | mask : byte & ~mask);
    }
}

TEST(Writer, EveryWidthAndOffsetEqualsBitByBit) {
    RandomNumbers random(1);
    Bytes source(12);
    for (std::uint8_t& byte : source) {
        byte = static_cast<std::uint8_t>(random.Next() >> 7);
    }
    const Bytes before(10, 0x5A);
    for (std::uint64_t at = 0; at < 16; ++at) {
        for (std::uint64_t skip = 0; skip < 10; ++skip) {
            for (std::uint64_t count = 0; count <= 44; count += 1 + count / 12) {
                Bytes expected = before;
                SetBits(expected, at, source, skip, count);
                Bytes memory = before;
                MemoryWriter writer(memory.data(), memory.size());
                writer.Seek(static_cast<std::int64_t>(at), SeekOrigin::Begin, true);
                writer.WriteBits(source.data(), count, skip);
                ASSERT_EQ(memory, expected) << at << " " << skip << " " << count;
                ASSERT_EQ(writer.GetPosition(), at + count);
                for (const std::uint64_t interim : {1U, 3U, 64U}) {
                    const auto stream = std::make_shared<FaultyStream>(before);
                    {
                        StreamWriter streamWriter(stream, interim);
                        streamWriter.Seek(static_cast<std::int64_t>(at), SeekOrigin::Begin, true);
                        streamWriter.WriteBits(source.data(), count, skip);
                        ASSERT_EQ(streamWriter.GetPosition(), at + count);
                    }
                    ASSERT_EQ(stream->GetBytes(), expected) << at << " " << skip << " " << count << " " << interim;
                }
            }
        }
    }
}

TEST(Writer, MemsetRepeatsThePattern) {
    for (const std::uint64_t at : {0U, 3U, 8U}) {
        for (const std::uint64_t bits : {1U, 3U, 8U, 11U, 24U, 5000U}) {
            for (const std::uint64_t count : {1U, 7U, 9U, 1500U}) {
                Bytes pattern(bits / 8 + 1, 0xB1);
                pattern[0] = 0xD6;
                const std::uint64_t total = at + bits * count;
                Bytes expected(total / 8 + 2);
                for (std::uint64_t i = 0; i < count; ++i) {
                    SetBits(expected, at + i * bits, pattern, 0, bits);
                }
                Bytes memory(expected.size());
                MemoryWriter writer(memory.data(), memory.size());
                writer.Seek(static_cast<std::int64_t>(at), SeekOrigin::Begin, true);
                writer.Memset(pattern.data(), bits, count, true);
                ASSERT_EQ(memory, expected) << at << " " << bits << " " << count;
                ASSERT_EQ(writer.GetPosition(), total);

                const auto stream = std::make_shared<FaultyStream>();
                StreamWriter streamWriter(stream, 100);
                streamWriter.Seek(static_cast<std::int64_t>(at), SeekOrigin::Begin, true);
                streamWriter.Memset(pattern.data(), bits, count, false);
                ASSERT_EQ(streamWriter.GetPosition(), at);
                streamWriter.Flush();
                expected.resize((total + 7) / 8);
                ASSERT_EQ(stream->GetBytes(), expected) << at << " " << bits << " " << count;
            }
        }
    }
}

TEST(Writer, MemsetToTheEnd) {
    Bytes memory(4, 0xFF);
    MemoryWriter writer(memory.data(), memory.size());
    writer.Seek(4, SeekOrigin::Begin, true);
    const std::uint8_t pattern = 0x60; // 011
    writer.Memset(&pattern, 3);
    // 1111 then 0110'1101 1011'0110 1101'1011, of which 28 bits fit: 011'011'011'011'011'011'011'011'011'0
    EXPECT_EQ(memory, (Bytes{0xF6, 0xDB, 0x6D, 0xB6}));
    EXPECT_EQ(writer.GetPosition(), 4U);
    writer.Seek(0, SeekOrigin::End);
    writer.Memset(&pattern, 3, 100, true); // nothing at the capacity
    writer.Seek(3);
    EXPECT_THROW(writer.Memset(&pattern, 3, 3, true), OutOfRangeException);
    EXPECT_THROW(writer.Memset(&pattern, 3, ~std::uint64_t{0}, true), OutOfRangeException);
    EXPECT_THROW(writer.Memset(nullptr, 3, 1, true), ArgumentNullPointerException);
    EXPECT_EQ(memory[3], 0xB6);
}

TEST(MemoryWriter, StopsAtItsCapacity) {
    Bytes memory(4);
    MemoryWriter writer(memory.data(), memory.size());
    EXPECT_THROW(MemoryWriter(nullptr, 1), ArgumentNullPointerException);
    EXPECT_THROW(writer.WriteBytes(nullptr, 1), ArgumentNullPointerException);
    EXPECT_THROW(writer.WriteBits(nullptr, 1, 0), ArgumentNullPointerException);
    writer.WriteWord(0x1234);
    writer.WriteBit(true);
    EXPECT_THROW(writer.WriteWord(1), OutOfRangeException);
    EXPECT_THROW(writer.WriteBytes(memory.data(), ~std::uint64_t{0}), OutOfRangeException);
    writer.WriteString("A");
    EXPECT_EQ(writer.GetPosition(), 25U);
    EXPECT_EQ(memory, (Bytes{0x34, 0x12, 0xA0, 0x80}));
    EXPECT_EQ(writer.CreateReader()->ReadBits(7, false)[0], 0);
    writer.Seek(4);
    EXPECT_THROW(writer.WriteBit(true), OutOfRangeException);
}

TEST(StreamWriter, KeepsTheBitsBelowAPartialByte) {
    const auto stream = std::make_shared<FaultyStream>(Bytes{0xFF, 0xFF, 0x3F});
    StreamWriter writer(stream);
    const std::uint8_t bits = 0x40; // 010
    writer.WriteBits(&bits, 3, 0);
    writer.Flush();
    EXPECT_EQ(stream->GetBytes(), (Bytes{0x5F, 0xFF, 0x3F}));
    const int writes = stream->Writes;
    writer.Flush(); // nothing new
    EXPECT_EQ(stream->Writes, writes);
    writer.WriteBits(&bits, 8, 0); // the byte is completed
    writer.Flush();
    EXPECT_EQ(stream->GetBytes(), (Bytes{0x48, 0x1F, 0x3F}));
    writer.Seek(1, SeekOrigin::End);
    writer.WriteBit(true);
    writer.Flush();
    EXPECT_EQ(stream->GetBytes(), (Bytes{0x48, 0x1F, 0xBF}));
    // A seek alone changes nothing, not even behind the end.
    writer.Seek(100, SeekOrigin::Begin, true);
    writer.Flush();
    EXPECT_EQ(stream->GetBytes().size(), 3U);
    writer.WriteBit(true);
    writer.Flush();
    EXPECT_EQ(stream->GetBytes().size(), 13U);
    EXPECT_EQ(stream->GetBytes()[12], 0x08);
}

TEST(StreamWriter, BlocksAndSmallWritesKeepTheirOrder) {
    const auto stream = std::make_shared<FaultyStream>();
    Bytes expected;
    {
        StreamWriter writer(stream, 16);
        for (std::uint8_t i = 1; i < 60; ++i) {
            const Bytes block(i, i);
            writer.WriteBytes(block.data(), block.size());
            expected.insert(expected.end(), block.begin(), block.end());
            EXPECT_EQ(writer.GetBytePosition(), expected.size());
        }
        // What the writer holds is visible to its reader, which moves the stream.
        const auto reader = writer.CreateReader();
        reader->Seek(0);
        EXPECT_EQ(reader->ReadByte(), 1);
        writer.WriteByte(0xEE);
        expected.push_back(0xEE);
    }
    EXPECT_EQ(stream->GetBytes(), expected);
    // Bytes in sequence do not need a stream that seeks.
    const auto pipe = std::make_shared<FaultyStream>();
    pipe->Seekable = false;
    StreamWriter writer(pipe, 16);
    writer.WriteBytes(expected.data(), expected.size());
    writer.WriteDword(0x04030201);
    writer.Flush();
    EXPECT_EQ(pipe->GetBytes().size(), expected.size() + 4);
    EXPECT_THROW(writer.Seek(0), StreamSeekException);
}

TEST(StreamWriter, FailuresOfTheStream) {
    EXPECT_THROW(StreamWriter(nullptr), ArgumentNullPointerException);
    const auto stream = std::make_shared<FaultyStream>();
    stream->FailWriteAt = 20;
    {
        StreamWriter writer(stream, 16);
        writer.WriteBytes(Bytes(17).data(), 17);
        writer.WriteDword(1);
        EXPECT_THROW(writer.Flush(), StreamWriteException);
        EXPECT_THROW(writer.WriteBytes(Bytes(16).data(), 16), StreamWriteException);
    } // the destructor fails silently
    stream->FailWriteAt = FaultyStream::Never;
    stream->FailSeekAt = 5;
    StreamWriter writer(stream, 16);
    EXPECT_THROW(writer.Seek(5), StreamSeekException);
}

TEST(AbstractWriter, WritesAWholeStream) {
    FaultyStream source(Bytes{1, 2, 3});
    source.Seek(2, SeekOrigin::Begin, nullptr);
    Bytes memory(5);
    MemoryWriter writer(memory.data(), memory.size());
    writer.WriteByte(9);
    writer.WriteStream(&source);
    EXPECT_EQ(memory, (Bytes{9, 1, 2, 3, 0}));
    EXPECT_EQ(source.Position(), 2U);
    EXPECT_THROW(writer.WriteStream(nullptr), ArgumentNullPointerException);
    source.FailReadAt = 1;
    EXPECT_THROW(writer.WriteStream(&source), StreamReadException);
    source.Seekable = false;
    EXPECT_THROW(writer.WriteStream(&source), StreamSeekException);
}

} // namespace
} // namespace ImagingFramework
