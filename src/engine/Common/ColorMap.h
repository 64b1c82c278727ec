#pragma once

#include "Common/GridColorMapper.h"
#include "Common/KDTreeColorMapper.h"
#include "Common/Numeric.h"
#include "Common/PixelFormat.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ImagingFramework {

class AbstractReader;
class AbstractWriter;

/// A palette: entries of three bytes (blue, green, red; `Format24bppRgb`) or four (with alpha; `Format32bppArgb`), and an
/// index for finding the nearest entry. A palette of a pixel format has up to 256 entries; a custom map from which entries
/// are picked may have more.
///
/// Access to an empty map fails with `NotInitializedException` ("ColorMap"), an index at or above the count with
/// `ArgumentOutOfRangeException` ("uintIndex"), another format with `UnsupportedPixelFormatException`. A search writes to
/// the object: one map serves one thread at a time.
class ColorMap {
public:
    static constexpr std::uint32_t MaximumEntryCount = 256;

    ColorMap() = default;
    ColorMap(std::uint32_t entryCount, PixelFormat format) { Create(entryCount, format); }
    ColorMap(const ColorMap& other);
    ColorMap& operator=(const ColorMap& other);
    virtual ~ColorMap() = default;

    /// Entries are black and transparent until set. Fails with `MemoryException`.
    void Create(std::uint32_t entryCount, PixelFormat format);
    void Empty() noexcept;
    bool IsEmpty() const noexcept { return m_uintEntryCount == 0 || m_format == PixelFormat::FormatUnknown; }
    PixelFormat GetPixelFormat() const noexcept { return m_format; }
    std::uint32_t GetEntryCount() const noexcept { return m_uintEntryCount; }
    /// 3 or 4.
    std::uint32_t GetEntrySize() const noexcept { return PixelFormatSize(m_format) / 8; }
    /// The entries as they stand in memory.
    const std::uint8_t* GetEntriesRef() const noexcept { return m_entries.data(); }

    /// Three bytes: blue, green, red.
    void GetEntryRgb(std::uint32_t index, std::uint8_t* pEntry) const;
    /// Four bytes; alpha is 255 in a map without alpha.
    void GetEntryArgb(std::uint32_t index, std::uint8_t* pEntry) const;
    std::uint8_t GetAlpha(std::uint32_t index) const;
    /// Colour only; alpha stays.
    void SetEntryRgb(std::uint32_t index, const std::uint8_t* pEntry);
    /// In a map without alpha the alpha is dropped.
    void SetEntryArgb(std::uint32_t index, const std::uint8_t* pEntry);
    /// Turns a map without alpha into one with alpha 255 first.
    void SetAlpha(std::uint32_t index, std::uint8_t alpha);

    std::uint32_t FindNearestEntryIndex(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue);
    std::uint32_t FindNearestEntryIndex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
        return FindNearestEntryIndex(255, red, green, blue);
    }
    /// The nearest entries of `count` pixels of `Format32bppArgb`, one byte each; an index above 255 is stored as 255. The
    /// same answers as `FindNearestEntryIndex` pixel by pixel, faster.
    void FindNearestEntries(const std::uint8_t* pPixels, std::size_t count, std::uint8_t* pIndices);
    /// Builds the index when it is not ready. The other map must have as many entries.
    void CopyColorMapperSettings(const ColorMap& objColorMap);
    /// The tree, ready for searches; made when needed. Valid until an entry changes.
    KDTreeColorMapper& GetMapper();
    /// The grid, which answers as the tree does, for a caller with `searchCount` searches at hand; null while it does not
    /// pay to make it and where it cannot serve the map. Valid until an entry changes.
    GridColorMapper* GetGrid(std::size_t searchCount);

    /// Format, entry count and, when not empty, byte size and entries; 32 bits each.
    void Serialize(AbstractWriter* pWriter) const;
    /// Refuses more than 256 entries and a byte size that does not fit with `MediaCorruptedException`.
    void Deserialize(AbstractReader* pReader);
    /// An upper bound of what `Serialize` writes.
    std::uint32_t GetSerializedSize() const noexcept;

    bool operator==(const ColorMap& other) const noexcept;

private:
    std::uint8_t* Entry(std::uint32_t index);
    const std::uint8_t* Entry(std::uint32_t index) const;
    void ForgetMapper() noexcept;

    std::vector<std::uint8_t> m_entries;
    PixelFormat m_format = PixelFormat::FormatUnknown;
    std::uint32_t m_uintEntryCount = 0;
    bool m_bMapperReady = false;
    KDTreeColorMapper m_mapper;
    std::unique_ptr<GridColorMapper> m_pGrid; ///< made once searches are many
    std::uint32_t m_uintSearchCount = 0;      ///< since the tree was built
};

} // namespace ImagingFramework
