#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace ImagingFramework {

/// Walks the image resource blocks in a buffer of the caller without copying them. What stands between two blocks is
/// skipped; a block whose header or data leaves the buffer ends the walk.
class AdobeResourceBlockIterator {
public:
    static constexpr std::string_view Signature = "8BIM";

    /// Stands on the first block. Null fails with `ArgumentNullPointerException` ("pData"), a buffer smaller than the
    /// signature with `ArgumentOutOfRangeException` ("uintDataSize"), and one that does not begin with it with
    /// `ArgumentException` ("pData").
    AdobeResourceBlockIterator(const std::uint8_t* pData, std::uint64_t uintDataSize);

    /// False when the walk has ended; the block is then empty.
    bool IsOnBlock() const noexcept { return m_bOnBlock; }
    std::uint16_t GetId() const noexcept { return m_uintId; }
    /// The bytes of the name in the code page of the file.
    std::span<const std::uint8_t> GetName() const noexcept { return m_name; }
    const std::uint8_t* GetData() const noexcept { return m_data.data(); }
    std::uint32_t GetDataSize() const noexcept { return static_cast<std::uint32_t>(m_data.size()); }
    /// Goes to the next block; false when there is none.
    bool Next();

private:
    /// Reads the header at the offset; false when the block does not lie in the buffer.
    bool ReadHeader();
    bool End() noexcept;

    std::span<const std::uint8_t> m_buffer;
    std::uint64_t m_uintOffset = 0;
    std::uint64_t m_uintNameFieldSize = 0;
    std::span<const std::uint8_t> m_name;
    std::span<const std::uint8_t> m_data;
    std::uint16_t m_uintId = 0;
    bool m_bOnBlock = false;
};

} // namespace ImagingFramework
