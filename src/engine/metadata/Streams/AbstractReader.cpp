#include "metadata/Streams/AbstractReader.h"

#include "ErrorHandling/Exceptions.h"

#include <cstring>

namespace ImagingFramework {

void AbstractReader::SearchSample(const void* pSample, std::uint64_t size) {
    if (size == 0) {
        return;
    }
    if (pSample == nullptr) {
        throw ArgumentNullPointerException("pBuffer");
    }
    const MemPtr<std::uint8_t> window = ReadBytes(size);
    std::uint8_t* const bytes = window.Get();
    while (std::memcmp(bytes, pSample, size) != 0) {
        std::memmove(bytes, bytes + 1, size - 1);
        bytes[size - 1] = ReadByte();
    }
    Seek(-static_cast<std::int64_t>(size), SeekOrigin::Current);
}

} // namespace ImagingFramework
