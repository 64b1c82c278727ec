#pragma once

#include "metadata/Streams/AbstractReader.h"

#include <cstdint>

namespace ImagingFramework {

/// The headers of a BMP file in one record. All forms but the shortest are read as the one of 40 bytes; in the shortest,
/// of 12 bytes, the fields behind `BitCount` are 0.
struct BmpHeader {
    static constexpr std::uint32_t FileHeaderSize = 14;
    static constexpr std::uint32_t CoreHeaderSize = 12;
    static constexpr std::uint32_t InfoHeaderSize = 40;
    /// The header with an alpha mask and no colour space.
    static constexpr std::uint32_t AlphaMaskHeaderSize = 56;

    std::uint32_t PixelOffset = 0; ///< from the beginning of the stream
    std::uint32_t HeaderSize = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0; ///< above 0: the bottom line comes first
    std::uint16_t BitCount = 0;
    std::uint32_t Compression = 0;
    std::uint32_t HorizontalPixelsPerMetre = 0;
    std::uint32_t VerticalPixelsPerMetre = 0;
    std::uint32_t ColoursUsed = 0;
    std::uint32_t GreenMask = 0;     ///< of a 16-bit file with masks
    std::uint64_t PaletteOffset = 0; ///< behind the headers

    /// Reads from the reader's position, through the entries of a bitmap array if there are any. Fails with
    /// `MediaCorruptedException`; a file that is too short is the reader's failure.
    static BmpHeader Read(AbstractReader& reader);

    std::uint32_t GetPaletteEntryCount() const noexcept;
    /// 3 or 4 bytes. Behind a header of 40 bytes entries have 4. Longer headers are written with both: the gap up to
    /// the pixels decides. Every other header has 3.
    std::uint32_t GetPaletteEntrySize() const noexcept;

private:
    void ReadFileHeader(AbstractReader& reader);
    void ReadInfoHeader(AbstractReader& reader);
};

} // namespace ImagingFramework
