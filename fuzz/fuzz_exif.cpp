// Parses the input as an EXIF block, once as it must be and once with damage dropped. What comes of the latter is read
// by every key, written, and read again: all tags that are copied must come back equal.

#include "Common/Utf8.h"
#include "ErrorHandling/Exceptions.h"
#include "metadata/Exif/ExifBlockWriter.h"
#include "metadata/Exif/ExifDataStorage.h"
#include "metadata/Streams/MemoryReader.h"
#include "metadata/Exif/IThumbnailCodec.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

using namespace ImagingFramework;

namespace {

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// Takes every second file. The TIFF files that thumbnails are made into must be whole.
class Codec : public IThumbnailCodec {
public:
    explicit Codec(FileFormat format) : m_format(format) { Register(format, this); }
    void Decode(std::span<const std::uint8_t> file, BitmapData& raster) const override {
        if (m_format == FileFormat::Tiff) {
            MemoryReader reader(file.data(), file.size());
            ExifData().Initialize(&reader, false);
        }
        if (file.back() % 2 != 0) {
            throw MediaCorruptedException();
        }
        raster.Create(1, 1, PixelFormat::Format24bppRgb);
    }
    std::vector<std::uint8_t> Encode(const BitmapData&) const override { return {0xFF, 0xD8, 0}; }

private:
    FileFormat m_format;
};

void ReadAll(const ExifDataStorage& exif) {
    std::uint32_t key = 0;
    for (std::uint32_t i = 0; i < exif.GetCount(); ++i) {
        Require(exif.GetKey(i, key) && exif.Contains(key));
        std::vector<DataItem> items;
        std::string text;
        exif.GetItemArray(key, items);
        exif.GetItemString(key, text);
        Require(IsUtf8(text));
        for (DataItem& item : items) {
            item.FreePointerValue();
        }
    }
    Require(!exif.GetKey(exif.GetCount(), key));
}

void CheckWritten(const ExifDataStorage& exif) {
    std::vector<std::uint8_t> payload;
    try {
        payload = exif.SerializeForJpeg();
    } catch (const UnexpectedException&) {
        return; // too large
    }
    if (payload.empty()) {
        return;
    }
    MemoryReader reader(payload.data() + 6, payload.size() - 6);
    ExifDataStorage again;
    again.Initialize(&reader, false);
    for (std::uint32_t number = 0; number < ExifIfdCount; ++number) {
        const auto ifd = static_cast<ExifIfd>(number);
        if (ifd == ExifIfd::Thumbnail && again.GetTagCount(ifd) == 0) {
            continue; // without a thumbnail there is no directory of it
        }
        std::vector<std::uint16_t> tags;
        exif.GetTagsIdentifiers(ifd, tags);
        for (const std::uint16_t tag : tags) {
            if (ExifBlockWriter::ShouldBeWritten(tag, false, true) && !ExifBlockWriter::IsOffsetIntoFile(tag)) {
                Require(again.GetTag(tag, ifd) != nullptr && *again.GetTag(tag, ifd) == *exif.GetTag(tag, ifd));
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    static const Codec s_jpeg(FileFormat::Jpeg);
    static const Codec s_tiff(FileFormat::Tiff);
    const std::uint8_t none = 0;
    MemoryReader reader(size == 0 ? &none : pData, size);
    ExifDataStorage strict;
    bool isWhole = true;
    try {
        strict.Initialize(&reader, true);
    } catch (const Exception&) {
        isWhole = false;
        Require(strict.GetCount() == 0);
    }
    ExifDataStorage tolerant;
    const bool hasHeader = tolerant.InitializeTolerantly(&reader, true);
    Require(hasHeader || !isWhole);
    Require(!isWhole || strict.GetCount() == tolerant.GetCount());
    ReadAll(tolerant);
    CheckWritten(tolerant);
    return 0;
}
