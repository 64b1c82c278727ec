#include "metadata/Exif/ExifThumbnailReader.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/AdobeResources/AdobeResourceBlockIterator.h"
#include "metadata/Exif/ExifBlockReader.h"
#include "metadata/Exif/ExifBlockWriter.h"
#include "metadata/Exif/ExifDirectoryLayout.h"
#include "metadata/Exif/IThumbnailCodec.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>

namespace ImagingFramework {

namespace {

constexpr std::size_t SmallestResources = 12; ///< up to this size there is no block
/// Thumbnail resources: JPEG files behind a header of their own.
constexpr std::uint16_t ThumbnailResources[] = {0x0409, 0x040C};
constexpr std::size_t ThumbnailHeaderSize = 28;

[[noreturn]] void FailDecoding(const char* place) {
    throw UnexpectedException(std::string("Error occured while decoding thumbnail (") + place + ").");
}

/// The unit of the resolution; a directory without one, or with none that is known, counts in inches.
LinearUnit UnitOf(std::optional<std::uint32_t> number) {
    switch (number.value_or(2)) {
    case 3:
        return LinearUnit::Cm;
    case 4:
        return LinearUnit::Mm;
    case 5:
        return LinearUnit::Micrometer;
    default:
        return LinearUnit::Inch;
    }
}

std::vector<std::uint32_t> NumbersOf(const ExifTag& tag) {
    std::vector<std::uint32_t> numbers;
    for (std::uint32_t i = 0; i < tag.GetCount(); ++i) {
        numbers.push_back(tag.GetNumber(i).value());
    }
    return numbers;
}

} // namespace

ExifThumbnailReader::ExifThumbnailReader(AbstractReader& reader, ExifContents& contents)
    : m_reader(reader), m_contents(contents) {}

void ExifThumbnailReader::ParsePhotoshopTag() {
    const ExifTag* const pTag = m_contents.FindTag(ExifTagId::PhotoshopResources, ExifIfd::MainImage);
    if (pTag == nullptr || pTag->Data.size() <= SmallestResources ||
        std::memcmp(pTag->Data.data(), AdobeResourceBlockIterator::Signature.data(),
                    AdobeResourceBlockIterator::Signature.size()) != 0) {
        return;
    }
    AdobeResourceBlockIterator block(pTag->Data.data(), pTag->Data.size());
    do {
        if (std::ranges::find(ThumbnailResources, block.GetId()) == std::end(ThumbnailResources)) {
            continue;
        }
        const std::span<const std::uint8_t> data(block.GetData(), block.GetDataSize());
        if (data.size() <= ThumbnailHeaderSize) {
            throw UnexpectedException("Cannot create stream object for thumbnail decoding.");
        }
        if (auto raster = Decode(FileFormat::Jpeg, data.subspan(ThumbnailHeaderSize))) {
            m_contents.pThumbnail = std::move(raster);
        }
    } while (block.Next());
}

void ExifThumbnailReader::ParseThumbnail() {
    const ExifTag* const pJpeg = m_contents.FindTag(ExifTagId::JpegInterchangeFormat, ExifIfd::Thumbnail);
    if (pJpeg != nullptr) {
        const ExifTag* const pLength =
            m_contents.FindTag(ExifTagId::JpegInterchangeFormatLength, ExifIfd::Thumbnail);
        const std::optional<std::uint32_t> length = pLength == nullptr ? std::nullopt : pLength->GetNumber();
        if (!length || !pJpeg->GetNumber()) {
            throw UnexpectedException();
        }
        ParseJpegCompressedThumbnail(*pJpeg->GetNumber(), *length);
    } else if (m_contents.FindTag(ExifTagId::StripOffsets, ExifIfd::Thumbnail) != nullptr) {
        ParseUncompressedThumbnail();
    }
}

void ExifThumbnailReader::ParseJpegCompressedThumbnail(std::uint32_t offset, std::uint32_t length) {
    const std::uint64_t size = m_reader.GetSize();
    if (offset == 0 || offset >= size || length == 0) {
        return;
    }
    const std::uint64_t there = std::min<std::uint64_t>(length, size - offset);
    std::vector<std::uint8_t> file = ExifBlockReader::ReadRange(m_reader, offset, there);
    if (auto raster = Decode(FileFormat::Jpeg, file)) {
        ReadResolution(*raster);
        m_contents.pThumbnail = std::move(raster);
    }
    m_contents.ThumbnailFile = std::move(file);
}

void ExifThumbnailReader::ParseUncompressedThumbnail() {
    std::vector<std::uint32_t> lengths;
    const std::vector<std::uint8_t> strips = ReadStrips(lengths);
    // The directory and the strips as a file of their own, whatever the order of this block is.
    ExifTag offsets{ExifDataType::Long, std::vector<std::uint8_t>(lengths.size() * sizeof(std::uint32_t))};
    ExifDirectoryLayout directory;
    for (const auto& [tag, value] : m_contents.GetDirectory(ExifIfd::Thumbnail)) {
        if (!ExifBlockWriter::IsOffsetIntoFile(tag)) {
            directory.Add(tag, value);
        }
    }
    directory.Add(ExifTagId::StripOffsets, offsets);
    std::uint64_t position = ExifBlockWriter::TiffHeaderSize + directory.GetSize();
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        const auto place = static_cast<std::uint32_t>(position);
        std::memcpy(offsets.Data.data() + i * sizeof place, &place, sizeof place);
        position += lengths[i];
    }
    std::vector<std::uint8_t> file(position);
    ExifBlockWriter::WriteTiffHeader(file, ExifBlockWriter::TiffHeaderSize, true);
    directory.Write(file, ExifBlockWriter::TiffHeaderSize, 0, ExifByteOrder(true));
    std::ranges::copy(strips, file.end() - static_cast<std::ptrdiff_t>(strips.size()));
    if (auto raster = Decode(FileFormat::Tiff, file)) {
        ReadResolution(*raster);
        m_contents.pThumbnail = std::move(raster);
    }
}

std::vector<std::uint8_t> ExifThumbnailReader::ReadStrips(std::vector<std::uint32_t>& lengths) {
    const ExifTag& offsets = *m_contents.FindTag(ExifTagId::StripOffsets, ExifIfd::Thumbnail);
    const ExifTag* const pLengths = m_contents.FindTag(ExifTagId::StripByteCounts, ExifIfd::Thumbnail);
    if (pLengths == nullptr || !pLengths->GetNumber() || !offsets.GetNumber() ||
        pLengths->GetCount() != offsets.GetCount()) {
        FailDecoding("0x0");
    }
    lengths = NumbersOf(*pLengths);
    const std::uint64_t size = std::accumulate(lengths.begin(), lengths.end(), std::uint64_t{0});
    if (size == 0) {
        FailDecoding("0x3");
    }
    if (size > std::min(m_reader.GetSize(), ExifBlockReader::MaxValueBytes)) {
        throw MediaCorruptedException();
    }
    std::vector<std::uint8_t> strips;
    for (std::uint32_t i = 0; i < offsets.GetCount(); ++i) {
        const std::vector<std::uint8_t> strip =
            ExifBlockReader::ReadRange(m_reader, offsets.GetNumber(i).value(), lengths[i]);
        strips.insert(strips.end(), strip.begin(), strip.end());
    }
    return strips;
}

std::shared_ptr<BitmapData> ExifThumbnailReader::Decode(FileFormat format, std::span<const std::uint8_t> file) {
    const IThumbnailCodec* const pCodec = IThumbnailCodec::Find(format);
    if (pCodec == nullptr) {
        return nullptr;
    }
    auto raster = std::make_shared<BitmapData>();
    pCodec->Decode(file, *raster);
    return raster->IsEmpty() ? nullptr : raster;
}

void ExifThumbnailReader::ReadResolution(BitmapData& raster) const {
    const auto find = [&](std::uint16_t tag) { return m_contents.FindTag(tag, ExifIfd::Thumbnail); };
    const ExifTag* const pUnit = find(ExifTagId::ResolutionUnit);
    const LinearUnit unit = UnitOf(pUnit == nullptr ? std::nullopt : pUnit->GetNumber());
    if (const ExifTag* const pX = find(ExifTagId::XResolution)) {
        raster.SetHorizontalResolution(pX->GetReal().value_or(0), unit);
    }
    if (const ExifTag* const pY = find(ExifTagId::YResolution)) {
        raster.SetVerticalResolution(pY->GetReal().value_or(0), unit);
    }
}

} // namespace ImagingFramework
