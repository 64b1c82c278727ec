#pragma once

#include "metadata/Streams/MemoryReader.h"

#include <memory>

namespace ImagingFramework {

/// Size of the interim buffer of the readers and writers over streams, in bytes.
inline constexpr std::uint64_t InterimBufferSize = 4096;

/// A reader over a stream. Small reads go through an interim buffer, which is filled when it is first needed; reads of
/// at least its size go from the stream into the caller's memory. Other users of the stream may move it between two
/// calls: it is put back before each access, where it can seek.
///
/// Failures besides those of the interface: `StreamReadException`, `StreamStatException` for a seek,
/// `UnexpectedException` when the stream ends before the size that it told.
class StreamReader final : public MemoryReader {
public:
    /// Reads from where the stream stands. The size is asked by `Stat`; a stream that does not tell it, or tells 0, is
    /// read through once and put back. Fails with `ArgumentNullPointerException` and `ArgumentException` ("pStream").
    explicit StreamReader(std::shared_ptr<IStream> pStream, std::uint64_t interimSize = InterimBufferSize);

    std::unique_ptr<AbstractWriter> CreateWriter() override;
    std::uint64_t GetSize() const override { return m_uintStreamSize; }
    void Seek(std::int64_t offset, SeekOrigin origin = SeekOrigin::Begin, bool inBits = false) override;
    std::uint64_t GetBytePosition() const override { return m_uintOffset - m_uintSizeInBits / 8 + m_uintByte; }
    const std::shared_ptr<IStream>& GetStream() const { return m_pStream; }

private:
    void TakeBytes(std::uint8_t* pBuffer, std::uint64_t count) override;
    void Refill() override;
    void ReadInterimBufferFromStream();
    /// Reads past the interim buffer, which must be used up.
    void ReadDirectly(std::uint8_t* pBuffer, std::uint64_t count);
    std::uint64_t ReadAtOffset(std::uint8_t* pBuffer, std::uint64_t count);
    std::uint64_t MeasureStream() const;
    void EmptyInterimBuffer() {
        m_uintSizeInBits = 0;
        m_uintByte = 0;
    }

    std::shared_ptr<IStream> m_pStream;
    std::uint64_t m_uintInterimSize;    ///< bytes
    std::uint64_t m_uintStreamSize = 0; ///< bytes
    std::uint64_t m_uintOffset = 0;     ///< byte in the stream behind what is in the interim buffer
    MemPtr<std::uint8_t> m_interim;
};

} // namespace ImagingFramework
