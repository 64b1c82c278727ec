#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstddef>
#include <cstdint>

namespace Corvane::Rasterloom::Host {

/// Where an offset counts from.
enum class SeekOrigin : std::uint32_t { Begin = 0, Current = 1, End = 2 };

/// A stream of bytes. The library takes streams by `std::shared_ptr` and never closes one that the host made. Positions
/// and lengths are bytes. Failures are exceptions of the library's tree (`IOException`, `NotSupportedException`, ...)
/// or of the host's own; both reach the caller of the operation that used the stream. After `Close` the three abilities
/// are false and everything else fails with `ObjectDisposedException`.
class RASTERLOOM_API Stream {
public:
    Stream() = default;
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;
    virtual ~Stream();

    /// Whether `Read` works; false after `Close`.
    virtual bool get_CanRead() const = 0;
    /// Whether `Write` works; false after `Close`.
    virtual bool get_CanWrite() const = 0;
    /// False where `Seek`, `get_Length`, `get_Position` and `SetLength` fail with `NotSupportedException`.
    virtual bool get_CanSeek() const = 0;

    /// Bytes from the beginning to the end.
    virtual std::int64_t get_Length() = 0;
    /// Where the next byte is read or written.
    virtual std::int64_t get_Position() = 0;
    /// As `Seek` from the beginning.
    void set_Position(std::int64_t value) { Seek(value, SeekOrigin::Begin); }

    /// Reads up to `size` bytes and gives their number; 0 only at the end (or for a size of 0).
    virtual std::size_t Read(void* buffer, std::size_t size) = 0;
    /// Writes all bytes.
    virtual void Write(const void* buffer, std::size_t size) = 0;
    /// Gives the new position from the beginning; a position beyond the end is legal, one before the beginning fails
    /// with `IOException`.
    virtual std::int64_t Seek(std::int64_t offset, SeekOrigin origin) = 0;
    /// Cuts the stream or fills it with zeros. Fails with `ArgumentOutOfRangeException` ("value") below 0 and with
    /// `NotSupportedException` where it cannot be done.
    virtual void SetLength(std::int64_t value) = 0;
    /// Hands on what the stream holds back.
    virtual void Flush() = 0;
    /// May be repeated. Destructors of the library's own streams do the same and swallow failures.
    virtual void Close() = 0;
};

} // namespace Corvane::Rasterloom::Host
