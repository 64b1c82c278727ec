#include "metadata/Bmp/BmpHeader.h"

#include "ErrorHandling/Exceptions.h"

#include <algorithm>
#include <limits>

namespace ImagingFramework {

namespace {

constexpr std::uint16_t ArrayMagic = 0x4142;
/// Bitmap, icon, colour pointer, colour icon.
constexpr std::uint16_t ImageMagics[] = {0x4D42, 0x4349, 0x5043, 0x4943};
constexpr std::uint32_t ArrayEntryRest = 12;
constexpr std::uint32_t MasksOffset = 40;

} // namespace

BmpHeader BmpHeader::Read(AbstractReader& reader) {
    BmpHeader header;
    header.ReadFileHeader(reader);
    header.ReadInfoHeader(reader);
    return header;
}

void BmpHeader::ReadFileHeader(AbstractReader& reader) {
    std::uint16_t magic = reader.ReadWord();
    while (magic == ArrayMagic) {
        // The entry's own fields are of no use: the image that follows the last entry in a row is the one that is read.
        reader.Seek(ArrayEntryRest, SeekOrigin::Current);
        magic = reader.ReadWord();
    }
    if (std::ranges::find(ImageMagics, magic) == std::end(ImageMagics)) {
        throw MediaCorruptedException();
    }
    constexpr std::uint32_t fileSizeAndReserved = 8;
    reader.Seek(fileSizeAndReserved, SeekOrigin::Current);
    PixelOffset = reader.ReadDword();
}

void BmpHeader::ReadInfoHeader(AbstractReader& reader) {
    const std::uint64_t start = reader.GetBytePosition();
    HeaderSize = reader.ReadDword();
    if (HeaderSize < CoreHeaderSize || HeaderSize > reader.GetSize() - start) {
        throw MediaCorruptedException();
    }
    if (HeaderSize == CoreHeaderSize) {
        Width = reader.ReadWord();
        Height = reader.ReadWord();
        reader.ReadWord(); // planes
        BitCount = reader.ReadWord();
    } else {
        Width = static_cast<std::int32_t>(reader.ReadDword());
        Height = static_cast<std::int32_t>(reader.ReadDword());
        reader.ReadWord(); // planes
        BitCount = reader.ReadWord();
        Compression = reader.ReadDword();
        reader.ReadDword(); // image size
        HorizontalPixelsPerMetre = reader.ReadDword();
        VerticalPixelsPerMetre = reader.ReadDword();
        ColoursUsed = reader.ReadDword();
        reader.ReadDword(); // colours important
    }
    if (Width < 0 || Height == std::numeric_limits<std::int32_t>::min()) {
        throw MediaCorruptedException();
    }
    PaletteOffset = start + HeaderSize;
    if (BitCount == 16 && Compression != 0 && HeaderSize != AlphaMaskHeaderSize) {
        reader.Seek(static_cast<std::int64_t>(start + MasksOffset));
        reader.ReadDword(); // red mask
        GreenMask = reader.ReadDword();
        reader.ReadDword(); // blue mask
    }
}

std::uint32_t BmpHeader::GetPaletteEntryCount() const noexcept {
    const std::uint32_t maximum = 1U << BitCount;
    return ColoursUsed == 0 ? maximum : std::min(ColoursUsed, maximum);
}

std::uint32_t BmpHeader::GetPaletteEntrySize() const noexcept {
    if (HeaderSize < InfoHeaderSize) {
        return 3;
    }
    const std::uint64_t fullSize = std::uint64_t{GetPaletteEntryCount()} * 4;
    return HeaderSize == InfoHeaderSize || PixelOffset >= PaletteOffset + fullSize ? 4 : 3;
}

} // namespace ImagingFramework
