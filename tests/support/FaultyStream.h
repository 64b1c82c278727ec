#pragma once

#include "metadata/Streams/MemoryStream.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace ImagingFramework {

/// A stream over memory that misbehaves as its public fields tell. All faults are off at first.
class FaultyStream final : public IStream {
public:
    static constexpr std::uint64_t Never = std::numeric_limits<std::uint64_t>::max();
    enum class StatMode { Honest, Zero, Failing, Lying };

    /// A read or write that would reach beyond this byte of the stream fails, after moving the bytes before it.
    std::uint64_t FailReadAt = Never;
    std::uint64_t FailWriteAt = Never;
    /// A seek to this byte or beyond fails. Asking for the position does not count.
    std::uint64_t FailSeekAt = Never;
    StatMode Stats = StatMode::Honest;
    std::uint64_t LyingSize = 0; ///< what `StatMode::Lying` tells
    bool Seekable = true;        ///< false: `Seek` fails, the question for the position included
    bool FailCommit = false;
    int Reads = 0; ///< calls so far
    int Writes = 0;
    int Seeks = 0; ///< without questions for the position

    FaultyStream() = default;
    explicit FaultyStream(std::vector<std::uint8_t> bytes) : m_stream(std::move(bytes)) {}

    bool Read(void* pBuffer, std::uint64_t size, std::uint64_t* pRead) override {
        ++Reads;
        const std::uint64_t allowed = Allowed(FailReadAt, size);
        return m_stream.Read(pBuffer, allowed, pRead) && allowed == size;
    }
    bool Write(const void* pBuffer, std::uint64_t size, std::uint64_t* pWritten) override {
        ++Writes;
        const std::uint64_t allowed = Allowed(FailWriteAt, size);
        return m_stream.Write(pBuffer, allowed, pWritten) && allowed == size;
    }
    bool Seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* pPosition) override {
        const bool question = offset == 0 && origin == SeekOrigin::Current;
        Seeks += question ? 0 : 1;
        std::uint64_t target = Position();
        if (!Seekable || !MovePosition(offset, origin, m_stream.GetBytes().size(), target) ||
            (!question && target >= FailSeekAt)) {
            return false;
        }
        return m_stream.Seek(offset, origin, pPosition);
    }
    bool Stat(std::uint64_t* pSize) override {
        *pSize = Stats == StatMode::Lying ? LyingSize : Stats == StatMode::Honest ? m_stream.GetBytes().size() : 0;
        return Stats != StatMode::Failing;
    }
    bool SetSize(std::uint64_t size) override { return m_stream.SetSize(size); }
    bool Commit() override { return !FailCommit; }

    const std::vector<std::uint8_t>& GetBytes() const { return m_stream.GetBytes(); }
    std::uint64_t Position() {
        std::uint64_t position = 0;
        m_stream.Seek(0, SeekOrigin::Current, &position);
        return position;
    }

private:
    std::uint64_t Allowed(std::uint64_t limit, std::uint64_t size) {
        const std::uint64_t position = Position();
        if (limit == Never || size <= limit - std::min(limit, position)) {
            return size;
        }
        return limit - std::min(limit, position);
    }

    MemoryStream m_stream;
};

} // namespace ImagingFramework
