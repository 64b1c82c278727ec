#include "metadata/Streams/StreamWriter.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Streams/SeekTarget.h"

#include <algorithm>
#include <cstring>

namespace ImagingFramework {

StreamWriter::StreamWriter(std::shared_ptr<IStream> pStream, std::uint64_t interimSize)
    : m_pStream(std::move(pStream)), m_uintInterimSize(std::max<std::uint64_t>(interimSize, 1)) {
    if (m_pStream == nullptr) {
        throw ArgumentNullPointerException("pStream");
    }
    if (!m_pStream->Seek(0, SeekOrigin::Current, &m_uintStartByte)) {
        m_uintStartByte = 0;
    }
    m_uintStreamPosition = m_uintStartByte;
    m_uintFlushed = m_uintStartByte * 8;
    m_interim.AllocateSize(m_uintInterimSize);
    std::memset(m_interim.Get(), 0, m_uintInterimSize);
    m_pBuffer = m_interim.Get();
    m_uintSizeInBits = m_uintInterimSize * 8;
}

StreamWriter::~StreamWriter() {
    try {
        WriteInterimBufferToStream();
    } catch (...) {
        // Nobody is left to be told; an explicit `Flush` reports.
    }
}

std::unique_ptr<AbstractReader> StreamWriter::CreateReader() {
    Flush();
    auto reader = std::make_unique<StreamReader>(m_pStream, m_uintInterimSize);
    reader->Seek(static_cast<std::int64_t>(GetPosition()), SeekOrigin::Begin, true);
    return reader;
}

std::uint64_t StreamWriter::GetSize() const {
    return MaxPositionInBits / 8;
}

std::uint64_t StreamWriter::GetBlockRoom() const {
    return m_uintSizeInBits - (m_uintByte * 8 + static_cast<std::uint64_t>(7 - m_intBit));
}

void StreamWriter::MoveStream(std::uint64_t position) {
    std::uint64_t now = m_uintStreamPosition;
    if (!m_pStream->Seek(0, SeekOrigin::Current, &now)) {
        now = m_uintStreamPosition;
    }
    if (now != position && !m_pStream->Seek(static_cast<std::int64_t>(position), SeekOrigin::Begin, nullptr)) {
        throw StreamSeekException();
    }
    m_uintStreamPosition = position;
}

void StreamWriter::WriteAtStart(const std::uint8_t* pSource, std::uint64_t count) {
    MoveStream(m_uintStartByte);
    std::uint64_t written = 0;
    if (!m_pStream->Write(pSource, count, &written) || written != count) {
        throw StreamWriteException();
    }
    m_uintStreamPosition = m_uintStartByte + count;
}

void StreamWriter::MergePartialByte() {
    MoveStream(m_uintStartByte + m_uintByte);
    std::uint8_t old = 0;
    std::uint64_t read = 0;
    // A stream that cannot be read has nothing to keep.
    if (m_pStream->Read(&old, 1, &read) && read == 1) {
        ++m_uintStreamPosition;
        const std::uint32_t below = (2U << m_intBit) - 1;
        std::uint8_t& byte = m_pBuffer[m_uintByte];
        byte = static_cast<std::uint8_t>((byte & ~below) | (old & below));
    }
}

void StreamWriter::WriteInterimBufferToStream() {
    const std::uint64_t position = GetPosition();
    if (position == m_uintFlushed) {
        return;
    }
    const bool partial = m_intBit != 7;
    if (partial) {
        MergePartialByte();
    }
    const std::uint64_t count = m_uintByte + (partial ? 1 : 0);
    WriteAtStart(m_pBuffer, count);
    const std::uint8_t last = partial ? m_pBuffer[m_uintByte] : std::uint8_t{0};
    std::memset(m_pBuffer, 0, count);
    m_pBuffer[0] = last; // the next bits complete it
    m_uintStartByte += m_uintByte;
    m_uintByte = 0;
    m_uintFlushed = position;
}

void StreamWriter::Seek(std::int64_t offset, SeekOrigin origin, bool inBits) {
    Flush();
    std::uint64_t size = 0;
    if (origin == SeekOrigin::End && !m_pStream->Stat(&size)) {
        throw StreamStatException();
    }
    const std::uint64_t target = ComputeSeekTarget(offset, origin, inBits, GetPosition(), size * 8);
    if (!m_pStream->Seek(static_cast<std::int64_t>(target / 8), SeekOrigin::Begin, nullptr)) {
        throw StreamSeekException();
    }
    m_uintStreamPosition = target / 8;
    m_uintStartByte = target / 8;
    m_uintByte = 0;
    m_intBit = static_cast<std::int32_t>(7 - target % 8);
    m_uintFlushed = target;
    m_pBuffer[0] = 0;
    if (m_intBit != 7) {
        // The bits above the position stay what they are. Those below are merged when they are flushed.
        std::uint64_t read = 0;
        if (!m_pStream->Read(m_pBuffer, 1, &read) || read != 1) {
            m_pBuffer[0] = 0;
        }
        m_uintStreamPosition += read;
        MoveStream(m_uintStartByte);
    }
}

void StreamWriter::Memset(const void* pPattern, std::uint64_t) {
    if (pPattern == nullptr) {
        throw ArgumentNullPointerException("pValue");
    }
}

void StreamWriter::PutBits(std::uint32_t value, std::uint32_t count) {
    const std::uint64_t room = GetBlockRoom();
    if (count >= room) {
        const auto first = static_cast<std::uint32_t>(room);
        PutBlockBits(value >> (count - first), first);
        Flush();
        count -= first;
    }
    if (count != 0) {
        PutBlockBits(value, count);
    }
}

void StreamWriter::PutBytes(const std::uint8_t* pSource, std::uint64_t count) {
    if (count >= m_uintInterimSize) {
        Flush();
        WriteAtStart(pSource, count);
        m_uintStartByte += count;
        m_uintFlushed = GetPosition();
        return;
    }
    while (count != 0) {
        const std::uint64_t now = std::min(m_uintInterimSize - m_uintByte, count);
        MemoryWriter::PutBytes(pSource, now);
        pSource += now;
        count -= now;
        if (m_uintByte == m_uintInterimSize) {
            Flush();
        }
    }
}

} // namespace ImagingFramework
