#include "metadata/Streams/MemoryStream.h"

#include <algorithm>
#include <cstring>
#include <exception>

namespace ImagingFramework {

bool MovePosition(std::int64_t offset, SeekOrigin origin, std::uint64_t size, std::uint64_t& position) {
    std::int64_t base = 0;
    switch (origin) {
    case SeekOrigin::Begin:
        break;
    case SeekOrigin::Current:
        base = static_cast<std::int64_t>(position);
        break;
    case SeekOrigin::End:
        base = static_cast<std::int64_t>(size);
        break;
    default:
        return false;
    }
    std::int64_t target = 0;
    if (__builtin_add_overflow(base, offset, &target) || target < 0) {
        return false;
    }
    position = static_cast<std::uint64_t>(target);
    return true;
}

bool MemoryStream::Read(void* pBuffer, std::uint64_t size, std::uint64_t* pRead) {
    const std::uint64_t left = m_uintPosition < m_bytes.size() ? m_bytes.size() - m_uintPosition : 0;
    const std::uint64_t count = std::min(size, left);
    if (count != 0) {
        if (pBuffer == nullptr) {
            return false;
        }
        std::memcpy(pBuffer, m_bytes.data() + m_uintPosition, count);
        m_uintPosition += count;
    }
    if (pRead != nullptr) {
        *pRead = count;
    }
    return true;
}

bool MemoryStream::Write(const void* pBuffer, std::uint64_t size, std::uint64_t* pWritten) {
    if (pBuffer == nullptr && size != 0) {
        return false;
    }
    if (size > m_bytes.max_size() || m_uintPosition > m_bytes.max_size() - size) {
        return false;
    }
    if (size != 0) {
        if (m_uintPosition + size > m_bytes.size() && !SetSize(m_uintPosition + size)) {
            return false;
        }
        std::memcpy(m_bytes.data() + m_uintPosition, pBuffer, size);
        m_uintPosition += size;
    }
    if (pWritten != nullptr) {
        *pWritten = size;
    }
    return true;
}

bool MemoryStream::Seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* pPosition) {
    if (!MovePosition(offset, origin, m_bytes.size(), m_uintPosition)) {
        return false;
    }
    if (pPosition != nullptr) {
        *pPosition = m_uintPosition;
    }
    return true;
}

bool MemoryStream::Stat(std::uint64_t* pSize) {
    if (pSize == nullptr) {
        return false;
    }
    *pSize = m_bytes.size();
    return true;
}

bool MemoryStream::SetSize(std::uint64_t size) {
    try {
        m_bytes.resize(size); // grows by a factor, so appending stays linear
    } catch (const std::exception&) {
        return false;
    }
    return true;
}

} // namespace ImagingFramework
