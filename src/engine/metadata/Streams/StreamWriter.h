#pragma once

#include "MemoryManagement/MemPtr.h"
#include "metadata/Streams/MemoryWriter.h"
#include "metadata/Streams/StreamReader.h"

#include <memory>

namespace ImagingFramework {

/// A writer over a stream. Data gathers in an interim buffer; blocks of at least its size go straight to the stream.
/// The capacity is 2^63 - 1 bits. A byte that is written in part keeps the bits that the stream has below the written
/// ones. Other users of the stream may move it between two calls, where it can seek.
///
/// Failures besides those of the interface: `StreamWriteException`, `StreamSeekException`. The destructor flushes and
/// swallows failures, so whoever wants to know of them calls `Flush` before.
class StreamWriter final : public MemoryWriter {
public:
    /// Writes from where the stream stands. Fails with `ArgumentNullPointerException` ("pStream").
    explicit StreamWriter(std::shared_ptr<IStream> pStream, std::uint64_t interimSize = InterimBufferSize);
    ~StreamWriter() override;
    StreamWriter(const StreamWriter&) = delete;
    StreamWriter& operator=(const StreamWriter&) = delete;

    std::unique_ptr<AbstractReader> CreateReader() override;
    std::uint64_t GetSize() const override;
    std::uint64_t GetBytePosition() const override { return m_uintStartByte + m_uintByte; }
    /// Flushes first. The end is that of the stream, not of the capacity.
    void Seek(std::int64_t offset, SeekOrigin origin = SeekOrigin::Begin, bool inBits = false) override;
    /// Gives everything to the stream.
    void Flush() override { WriteInterimBufferToStream(); }
    using MemoryWriter::Memset;
    /// There is no end to fill up to: writes nothing.
    void Memset(const void* pPattern, std::uint64_t patternBits) override;
    const std::shared_ptr<IStream>& GetStream() const { return m_pStream; }

private:
    void PutBits(std::uint32_t value, std::uint32_t count) override;
    void PutBytes(const std::uint8_t* pSource, std::uint64_t count) override;
    void WriteInterimBufferToStream();
    void MergePartialByte();
    void WriteAtStart(const std::uint8_t* pSource, std::uint64_t count);
    /// Puts the stream to a byte.
    void MoveStream(std::uint64_t position);
    std::uint64_t GetBlockRoom() const; ///< bits

    std::shared_ptr<IStream> m_pStream;
    std::uint64_t m_uintInterimSize;        ///< bytes
    std::uint64_t m_uintStartByte = 0;      ///< byte in the stream of the first one in the interim buffer
    std::uint64_t m_uintFlushed = 0;        ///< bits; the stream has everything before this position
    std::uint64_t m_uintStreamPosition = 0; ///< where the stream was left, for streams that do not tell
    MemPtr<std::uint8_t> m_interim;
};

} // namespace ImagingFramework
