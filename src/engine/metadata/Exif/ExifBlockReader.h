#pragma once

#include "metadata/Exif/ExifByteOrder.h"
#include "metadata/Exif/ExifContents.h"
#include "metadata/Streams/AbstractReader.h"

#include <cstdint>
#include <span>
#include <vector>

namespace ImagingFramework {

/// What becomes of damage inside a block: it is told, or the field that has it is left out.
enum class ExifDamage { Raise, DropField };

/// Parses the directories of a block whose TIFF header stands at the beginning of a stream.
///
/// Failures: a wrong header is `ArgumentException` ("pReader"), an unknown type `ArgumentException` ("type"), an offset
/// or size beyond the end `OutOfRangeException`, values that make more than four times the block or 32 MiB together
/// (they overlap then) `MediaCorruptedException`. With `DropField` only the header can fail.
class ExifBlockReader {
public:
    static constexpr std::uint64_t MaxValueBytes = 32U << 20;

    ExifBlockReader(AbstractReader& reader, ExifDamage damage);

    /// Fails with `UnexpectedException` and `ArgumentException` for a thumbnail that is wanted and damaged, and as its
    /// codec does.
    ExifContents Read(bool withThumbnail);

    /// The bytes of a part of a stream, which must lie inside it and not be larger than `MaxValueBytes`.
    static std::vector<std::uint8_t> ReadRange(AbstractReader& reader, std::uint64_t offset, std::uint64_t size);

private:
    void ParseHeader();
    /// Returns the offset of the next directory.
    std::uint32_t ParseIfdSection(std::uint32_t offset, ExifIfd ifd);
    void ParseIfdField(const std::uint8_t* pField, ExifIfd ifd, std::vector<ExifEntry>& entries);
    ExifTag ReadValues(ExifDataType type, std::span<const std::uint8_t> bytes) const;
    void FollowPointer(const ExifTag* pPointer, ExifIfd target);
    /// Takes the size of a value from what is left for all.
    void SpendBudget(std::uint64_t size);
    template <class Step>
    void Attempt(Step step) const;

    AbstractReader& m_reader;
    ExifDamage m_enDamage;
    std::uint64_t m_uintSize;
    std::uint64_t m_uintBudget;
    ExifByteOrder m_order{true};
    std::uint32_t m_uintFirstIfdOffset = 0;
    std::uint32_t m_uintParsedIfds = 0; ///< a bit for each
    ExifContents m_contents;
};

} // namespace ImagingFramework
