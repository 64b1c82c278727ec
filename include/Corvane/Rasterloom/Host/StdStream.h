#pragma once

#include <Corvane/Rasterloom/Host/Stream.h>

#include <iosfwd>
#include <streambuf>

namespace Corvane::Rasterloom::Host {

/// A stream over a stream of the standard library, which must outlive this object. It works on the stream's buffer, so
/// the state bits and the exception mask of the stream are neither read nor changed. There is one position for reading
/// and writing, also where the standard stream has two; it begins where the standard stream stands.
class RASTERLOOM_API StdStream : public Stream {
public:
    /// For reading, writing, or both, as the stream allows.
    explicit StdStream(std::istream& stream);
    explicit StdStream(std::ostream& stream);
    explicit StdStream(std::iostream& stream);
    ~StdStream() override;

    bool get_CanRead() const override { return m_pBuffer != nullptr && m_bReadable; }
    bool get_CanWrite() const override { return m_pBuffer != nullptr && m_bWritable; }
    bool get_CanSeek() const override { return m_pBuffer != nullptr && m_bSeekable; }
    std::int64_t get_Length() override;
    std::int64_t get_Position() override;
    std::size_t Read(void* buffer, std::size_t size) override;
    /// A gap between the end and the position is filled with zeros.
    void Write(const void* buffer, std::size_t size) override;
    std::int64_t Seek(std::int64_t offset, SeekOrigin origin) override;
    /// Standard streams have no such operation: always fails with `NotSupportedException`.
    void SetLength(std::int64_t value) override;
    void Flush() override;
    /// Flushes and forgets the standard stream, which stays open.
    void Close() override;

private:
    /// Which side of the buffer stands at the position.
    enum class Side : std::uint32_t { Neither, Reading, Writing };

    StdStream(std::streambuf* buffer, bool readable, bool writable);
    void CheckOpen() const;
    void CheckSeek() const;
    void PutZerosUpToPosition();

    std::streambuf* m_pBuffer;
    bool m_bReadable;
    bool m_bWritable;
    bool m_bSeekable = false;
    Side m_enSide = Side::Neither;
    std::int64_t m_intPosition = 0;
};

} // namespace Corvane::Rasterloom::Host
