#include "metadata/Exif/ExifBlockWriter.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Exif/IThumbnailCodec.h"

#include <algorithm>
#include <optional>

namespace ImagingFramework {

namespace {

constexpr std::string_view Identifier("Exif\0\0", 6);
constexpr std::uint16_t TiffVersion = 42;
constexpr std::uint16_t JpegCompression = 6;
constexpr std::uint16_t InchUnit = 2;
constexpr std::size_t SmallestMakerNoteInPlace = 5;

/// The order in which the directories stand in a block.
constexpr ExifIfd WritingOrder[] = {ExifIfd::MainImage, ExifIfd::Exif, ExifIfd::Gps, ExifIfd::Interoperability,
                                    ExifIfd::Thumbnail};

// These lists are sorted.
// clang-format off
constexpr std::uint16_t StructuralTags[] = {
    ExifTagId::ImageWidth, ExifTagId::ImageHeight, ExifTagId::BitsPerSample, ExifTagId::Compression,
    ExifTagId::PhotometricInterpretation, ExifTagId::StripOffsets, ExifTagId::SamplesPerPixel, ExifTagId::RowsPerStrip,
    ExifTagId::StripByteCounts, ExifTagId::PlanarConfiguration, ExifTagId::JpegInterchangeFormat,
    ExifTagId::JpegInterchangeFormatLength, ExifTagId::YCbCrSubSampling, ExifTagId::PhotoshopResources,
    ExifTagId::ExifIfdPointer, ExifTagId::GpsIfdPointer, ExifTagId::InteroperabilityIfdPointer};
// clang-format on
constexpr std::uint16_t ThumbnailTags[] = {ExifTagId::XResolution, ExifTagId::YResolution, ExifTagId::ResolutionUnit,
                                           ExifTagId::YCbCrPositioning};
constexpr std::uint16_t OffsetTags[] = {
    0x0120, // free space
    0x0144, // tiles
    0x014A, // further directories
    ExifTagId::JpegInterchangeFormat,
    0x0207, // tables of old JPEG compression
    0x0208,
    0x0209,
    ExifTagId::ExifIfdPointer,
    ExifTagId::GpsIfdPointer,
    ExifTagId::InteroperabilityIfdPointer,
};
static_assert(std::ranges::is_sorted(StructuralTags) && std::ranges::is_sorted(ThumbnailTags) &&
              std::ranges::is_sorted(OffsetTags));

std::uint64_t ToEven(std::uint64_t offset) { return offset + offset % 2; }

} // namespace

bool ExifBlockWriter::ShouldBeWritten(std::uint16_t tag, bool forThumbnail, bool keepsMakerNote) noexcept {
    if (tag == ExifTagId::MakerNote) {
        return keepsMakerNote;
    }
    if (std::ranges::binary_search(ThumbnailTags, tag)) {
        return forThumbnail;
    }
    return !std::ranges::binary_search(StructuralTags, tag);
}

bool ExifBlockWriter::IsOffsetIntoFile(std::uint16_t tag) noexcept {
    return std::ranges::binary_search(OffsetTags, tag);
}

void ExifBlockWriter::WriteTiffHeader(std::span<std::uint8_t> block, std::uint32_t firstOffset, bool isLittleEndian) {
    const ExifByteOrder order(isLittleEndian);
    std::uint8_t* const pBlock = block.data();
    std::fill_n(pBlock, 2, static_cast<std::uint8_t>(isLittleEndian ? 'I' : 'M'));
    order.WriteWord(pBlock + 2, TiffVersion);
    order.WriteDword(pBlock + 4, firstOffset);
}

ExifBlockWriter::ExifBlockWriter(const ExifContents& contents)
    : m_contents(contents), m_compression(ExifTag::FromShort(JpegCompression)) {}

std::vector<std::uint8_t> ExifBlockWriter::Write() {
    PrepareThumbnail();
    CollectDirectories();
    if (Layout(ExifIfd::MainImage).IsEmpty() && m_thumbnailFile.empty()) {
        return {};
    }
    bool isMakerNoteInPlace = CanMakerNoteKeepItsPlace();
    std::uint64_t size = PlaceDirectories(isMakerNoteInPlace);
    if (isMakerNoteInPlace && size > MaxPayloadSize - Identifier.size()) {
        isMakerNoteInPlace = false;
        size = PlaceDirectories(false);
    }
    if (size > MaxPayloadSize - Identifier.size()) {
        throw UnexpectedException("EXIF data object is too big, its size exceeds 64K limit (that is defined by Jpeg "
                                  "standart for APP1 marker data).");
    }
    std::vector<std::uint8_t> payload(Identifier.size() + size);
    std::ranges::copy(Identifier, payload.begin());
    WriteBlock(std::span(payload).subspan(Identifier.size()), isMakerNoteInPlace);
    return payload;
}

void ExifBlockWriter::PrepareThumbnail() {
    if (!m_contents.ThumbnailFile.empty()) {
        m_thumbnailFile = m_contents.ThumbnailFile;
    } else if (m_contents.pThumbnail != nullptr) {
        const IThumbnailCodec* const pCodec = IThumbnailCodec::Find(FileFormat::Jpeg);
        if (pCodec == nullptr) {
            throw MediaUnsupportedException();
        }
        m_encodedThumbnail = pCodec->Encode(*m_contents.pThumbnail);
        m_thumbnailFile = m_encodedThumbnail;
    }
}

void ExifBlockWriter::CollectDirectories() {
    for (const ExifIfd ifd : {ExifIfd::MainImage, ExifIfd::Exif, ExifIfd::Gps, ExifIfd::Interoperability}) {
        CollectFields(ifd);
    }
    if (!Layout(ExifIfd::Interoperability).IsEmpty()) {
        Layout(ExifIfd::Exif).AddOffset(ExifTagId::InteroperabilityIfdPointer);
    }
    if (!Layout(ExifIfd::Exif).IsEmpty()) {
        Layout(ExifIfd::MainImage).AddOffset(ExifTagId::ExifIfdPointer);
    }
    if (!Layout(ExifIfd::Gps).IsEmpty()) {
        Layout(ExifIfd::MainImage).AddOffset(ExifTagId::GpsIfdPointer);
    }
    // A directory of a thumbnail that is not there would be taken for damage.
    if (!m_thumbnailFile.empty()) {
        CollectFields(ExifIfd::Thumbnail);
        CollectThumbnailFields();
    }
}

void ExifBlockWriter::CollectFields(ExifIfd ifd) {
    // A JPEG file has its resolution and chroma position in the main directory.
    const bool hasResolution = ifd == ExifIfd::Thumbnail || ifd == ExifIfd::MainImage;
    for (const auto& [tag, value] : m_contents.GetDirectory(ifd)) {
        if (ShouldBeWritten(tag, hasResolution, m_contents.KeepsMakerNote) && !IsOffsetIntoFile(tag) &&
            !value.Data.empty()) {
            Layout(ifd).Add(tag, value);
        }
    }
}

void ExifBlockWriter::CollectThumbnailFields() {
    const BitmapData unknown;
    const BitmapData& raster = m_contents.pThumbnail == nullptr ? unknown : *m_contents.pThumbnail;
    const auto resolution = [](double dotsPerInch) { return ExifTag::FromRational(ExifTag::ToRational(dotsPerInch)); };
    m_resolution = {ExifTag::FromShort(InchUnit), resolution(raster.GetHorizontalResolution()),
                    resolution(raster.GetVerticalResolution())};
    ExifDirectoryLayout& layout = Layout(ExifIfd::Thumbnail);
    // The file that was read keeps the resolution that stood beside it.
    constexpr std::uint16_t tags[] = {ExifTagId::ResolutionUnit, ExifTagId::XResolution, ExifTagId::YResolution};
    const bool isKept = !m_contents.ThumbnailFile.empty() && std::ranges::all_of(tags, [&](std::uint16_t tag) {
        return m_contents.FindTag(tag, ExifIfd::Thumbnail) != nullptr;
    });
    for (std::size_t i = 0; !isKept && i < m_resolution.size(); ++i) {
        layout.Add(tags[i], m_resolution[i]);
    }
    layout.Add(ExifTagId::Compression, m_compression);
    layout.AddOffset(ExifTagId::JpegInterchangeFormat);
    layout.AddOffset(ExifTagId::JpegInterchangeFormatLength);
    layout.SetOffset(ExifTagId::JpegInterchangeFormatLength, static_cast<std::uint32_t>(m_thumbnailFile.size()));
}

bool ExifBlockWriter::CanMakerNoteKeepItsPlace() const {
    const ExifTag* const pNote = m_contents.FindTag(ExifTagId::MakerNote, ExifIfd::Exif);
    return m_contents.KeepsMakerNote && m_contents.MakerNoteOffset >= TiffHeaderSize && pNote != nullptr &&
           pNote->Type == ExifDataType::Undefined && pNote->Data.size() >= SmallestMakerNoteInPlace;
}

std::uint64_t ExifBlockWriter::PlaceDirectories(bool isMakerNoteInPlace) {
    std::uint64_t position = TiffHeaderSize;
    if (isMakerNoteInPlace) {
        const ExifTag& note = *m_contents.FindTag(ExifTagId::MakerNote, ExifIfd::Exif);
        position = ToEven(std::uint64_t{m_contents.MakerNoteOffset} + note.Data.size());
    }
    for (const ExifIfd ifd : WritingOrder) {
        // The main directory is there even if it has no fields: the others are found through it.
        const bool isWritten = ifd == ExifIfd::MainImage || !Layout(ifd).IsEmpty();
        if (isWritten && ifd == ExifIfd::Exif && CanMakerNoteKeepItsPlace()) {
            Layout(ifd).SetOffset(ExifTagId::MakerNote, isMakerNoteInPlace ? std::optional(m_contents.MakerNoteOffset)
                                                                           : std::nullopt);
        }
        m_offsets[static_cast<std::uint32_t>(ifd)] = isWritten ? position : 0;
        position += isWritten ? Layout(ifd).GetSize() : 0;
    }
    m_uintThumbnailOffset = position;
    return position + m_thumbnailFile.size();
}

void ExifBlockWriter::WriteBlock(std::span<std::uint8_t> block, bool isMakerNoteInPlace) {
    const ExifByteOrder order(m_contents.IsLittleEndian);
    WriteTiffHeader(block, OffsetOf(ExifIfd::MainImage), m_contents.IsLittleEndian);
    if (isMakerNoteInPlace) {
        const ExifTag& note = *m_contents.FindTag(ExifTagId::MakerNote, ExifIfd::Exif);
        std::ranges::copy(note.Data, block.begin() + m_contents.MakerNoteOffset);
    }
    SetPointer(ExifIfd::MainImage, ExifTagId::ExifIfdPointer, ExifIfd::Exif);
    SetPointer(ExifIfd::MainImage, ExifTagId::GpsIfdPointer, ExifIfd::Gps);
    SetPointer(ExifIfd::Exif, ExifTagId::InteroperabilityIfdPointer, ExifIfd::Interoperability);
    if (!m_thumbnailFile.empty()) {
        const auto offset = static_cast<std::uint32_t>(m_uintThumbnailOffset);
        Layout(ExifIfd::Thumbnail).SetOffset(ExifTagId::JpegInterchangeFormat, offset);
        std::ranges::copy(m_thumbnailFile, block.begin() + offset);
    }
    for (const ExifIfd ifd : WritingOrder) {
        if (OffsetOf(ifd) != 0) {
            const std::uint32_t next = ifd == ExifIfd::MainImage ? OffsetOf(ExifIfd::Thumbnail) : 0;
            Layout(ifd).Write(block, OffsetOf(ifd), next, order);
        }
    }
}

void ExifBlockWriter::SetPointer(ExifIfd from, std::uint16_t tag, ExifIfd target) {
    if (OffsetOf(target) != 0) {
        Layout(from).SetOffset(tag, OffsetOf(target));
    }
}

} // namespace ImagingFramework
