#include "metadata/Exif/ExifDirectoryLayout.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

constexpr std::uint32_t CountSize = 2;
constexpr std::uint32_t FieldSize = 12;
constexpr std::uint32_t NextOffsetSize = 4;
constexpr std::size_t InlineSize = 4;

std::uint64_t EvenSize(std::uint64_t size) noexcept { return size + size % 2; }

} // namespace

ExifDirectoryLayout::Field& ExifDirectoryLayout::Place(std::uint16_t tag) {
    const auto place = std::ranges::lower_bound(m_fields, tag, {}, &Field::Tag);
    if (place != m_fields.end() && place->Tag == tag) {
        return *place;
    }
    return *m_fields.insert(place, Field{tag, ExifDataType::Long, 1, {}, std::nullopt});
}

void ExifDirectoryLayout::Add(std::uint16_t tag, const ExifTag& value) {
    Place(tag) = Field{tag, value.Type, value.GetCount(), value.Data, std::nullopt};
}

void ExifDirectoryLayout::AddOffset(std::uint16_t tag) {
    Place(tag) = Field{tag, ExifDataType::Long, 1, {}, 0};
}

void ExifDirectoryLayout::SetOffset(std::uint16_t tag, std::optional<std::uint32_t> offset) {
    Place(tag).Offset = offset;
}

bool ExifDirectoryLayout::IsOutOfLine(const Field& field) noexcept {
    return !field.Offset && field.Data.size() > InlineSize;
}

std::uint64_t ExifDirectoryLayout::GetSize() const noexcept {
    std::uint64_t size = CountSize + std::uint64_t{m_fields.size()} * FieldSize + NextOffsetSize;
    for (const Field& field : m_fields) {
        size += IsOutOfLine(field) ? EvenSize(field.Data.size()) : 0;
    }
    return size;
}

void ExifDirectoryLayout::Write(std::span<std::uint8_t> block, std::uint32_t offset, std::uint32_t nextOffset,
                                const ExifByteOrder& order) const {
    std::uint8_t* const pBlock = block.data();
    std::uint8_t* pField = pBlock + offset;
    order.WriteWord(pField, static_cast<std::uint16_t>(m_fields.size()));
    pField += CountSize;
    std::uint64_t valueOffset = offset + CountSize + m_fields.size() * FieldSize + NextOffsetSize;
    for (const Field& field : m_fields) {
        order.WriteWord(pField, field.Tag);
        order.WriteWord(pField + 2, static_cast<std::uint16_t>(field.Type));
        order.WriteDword(pField + 4, field.Count);
        if (field.Offset) {
            order.WriteDword(pField + 8, *field.Offset);
        } else if (IsOutOfLine(field)) {
            order.WriteDword(pField + 8, static_cast<std::uint32_t>(valueOffset));
            order.CopyValues(field.Type, field.Data.data(), field.Data.size(), pBlock + valueOffset);
            valueOffset += EvenSize(field.Data.size());
        } else {
            order.CopyValues(field.Type, field.Data.data(), field.Data.size(), pField + 8);
        }
        pField += FieldSize;
    }
    order.WriteDword(pField, nextOffset);
}

} // namespace ImagingFramework
