#pragma once

#include "metadata/Exif/ExifByteOrder.h"
#include "metadata/Exif/ExifTag.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace ImagingFramework {

/// A directory about to be written: fields in the order of their tags, the offset of the next directory, and behind it
/// the values that are larger than a field, each on an even offset. All offsets count from the TIFF header.
class ExifDirectoryLayout {
public:
    bool IsEmpty() const noexcept { return m_fields.empty(); }
    /// The bytes of the value must outlive the layout. A tag that is there is replaced.
    void Add(std::uint16_t tag, const ExifTag& value);
    /// A field whose value is an offset that is known later; until `SetOffset` it is 0.
    void AddOffset(std::uint16_t tag);
    /// What stands in the field of a tag in place of its value: the offset of something that is written elsewhere. With
    /// nothing the value is written here after all.
    void SetOffset(std::uint16_t tag, std::optional<std::uint32_t> offset);

    /// Bytes of the whole, an even number.
    std::uint64_t GetSize() const noexcept;
    /// `block` begins with the TIFF header and has room for the whole at `offset`.
    void Write(std::span<std::uint8_t> block, std::uint32_t offset, std::uint32_t nextOffset,
               const ExifByteOrder& order) const;

private:
    struct Field {
        std::uint16_t Tag;
        ExifDataType Type;
        std::uint32_t Count;
        std::span<const std::uint8_t> Data;
        std::optional<std::uint32_t> Offset;
    };

    Field& Place(std::uint16_t tag);
    static bool IsOutOfLine(const Field& field) noexcept;

    std::vector<Field> m_fields;
};

} // namespace ImagingFramework
