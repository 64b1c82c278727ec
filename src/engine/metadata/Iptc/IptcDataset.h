#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace ImagingFramework {

class AbstractReader;
class AbstractWriter;

/// How the texts of a block are encoded: as the code page says, or as UTF-8 where the block declares it.
enum class IptcEncoding : std::uint8_t { Ansi, Utf8 };

/// One data set of an IPTC-IIM block: a key, which is record * 256 + data set, and bytes.
class IptcDataset {
public:
    static constexpr std::uint8_t TagMarker = 0x1C;
    /// Longer data has an extended form, which is neither read nor written.
    static constexpr std::size_t MaxDataSize = 0x7FFF;

    IptcDataset() = default;
    explicit IptcDataset(std::uint16_t key) noexcept { SetKey(key); }

    /// Reads one data set. False where the block ends: with fewer than 3 bytes left, with a byte that is no tag marker,
    /// and with an unsupported size, which also clears the data set. Fails as the reader does when the data is cut off,
    /// and with `ArgumentNullPointerException` ("pReader").
    bool Initialize(AbstractReader* pReader);
    /// Fails with `UnexpectedException` when there is too much data.
    void Serialize(AbstractWriter& writer) const;
    /// Bytes that `Serialize` writes.
    std::uint64_t GetSerializedSize() const noexcept { return HeaderSize + m_strData.size(); }

    std::uint16_t GetKey() const noexcept { return static_cast<std::uint16_t>(m_uintRecord << 8 | m_uintDataset); }
    void SetKey(std::uint16_t key) noexcept {
        m_uintRecord = static_cast<std::uint8_t>(key >> 8);
        m_uintDataset = static_cast<std::uint8_t>(key & 0xFF);
    }
    /// The bytes; one NUL stands behind them.
    std::span<const std::uint8_t> GetData() const noexcept {
        return {reinterpret_cast<const std::uint8_t*>(m_strData.data()), m_strData.size()};
    }
    bool IsEmpty() const noexcept { return m_strData.empty(); }
    void SetData(std::span<const std::uint8_t> data);
    void SetData(std::string_view text, IptcEncoding encoding);
    /// The text for people of the key; false when it has none.
    bool GetTagDescription(std::string& text) const;
    /// The text up to the first NUL; empty for keys that are not known to hold text. Bytes that are no UTF-8 are taken
    /// as of the code page whatever the block declares.
    std::string ToText(IptcEncoding encoding) const;

private:
    static constexpr std::uint64_t HeaderSize = 5;

    std::uint8_t m_uintRecord = 0;
    std::uint8_t m_uintDataset = 0;
    std::string m_strData;
};

} // namespace ImagingFramework
