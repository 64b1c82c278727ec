#pragma once

#include "metadata/Exif/ExifTag.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// A tag with its number.
struct ExifEntry {
    std::uint16_t Tag;
    ExifTag Value;

    bool operator==(const ExifEntry&) const = default;
};

/// The tags of a directory, in the ascending order that files need.
class ExifDirectory {
public:
    /// What the count in a file can tell.
    static constexpr std::size_t MaxTagCount = 65535;

    ExifDirectory() = default;
    /// Sorts the entries; of several with one tag the first one stays.
    explicit ExifDirectory(std::vector<ExifEntry> entries);

    auto begin() const noexcept { return m_entries.begin(); }
    auto end() const noexcept { return m_entries.end(); }
    std::uint32_t GetCount() const noexcept { return static_cast<std::uint32_t>(m_entries.size()); }
    /// Fails with `ArgumentOutOfRangeException` ("index") at the count and above.
    std::uint16_t GetTagAt(std::uint32_t index) const;
    /// Null when the tag is not there.
    const ExifTag* Find(std::uint16_t tag) const noexcept;
    /// Replaces or adds. Fails with `UnexpectedException` above `MaxTagCount`.
    void Set(std::uint16_t tag, ExifTag value);
    /// Whether it was there.
    bool Remove(std::uint16_t tag) noexcept;

    bool operator==(const ExifDirectory&) const = default;

private:
    std::vector<ExifEntry> m_entries;
};

} // namespace ImagingFramework
