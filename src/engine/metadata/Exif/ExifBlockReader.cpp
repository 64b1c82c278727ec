#include "metadata/Exif/ExifBlockReader.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Exif/ExifThumbnailReader.h"

#include <algorithm>
#include <utility>

namespace ImagingFramework {

namespace {

constexpr std::uint16_t LittleEndianMark = 0x4949;
constexpr std::uint16_t BigEndianMark = 0x4D4D;
constexpr std::uint16_t TiffVersion = 42;
constexpr std::uint32_t HeaderSize = 8;
constexpr std::uint32_t FieldSize = 12;
constexpr std::uint32_t InlineSize = 4; ///< values up to this size stand in the field itself
constexpr std::uint32_t CountLimit = 0x10000;

} // namespace

ExifBlockReader::ExifBlockReader(AbstractReader& reader, ExifDamage damage)
    : m_reader(reader), m_enDamage(damage), m_uintSize(reader.GetSize()),
      m_uintBudget(m_uintSize > MaxValueBytes / 4 ? MaxValueBytes : m_uintSize * 4) {}

ExifContents ExifBlockReader::Read(bool withThumbnail) {
    ParseHeader();
    Attempt([&] {
        const std::uint32_t nextOffset = ParseIfdSection(m_uintFirstIfdOffset, ExifIfd::MainImage);
        if (nextOffset != 0) {
            ParseIfdSection(nextOffset, ExifIfd::Thumbnail);
        }
    });
    if (withThumbnail) {
        ExifThumbnailReader thumbnail(m_reader, m_contents);
        Attempt([&] { thumbnail.ParsePhotoshopTag(); });
        Attempt([&] { thumbnail.ParseThumbnail(); });
    }
    return std::move(m_contents);
}

/// Runs a step of the parse, whose failures end nothing but itself when damage is to be dropped.
template <class Step>
void ExifBlockReader::Attempt(Step step) const {
    try {
        step();
    } catch (...) {
        if (m_enDamage == ExifDamage::Raise) {
            throw;
        }
    }
}

void ExifBlockReader::ParseHeader() {
    const std::vector<std::uint8_t> header = ReadRange(m_reader, 0, HeaderSize);
    const std::uint16_t mark = m_order.ReadWord(header.data());
    m_contents.IsLittleEndian = mark == LittleEndianMark;
    m_order = ExifByteOrder(m_contents.IsLittleEndian);
    if ((mark != LittleEndianMark && mark != BigEndianMark) || m_order.ReadWord(header.data() + 2) != TiffVersion) {
        throw ArgumentException("pReader", "Wrong or corrupted TIFF-header has been specified.");
    }
    m_uintFirstIfdOffset = m_order.ReadDword(header.data() + 4);
}

std::uint32_t ExifBlockReader::ParseIfdSection(std::uint32_t offset, ExifIfd ifd) {
    m_uintParsedIfds |= 1U << static_cast<std::uint32_t>(ifd);
    const std::uint64_t tableOffset = std::uint64_t{offset} + 2;
    const std::uint32_t fieldCount = m_order.ReadWord(ReadRange(m_reader, offset, 2).data());
    const std::uint64_t wantedSize = std::uint64_t{fieldCount} * FieldSize + 4;
    // Of a directory that is cut off, the whole fields count where damage is dropped.
    const std::uint64_t size =
        m_enDamage == ExifDamage::Raise ? wantedSize : std::min(wantedSize, m_uintSize - tableOffset);
    const std::vector<std::uint8_t> table = ReadRange(m_reader, tableOffset, size);
    std::vector<ExifEntry> entries;
    entries.reserve(table.size() / FieldSize);
    for (std::uint64_t at = 0; at + FieldSize <= table.size() && at < std::uint64_t{fieldCount} * FieldSize;
         at += FieldSize) {
        Attempt([&] { ParseIfdField(table.data() + at, ifd, entries); });
    }
    m_contents.GetDirectory(ifd) = ExifDirectory(std::move(entries));
    FollowPointer(m_contents.FindTag(ExifTagId::ExifIfdPointer, ifd), ExifIfd::Exif);
    FollowPointer(m_contents.FindTag(ExifTagId::GpsIfdPointer, ifd), ExifIfd::Gps);
    FollowPointer(m_contents.FindTag(ExifTagId::InteroperabilityIfdPointer, ifd), ExifIfd::Interoperability);
    return size == wantedSize ? m_order.ReadDword(table.data() + size - 4) : 0;
}

void ExifBlockReader::ParseIfdField(const std::uint8_t* pField, ExifIfd ifd, std::vector<ExifEntry>& entries) {
    const std::uint16_t tag = m_order.ReadWord(pField);
    const auto type = static_cast<ExifDataType>(m_order.ReadWord(pField + 2));
    const std::uint32_t count = m_order.ReadDword(pField + 4);
    if (count >= CountLimit) {
        return;
    }
    const std::uint64_t size = std::uint64_t{ExifDataTypeSize(type)} * count;
    if (size == 0) {
        return;
    }
    SpendBudget(size);
    if (size <= InlineSize) {
        entries.push_back({tag, ReadValues(type, {pField + 8, static_cast<std::size_t>(size)})});
        return;
    }
    const std::uint32_t valueOffset = m_order.ReadDword(pField + 8);
    entries.push_back({tag, ReadValues(type, ReadRange(m_reader, valueOffset, size))});
    if (ifd == ExifIfd::Exif && tag == ExifTagId::MakerNote && m_contents.MakerNoteOffset == 0) {
        m_contents.MakerNoteOffset = valueOffset;
    }
}

ExifTag ExifBlockReader::ReadValues(ExifDataType type, std::span<const std::uint8_t> bytes) const {
    ExifTag tag{type, {}};
    const bool isUnterminated = type == ExifDataType::Ascii && bytes.back() != 0;
    tag.Data.reserve(bytes.size() + (isUnterminated ? 1 : 0));
    tag.Data.resize(bytes.size());
    m_order.CopyValues(type, bytes.data(), bytes.size(), tag.Data.data());
    if (isUnterminated) {
        tag.Data.push_back(0);
    }
    return tag;
}

/// Each directory is parsed once in a block, so pointers in a ring come to an end. At 0 there is the header: no
/// directory.
void ExifBlockReader::FollowPointer(const ExifTag* pPointer, ExifIfd target) {
    const std::uint32_t offset = pPointer == nullptr ? 0 : pPointer->GetNumber().value_or(0);
    if (offset != 0 && (m_uintParsedIfds >> static_cast<std::uint32_t>(target) & 1) == 0) {
        Attempt([&] { ParseIfdSection(offset, target); });
    }
}

std::vector<std::uint8_t> ExifBlockReader::ReadRange(AbstractReader& reader, std::uint64_t offset,
                                                     std::uint64_t size) {
    const std::uint64_t end = reader.GetSize();
    if (offset > end || size > end - offset) {
        throw OutOfRangeException();
    }
    if (size > MaxValueBytes) {
        throw MediaCorruptedException();
    }
    std::vector<std::uint8_t> bytes(size);
    if (size != 0) {
        reader.Seek(static_cast<std::int64_t>(offset));
        reader.ReadBytes(size, bytes.data(), bytes.size());
    }
    return bytes;
}

void ExifBlockReader::SpendBudget(std::uint64_t size) {
    if (size > m_uintBudget) {
        throw MediaCorruptedException();
    }
    m_uintBudget -= size;
}

} // namespace ImagingFramework
