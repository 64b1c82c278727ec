#include "metadata/Streams/AbstractWriter.h"

#include "ErrorHandling/Exceptions.h"
#include "MemoryManagement/MemPtr.h"

namespace ImagingFramework {

void AbstractWriter::WriteStream(IStream* pStream) {
    if (pStream == nullptr) {
        throw ArgumentNullPointerException("pStream");
    }
    std::uint64_t position = 0;
    if (!pStream->Seek(0, SeekOrigin::Current, &position) || !pStream->Seek(0, SeekOrigin::Begin, nullptr)) {
        throw StreamSeekException();
    }
    std::uint64_t size = 0;
    if (!pStream->Stat(&size)) {
        throw StreamStatException();
    }
    MemPtr<std::uint8_t> bytes;
    bytes.AllocateSize(size);
    std::uint64_t read = 0;
    if (size != 0 && (!pStream->Read(bytes.Get(), size, &read) || read != size)) {
        throw StreamReadException();
    }
    WriteBytes(bytes.Get(), size);
    if (!pStream->Seek(static_cast<std::int64_t>(position), SeekOrigin::Begin, nullptr)) {
        throw StreamSeekException();
    }
}

} // namespace ImagingFramework
