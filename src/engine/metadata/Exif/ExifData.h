#pragma once

#include "metadata/Exif/ExifContents.h"
#include "metadata/Exif/ExifTagTable.h"
#include "metadata/Exif/IExifTagSink.h"
#include "metadata/Streams/AbstractReader.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ImagingFramework {

/// An EXIF block: five directories of tags, after EXIF 2.2, and a thumbnail. Tags that the standard does not know are
/// kept and written back. Empty at first. Copies are independent of each other.
class ExifData {
public:
    ExifData() = default;
    ExifData(const ExifData&) = default;
    ExifData& operator=(const ExifData&) = default;
    virtual ~ExifData() = default;

    /// Replaces the contents by those of a block whose TIFF header stands at the beginning of the stream. The reader is
    /// used during the call alone. `withThumbnail` decodes the thumbnail.
    ///
    /// A damaged block is told, and leaves this empty: `ArgumentNullPointerException` ("pReader"), `ArgumentException`
    /// ("pReader") for a wrong header, ("type") for a field of an unknown type, `OutOfRangeException` where something
    /// lies beyond the end, `MediaCorruptedException` for values that make more than four times the block or 32 MiB
    /// together, `UnexpectedException` for a thumbnail without its size and for failures that are not the engine's own;
    /// and what the thumbnail's codec raises. Fields of 65,536 values or more and empty ones are left out; of several
    /// fields with one tag the first one counts.
    void Initialize(AbstractReader* pReader, bool withThumbnail);
    /// The same for those who must not fail: damage costs the field that has it, or the thumbnail. False, and empty,
    /// when the header is wrong or missing.
    bool InitializeTolerantly(AbstractReader* pReader, bool withThumbnail);

    /// The payload of the APP1 marker of a JPEG file, from "Exif" on; nothing when there is nothing to write. The
    /// thumbnail is written as JPEG; one that was read as JPEG, and not replaced since, as the same file. Fails with
    /// `UnexpectedException` above 0xFFFD bytes, with `MediaUnsupportedException` when a thumbnail has no codec.
    std::vector<std::uint8_t> SerializeForJpeg() const;
    /// Hands over the tags for a TIFF file. Those of the structure, resolution and chroma position are left out.
    void SerializeForTiff(IExifTagSink& sink) const;

    /// The byte order of the block; little-endian at first.
    bool IsLittleEndian() const noexcept { return m_contents.IsLittleEndian; }
    void SetLittleEndian(bool value) noexcept { m_contents.IsLittleEndian = value; }
    /// Whether the maker note is written, and then at its old place if it has one and the block allows it, because it
    /// may hold offsets of its own. True at first.
    bool GetKeepMakerNote() const noexcept { return m_contents.KeepsMakerNote; }
    void SetKeepMakerNote(bool value) noexcept { m_contents.KeepsMakerNote = value; }

    // An `ifd` that is no directory fails with `ArgumentOutOfRangeException` ("ifd").

    std::uint32_t GetTagCount(ExifIfd ifd) const;
    /// In ascending order.
    void GetTagsIdentifiers(ExifIfd ifd, std::vector<std::uint16_t>& tags) const;
    /// The tag at a position. Fails with `ArgumentOutOfRangeException` ("index") at the count and above.
    std::uint16_t GetTagAt(ExifIfd ifd, std::uint32_t index) const {
        return m_contents.GetDirectory(ifd).GetTagAt(index);
    }
    /// Null when the tag is not there; valid until the directory is changed.
    const ExifTag* GetTag(std::uint16_t tag, ExifIfd ifd) const { return m_contents.FindTag(tag, ifd); }
    /// Stores a tag, known to the tables or not, in place of one that is there. Fails with `UnexpectedException` above
    /// 65,535 tags in a directory.
    void SetTagInternal(std::uint16_t tag, ExifIfd ifd, ExifTag storedTag);
    /// Whether it was there.
    bool RemoveTag(std::uint16_t tag, ExifIfd ifd);
    /// The row of the table, null for a tag that it does not have.
    static const ExifTagInfo* GetTagInfoRef(std::uint16_t tag, ExifIfd ifd) noexcept {
        return FindExifTagInfo(tag, ifd);
    }
    /// A short English text; empty for a tag that the table does not have.
    static std::string_view GetTagDescription(std::uint16_t tag, ExifIfd ifd) noexcept;
    /// The value of a tag for people; false when it is not there.
    bool GetTagString(std::uint16_t tag, ExifIfd ifd, std::string& text) const;

    /// Null without a thumbnail.
    const BitmapData* GetThumbnailRef() const noexcept { return m_contents.pThumbnail.get(); }
    /// Null, or an empty raster, takes the thumbnail away.
    void SetThumbnail(std::shared_ptr<const BitmapData> pThumbnail);
    /// Takes away all tags and the thumbnail.
    void ClearTags();

private:
    ExifContents m_contents;
};

} // namespace ImagingFramework
