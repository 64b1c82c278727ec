#pragma once

#include "metadata/Exif/ExifContents.h"
#include "metadata/Exif/ExifDirectoryLayout.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace ImagingFramework {

/// Writes the APP1 payload of a JPEG file: "Exif" and two zeros, the TIFF header, the maker note where it keeps its
/// place, then the directories with their values: main image, Exif, GPS, interoperability, thumbnail, and the
/// thumbnail's file. Fields are in ascending order, all but a maker note in place begins at an even offset.
class ExifBlockWriter {
public:
    static constexpr std::uint32_t TiffHeaderSize = 8;
    /// What the marker of a JPEG file holds.
    static constexpr std::uint64_t MaxPayloadSize = 0xFFFD;

    /// The contents must outlive the writer.
    explicit ExifBlockWriter(const ExifContents& contents);

    /// Nothing when there is nothing to write. Fails with `UnexpectedException` above `MaxPayloadSize`, with
    /// `MediaUnsupportedException` for a new thumbnail when no codec writes JPEG, and as that codec does.
    std::vector<std::uint8_t> Write();

    /// Whether a tag is copied. Those of the structure and of the picture's form are not: they are made again, or make
    /// no sense elsewhere. Resolution and chroma position are copied only for a thumbnail; the maker note only when
    /// `keepsMakerNote` is set.
    static bool ShouldBeWritten(std::uint16_t tag, bool forThumbnail, bool keepsMakerNote) noexcept;
    /// Tags that lead to another place of the file they stand in.
    static bool IsOffsetIntoFile(std::uint16_t tag) noexcept;
    /// Byte order mark, version and the offset of the first directory.
    static void WriteTiffHeader(std::span<std::uint8_t> block, std::uint32_t firstOffset, bool isLittleEndian);

private:
    void PrepareThumbnail();
    void CollectDirectories();
    void CollectFields(ExifIfd ifd);
    void CollectThumbnailFields();
    bool CanMakerNoteKeepItsPlace() const;
    /// Fixes where everything goes; returns the size of the block from the TIFF header on.
    std::uint64_t PlaceDirectories(bool isMakerNoteInPlace);
    void WriteBlock(std::span<std::uint8_t> block, bool isMakerNoteInPlace);
    void SetPointer(ExifIfd from, std::uint16_t tag, ExifIfd target);
    ExifDirectoryLayout& Layout(ExifIfd ifd) { return m_layouts[static_cast<std::uint32_t>(ifd)]; }
    /// 0 for a directory that is not written.
    std::uint32_t OffsetOf(ExifIfd ifd) const {
        return static_cast<std::uint32_t>(m_offsets[static_cast<std::uint32_t>(ifd)]);
    }

    const ExifContents& m_contents;
    ExifTag m_compression;
    std::array<ExifTag, 3> m_resolution; ///< unit, horizontal, vertical
    std::array<ExifDirectoryLayout, ExifIfdCount> m_layouts;
    std::array<std::uint64_t, ExifIfdCount> m_offsets{};
    std::vector<std::uint8_t> m_encodedThumbnail;
    std::span<const std::uint8_t> m_thumbnailFile;
    std::uint64_t m_uintThumbnailOffset = 0;
};

} // namespace ImagingFramework
