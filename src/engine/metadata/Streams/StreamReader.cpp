#include "metadata/Streams/StreamReader.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Streams/SeekTarget.h"
#include "metadata/Streams/StreamWriter.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace ImagingFramework {

StreamReader::StreamReader(std::shared_ptr<IStream> pStream, std::uint64_t interimSize)
    : m_pStream(std::move(pStream)), m_uintInterimSize(std::max<std::uint64_t>(interimSize, 1)) {
    if (m_pStream == nullptr) {
        throw ArgumentNullPointerException("pStream");
    }
    if (!m_pStream->Seek(0, SeekOrigin::Current, &m_uintOffset)) {
        m_uintOffset = 0;
    }
    if (!m_pStream->Stat(&m_uintStreamSize) || m_uintStreamSize == 0) {
        m_uintStreamSize = MeasureStream();
    }
    if (m_uintStreamSize > MaxPositionInBits / 8) {
        throw OutOfRangeException("pStream");
    }
    m_interim.AllocateSize(m_uintInterimSize);
    m_pBuffer = m_interim.Get();
    if (m_uintOffset < m_uintStreamSize) {
        ReadInterimBufferFromStream();
    }
}

std::uint64_t StreamReader::MeasureStream() const {
    constexpr std::size_t blockSize = 32768;
    std::vector<std::uint8_t> block(blockSize);
    std::uint64_t start = 0;
    bool good = m_pStream->Seek(0, SeekOrigin::Current, &start);
    std::uint64_t size = start;
    std::uint64_t read = 1;
    while (good && read != 0) {
        read = 0;
        good = m_pStream->Read(block.data(), block.size(), &read);
        size += read;
    }
    if (!good || !m_pStream->Seek(static_cast<std::int64_t>(start), SeekOrigin::Begin, nullptr)) {
        throw ArgumentException("pStream", "Stream doesn't supports seeking.");
    }
    return size;
}

std::unique_ptr<AbstractWriter> StreamReader::CreateWriter() {
    auto writer = std::make_unique<StreamWriter>(m_pStream, m_uintInterimSize);
    writer->Seek(static_cast<std::int64_t>(GetPosition()), SeekOrigin::Begin, true);
    return writer;
}

void StreamReader::Seek(std::int64_t offset, SeekOrigin origin, bool inBits) {
    const std::uint64_t target = SeekTarget(offset, origin, inBits);
    if (!m_pStream->Seek(static_cast<std::int64_t>(target / 8), SeekOrigin::Begin, nullptr)) {
        throw StreamStatException();
    }
    // The buffer is dropped even if it holds the target: the stream may have been written since.
    EmptyInterimBuffer();
    m_uintOffset = target / 8;
    m_intBit = static_cast<std::int32_t>(7 - target % 8);
}

std::uint64_t StreamReader::ReadAtOffset(std::uint8_t* pBuffer, std::uint64_t count) {
    std::uint64_t position = 0;
    if (m_pStream->Seek(0, SeekOrigin::Current, &position) && position != m_uintOffset &&
        !m_pStream->Seek(static_cast<std::int64_t>(m_uintOffset), SeekOrigin::Begin, nullptr)) {
        throw StreamStatException();
    }
    std::uint64_t read = 0;
    if (!m_pStream->Read(pBuffer, count, &read)) {
        throw StreamReadException();
    }
    return std::min(read, count);
}

void StreamReader::ReadInterimBufferFromStream() {
    if (m_uintOffset > m_uintStreamSize) {
        throw MediaCorruptedException();
    }
    EmptyInterimBuffer();
    const std::uint64_t count = std::min(m_uintInterimSize, m_uintStreamSize - m_uintOffset);
    const std::uint64_t read = ReadAtOffset(m_interim.Get(), count);
    m_uintOffset += read;
    m_uintSizeInBits = read * 8;
}

void StreamReader::Refill() {
    ReadInterimBufferFromStream();
    if (m_uintSizeInBits == 0) {
        throw UnexpectedException("StreamReader::ReadBytes");
    }
}

void StreamReader::ReadDirectly(std::uint8_t* pBuffer, std::uint64_t count) {
    EmptyInterimBuffer();
    while (count != 0) {
        const std::uint64_t read = ReadAtOffset(pBuffer, count);
        if (read == 0) {
            throw UnexpectedException("StreamReader::ReadBytes");
        }
        m_uintOffset += read;
        pBuffer += read;
        count -= read;
    }
}

void StreamReader::TakeBytes(std::uint8_t* pBuffer, std::uint64_t count) {
    while (count != 0) {
        const std::uint64_t here = std::min(GetBlockRemaining() / 8, count);
        MemoryReader::TakeBytes(pBuffer, here);
        pBuffer += here;
        count -= here;
        if (count >= m_uintInterimSize) {
            ReadDirectly(pBuffer, count);
            return;
        }
        if (count != 0) {
            Refill();
        }
    }
}

} // namespace ImagingFramework
