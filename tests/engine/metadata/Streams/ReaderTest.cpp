#include "ErrorHandling/Exceptions.h"
#include "FaultyStream.h"
#include "metadata/Streams/AbstractWriter.h"
#include "metadata/Streams/MemoryReader.h"
#include "metadata/Streams/StreamReader.h"

#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <numeric>
#include <string>

namespace ImagingFramework {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Counting(std::size_t count) {
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] = static_cast<std::uint8_t>(i * 37 + i / 256);
    }
    return bytes;
}

/// Runs the same checks on readers of every kind over the same bytes.
void OnEachReader(const Bytes& bytes, const std::function<void(AbstractReader&)>& check) {
    {
        SCOPED_TRACE("memory");
        MemoryReader reader(bytes.data(), bytes.size());
        check(reader);
    }
    for (const std::uint64_t interim : {1U, 2U, 3U, 7U, 4096U}) {
        SCOPED_TRACE("interim buffer of " + std::to_string(interim));
        StreamReader reader(std::make_shared<FaultyStream>(bytes), interim);
        check(reader);
    }
}

TEST(Reader, FieldsOfBits) {
    // 1010'0101 0011'1100 1111'0000
    OnEachReader({0xA5, 0x3C, 0xF0}, [](AbstractReader& reader) {
        std::array<std::uint8_t, 3> out{9, 9, 9};
        reader.ReadBits(5, out.data(), 1, false);
        EXPECT_EQ(out[0], 20);
        EXPECT_EQ(reader.GetPosition(), 5U);
        EXPECT_EQ(reader.GetBitPosition(), 2);
        EXPECT_TRUE(reader.PeekBit());
        reader.ReadBits(12, out.data(), out.size(), false); // 101'0011'1100'1
        EXPECT_EQ(out, (std::array<std::uint8_t, 3>{0x0A, 0x79, 0}));
        reader.Seek(-12, SeekOrigin::Current, true);
        reader.ReadBits(12, out.data(), out.size(), true);
        EXPECT_EQ(out, (std::array<std::uint8_t, 3>{0xA7, 0x90, 0}));
        reader.Seek(4, SeekOrigin::Begin, true);
        EXPECT_EQ(reader.ReadWord(), 0xCF53);
        EXPECT_FALSE(reader.ReadBit());
        reader.Seek(1, SeekOrigin::End);
        EXPECT_EQ(reader.ReadBits(4, true)[0], 0xF0);
        EXPECT_EQ(reader.ReadBits(4, true)[0], 0x00);
        EXPECT_THROW(reader.ReadBit(), OutOfRangeException);
        EXPECT_THROW(reader.PeekBit(), OutOfRangeException);
    });
}

TEST(Reader, EveryWidthEqualsBitByBit) {
    const Bytes bytes = Counting(9);
    const auto bitAt = [&bytes](std::uint64_t i) { return bytes[i / 8] >> (7 - i % 8) & 1; };
    OnEachReader(bytes, [&](AbstractReader& reader) {
        for (std::uint64_t start = 0; start < 17; ++start) {
            for (std::uint64_t count = 1; count <= 40; ++count) {
                for (const bool left : {false, true}) {
                    Bytes expected((count + 7) / 8);
                    const std::uint64_t lead = left || count % 8 == 0 ? 0 : 8 - count % 8;
                    for (std::uint64_t i = 0; i < count; ++i) {
                        expected[(i + lead) / 8] |= static_cast<std::uint8_t>(bitAt(start + i) << (7 - (i + lead) % 8));
                    }
                    reader.Seek(static_cast<std::int64_t>(start), SeekOrigin::Begin, true);
                    Bytes actual(expected.size());
                    reader.ReadBits(count, actual.data(), actual.size(), left);
                    ASSERT_EQ(actual, expected) << start << " " << count << " " << left;
                    ASSERT_EQ(reader.GetPosition(), start + count);
                }
            }
        }
    });
}

TEST(Reader, ValuesAreLittleEndian) {
    const Bytes bytes{0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0x0F};
    OnEachReader(bytes, [](AbstractReader& reader) {
        EXPECT_EQ(reader.ReadByte(), 0x01);
        EXPECT_EQ(reader.ReadWord(), 0x0302);
        EXPECT_EQ(reader.ReadDword(), 0x07060504U);
        EXPECT_EQ(reader.ReadQword(), 0x0F0E0D0C0B0A0908U);
        EXPECT_EQ(reader.GetRemaining(), 0U);
    });
}

TEST(Reader, Misuse) {
    OnEachReader({1, 2, 3}, [](AbstractReader& reader) {
        std::array<std::uint8_t, 8> out{};
        EXPECT_THROW(reader.ReadBytes(2, nullptr, 2), ArgumentNullPointerException);
        EXPECT_THROW(reader.ReadBytes(2, out.data(), 1), ArgumentException);
        EXPECT_THROW(reader.ReadBits(9, out.data(), 1, false), ArgumentException);
        EXPECT_THROW(reader.ReadBytes(4, out.data(), out.size()), OutOfRangeException);
        // So much is not even allocated.
        EXPECT_THROW(reader.ReadBytes(~std::uint64_t{0} / 8 + 1), OutOfRangeException);
        EXPECT_THROW(reader.ReadBits(~std::uint64_t{0}, false), OutOfRangeException);
        EXPECT_EQ(reader.GetPosition(), 0U);
        EXPECT_THROW(reader.Seek(-1), ArgumentException);
        EXPECT_THROW(reader.Seek(-1, SeekOrigin::End), ArgumentException);
        EXPECT_THROW(reader.Seek(4, SeekOrigin::End), ArgumentException);
        EXPECT_THROW(reader.Seek(-1, SeekOrigin::Current, true), ArgumentException);
        EXPECT_THROW(reader.Seek(std::int64_t{1} << 61), OutOfRangeException);
        reader.Seek((std::int64_t{1} << 60) - 1); // beyond the end, and told by the next read
        EXPECT_EQ(reader.GetRemaining(), 0U);
        EXPECT_THROW(reader.ReadByte(), OutOfRangeException);
        EXPECT_THROW(reader.Seek(1, SeekOrigin::Current), OutOfRangeException);
        reader.Seek(2);
        EXPECT_EQ(reader.ReadByte(), 3);
    });
    EXPECT_THROW(MemoryReader(nullptr, 1), ArgumentNullPointerException);
    EXPECT_THROW(StreamReader(nullptr), ArgumentNullPointerException);
}

TEST(Reader, SearchesForward) {
    const std::string text = "ababac-abac";
    OnEachReader(Bytes(text.begin(), text.end()), [](AbstractReader& reader) {
        reader.SearchSample("aba", 3);
        EXPECT_EQ(reader.GetBytePosition(), 0U);
        reader.SearchSample("abac", 4);
        EXPECT_EQ(reader.GetBytePosition(), 2U);
        reader.Seek(3);
        reader.SearchSample("abac", 4);
        EXPECT_EQ(reader.GetBytePosition(), 7U);
        EXPECT_THROW(reader.SearchSample("abad", 4), OutOfRangeException);
    });
}

TEST(StreamReader, LargeReadsAreWholeAndPassTheBuffer) {
    const Bytes bytes = Counting(20000);
    const auto stream = std::make_shared<FaultyStream>(bytes);
    StreamReader reader(stream);
    Bytes out(bytes.size() - 1);
    EXPECT_EQ(reader.ReadByte(), bytes[0]);
    const int reads = stream->Reads;
    reader.ReadBytes(out.size(), out.data(), out.size());
    EXPECT_EQ(stream->Reads, reads + 1);
    EXPECT_TRUE(std::equal(out.begin(), out.end(), bytes.begin() + 1));
    reader.Seek(15000 * 8 + 4, SeekOrigin::Begin, true);
    reader.ReadBits(8, out.data(), 1, true);
    EXPECT_EQ(out[0], static_cast<std::uint8_t>(bytes[15000] << 4 | bytes[15001] >> 4));
}

TEST(StreamReader, MeasuresStreamsThatDoNotTellTheirSize) {
    for (const auto mode : {FaultyStream::StatMode::Zero, FaultyStream::StatMode::Failing}) {
        const Bytes bytes = Counting(70000);
        const auto stream = std::make_shared<FaultyStream>(bytes);
        stream->Stats = mode;
        stream->Seek(5, SeekOrigin::Begin, nullptr);
        StreamReader reader(stream);
        EXPECT_EQ(reader.GetSize(), 70000U);
        EXPECT_EQ(reader.GetBytePosition(), 5U);
        EXPECT_EQ(reader.ReadByte(), bytes[5]);
        stream->Seekable = false;
        EXPECT_THROW(StreamReader another(stream), ArgumentException);
    }
    const auto empty = std::make_shared<FaultyStream>();
    EXPECT_THROW(StreamReader(empty).ReadByte(), OutOfRangeException);
    // A size that is told is believed, so such a stream need not seek.
    const auto pipe = std::make_shared<FaultyStream>(Counting(5000));
    pipe->Seekable = false;
    StreamReader reader(pipe, 16);
    EXPECT_EQ(reader.ReadBytes(5000)[4999], Counting(5000)[4999]);
    EXPECT_THROW(reader.Seek(0), StreamStatException);
}

TEST(StreamReader, FailuresOfTheStream) {
    const auto stream = std::make_shared<FaultyStream>(Counting(100));
    stream->FailReadAt = 20;
    StreamReader reader(stream, 16);
    EXPECT_THROW(reader.ReadBytes(17), StreamReadException);
    stream->FailReadAt = FaultyStream::Never;
    stream->FailSeekAt = 50;
    EXPECT_THROW(reader.Seek(50), StreamStatException);
    reader.Seek(49);
    EXPECT_EQ(reader.ReadByte(), Counting(100)[49]);

    const auto liar = std::make_shared<FaultyStream>(Counting(20));
    liar->Stats = FaultyStream::StatMode::Lying;
    liar->LyingSize = 1000;
    for (const std::uint64_t interim : {16U, 400U}) {
        liar->Seek(0, SeekOrigin::Begin, nullptr);
        StreamReader truncated(liar, interim);
        Bytes out(500);
        EXPECT_THROW(truncated.ReadBytes(out.size(), out.data(), out.size()), UnexpectedException);
        truncated.Seek(30);
        EXPECT_THROW(truncated.ReadBit(), UnexpectedException);
    }
}

TEST(StreamReader, SharesItsStream) {
    const Bytes bytes = Counting(64);
    const auto stream = std::make_shared<FaultyStream>(bytes);
    StreamReader first(stream, 8);
    StreamReader second(stream, 8);
    first.Seek(10);
    second.Seek(40);
    EXPECT_EQ(second.ReadByte(), bytes[40]);
    EXPECT_EQ(first.ReadBytes(12)[11], bytes[21]);
    EXPECT_EQ(second.ReadBytes(9)[8], bytes[49]);
    first.Seek(3 * 8 + 4, SeekOrigin::Begin, true);
    const auto writer = first.CreateWriter();
    writer->WriteByte(0);
    writer->Flush();
    EXPECT_EQ(first.ReadBytes(1)[0], 0);
    EXPECT_EQ(stream->GetBytes()[3], bytes[3] & 0xF0);
    EXPECT_EQ(stream->GetBytes()[4], bytes[4] & 0x0F);
}

} // namespace
} // namespace ImagingFramework
