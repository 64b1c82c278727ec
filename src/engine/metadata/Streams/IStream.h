#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

namespace ImagingFramework {

enum class SeekOrigin : std::uint32_t { Begin = 0, Current = 1, End = 2 };

/// The engine's view of a host byte stream. Held by `std::shared_ptr`. Failures are told by the result, never raised,
/// so that an adapter over any host stream can be written without knowing the engine's exceptions; the readers and
/// writers turn them into the classes of their own. Positions and sizes are bytes.
class IStream {
public:
    virtual ~IStream() = default;

    /// Reads up to `size` bytes; fewer only at the end. False when the stream failed; `*pRead` (may be null) gets the
    /// count.
    virtual bool Read(void* pBuffer, std::uint64_t size, std::uint64_t* pRead) = 0;
    /// Writes all bytes; false when the stream failed. `*pWritten` (may be null) gets the count.
    virtual bool Write(const void* pBuffer, std::uint64_t size, std::uint64_t* pWritten) = 0;
    /// `*pPosition` (may be null) gets the new position from the beginning.
    virtual bool Seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* pPosition) = 0;
    /// The size of the whole stream; false when the stream cannot tell.
    virtual bool Stat(std::uint64_t* pSize) = 0;
    virtual bool SetSize(std::uint64_t size) = 0;
    /// Makes written bytes reach their store.
    virtual bool Commit() = 0;
};

/// A stream over a file.
class IFileStream : public IStream {
public:
    /// The name of the file that the stream stands for; a file that is written through a temporary one gives its
    /// target.
    virtual std::filesystem::path GetFileName() const = 0;
};

} // namespace ImagingFramework
