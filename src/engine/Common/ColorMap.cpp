#include "Common/ColorMap.h"

#include "metadata/Streams/AbstractReader.h"
#include "metadata/Streams/AbstractWriter.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace ImagingFramework {

namespace {

constexpr std::uint32_t SerializedHeaderSize = 30;

/// So many single searches pay for making the grid.
constexpr std::uint32_t SearchesBeforeGrid = 512;

void CheckPixelFormat(PixelFormat format) {
    if (format != PixelFormat::Format24bppRgb && format != PixelFormat::Format32bppArgb) {
        throw UnsupportedPixelFormatException();
    }
}

} // namespace

ColorMap::ColorMap(const ColorMap& other) { *this = other; }

ColorMap& ColorMap::operator=(const ColorMap& other) {
    if (this != &other) {
        m_entries = other.m_entries;
        m_format = other.m_format;
        m_uintEntryCount = other.m_uintEntryCount;
        ForgetMapper();
        if (other.m_bMapperReady) {
            GetMapper();
        }
    }
    return *this;
}

void ColorMap::Create(std::uint32_t entryCount, PixelFormat format) {
    Empty();
    CheckPixelFormat(format);
    try {
        m_entries.assign(CheckedProduct(entryCount, PixelFormatSize(format) / 8), 0);
    } catch (const std::bad_alloc&) {
        throw MemoryException();
    }
    m_format = format;
    m_uintEntryCount = entryCount;
}

void ColorMap::Empty() noexcept {
    m_entries.clear();
    m_format = PixelFormat::FormatUnknown;
    m_uintEntryCount = 0;
    ForgetMapper();
}

const std::uint8_t* ColorMap::Entry(std::uint32_t index) const {
    if (IsEmpty()) {
        throw NotInitializedException("ColorMap");
    }
    if (index >= m_uintEntryCount) {
        throw ArgumentOutOfRangeException("uintIndex");
    }
    return m_entries.data() + std::size_t{index} * GetEntrySize();
}

std::uint8_t* ColorMap::Entry(std::uint32_t index) {
    return const_cast<std::uint8_t*>(static_cast<const ColorMap*>(this)->Entry(index));
}

void ColorMap::GetEntryRgb(std::uint32_t index, std::uint8_t* pEntry) const { std::memcpy(pEntry, Entry(index), 3); }

void ColorMap::GetEntryArgb(std::uint32_t index, std::uint8_t* pEntry) const {
    const std::uint8_t* const entry = Entry(index);
    std::memcpy(pEntry, entry, 3);
    pEntry[3] = GetEntrySize() == 4 ? entry[3] : std::uint8_t{255};
}

std::uint8_t ColorMap::GetAlpha(std::uint32_t index) const {
    const std::uint8_t* const entry = Entry(index);
    return GetEntrySize() == 4 ? entry[3] : std::uint8_t{255};
}

void ColorMap::SetEntryRgb(std::uint32_t index, const std::uint8_t* pEntry) {
    std::memcpy(Entry(index), pEntry, 3);
    ForgetMapper();
}

void ColorMap::SetEntryArgb(std::uint32_t index, const std::uint8_t* pEntry) {
    std::memcpy(Entry(index), pEntry, GetEntrySize());
    ForgetMapper();
}

void ColorMap::SetAlpha(std::uint32_t index, std::uint8_t alpha) {
    static_cast<void>(Entry(index));
    if (m_format == PixelFormat::Format24bppRgb) {
        std::vector<std::uint8_t> entries(std::size_t{m_uintEntryCount} * 4);
        for (std::uint32_t i = 0; i < m_uintEntryCount; ++i) {
            GetEntryArgb(i, entries.data() + std::size_t{i} * 4);
        }
        m_entries = std::move(entries);
        m_format = PixelFormat::Format32bppArgb;
    }
    Entry(index)[3] = alpha;
    ForgetMapper();
}

KDTreeColorMapper& ColorMap::GetMapper() {
    if (IsEmpty()) {
        throw NotInitializedException("ColorMap");
    }
    if (!m_bMapperReady) {
        m_mapper.SetColorMap(*this);
        m_bMapperReady = true;
    }
    return m_mapper;
}

void ColorMap::ForgetMapper() noexcept {
    m_bMapperReady = false;
    m_pGrid.reset();
    m_uintSearchCount = 0;
}

GridColorMapper* ColorMap::GetGrid(std::size_t searchCount) {
    KDTreeColorMapper& mapper = GetMapper();
    m_uintSearchCount +=
        static_cast<std::uint32_t>(std::min<std::size_t>(searchCount, SearchesBeforeGrid - m_uintSearchCount));
    if (!m_pGrid && m_uintSearchCount == SearchesBeforeGrid && GridColorMapper::IsApplicable(*this)) {
        auto grid = std::make_unique<GridColorMapper>(mapper.GetSearch());
        grid->SetColorMap(*this);
        m_pGrid = std::move(grid);
    }
    return m_pGrid.get();
}

std::uint32_t ColorMap::FindNearestEntryIndex(std::uint8_t alpha, std::uint8_t red, std::uint8_t green,
                                              std::uint8_t blue) {
    if (GridColorMapper* const grid = GetGrid(1)) {
        return grid->Find(std::uint32_t{alpha} << 24 | std::uint32_t{red} << 16 | std::uint32_t{green} << 8 |
                          std::uint32_t{blue});
    }
    return m_mapper.GetNearestColorIndex(alpha, red, green, blue);
}

void ColorMap::FindNearestEntries(const std::uint8_t* pPixels, std::size_t count, std::uint8_t* pIndices) {
    if (GridColorMapper* const grid = GetGrid(count)) {
        grid->MapPixels(pPixels, count, pIndices);
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* const pixel = pPixels + 4 * i;
        const std::uint32_t index = m_mapper.GetNearestColorIndex(pixel[3], pixel[2], pixel[1], pixel[0]);
        pIndices[i] = static_cast<std::uint8_t>(std::min<std::uint32_t>(index, 255));
    }
}

void ColorMap::CopyColorMapperSettings(const ColorMap& objColorMap) {
    if (IsEmpty() || m_bMapperReady) {
        return;
    }
    if (objColorMap.GetEntryCount() != m_uintEntryCount) {
        throw ArgumentException("objColorMap", "The count of entries should be the same as the instance");
    }
    GetMapper();
}

void ColorMap::Serialize(AbstractWriter* pWriter) const {
    if (pWriter == nullptr) {
        throw ArgumentNullPointerException("pWriter");
    }
    pWriter->WriteDword(ToWord(m_format));
    pWriter->WriteDword(m_uintEntryCount);
    if (m_uintEntryCount != 0) {
        pWriter->WriteDword(static_cast<std::uint32_t>(m_entries.size()));
        pWriter->WriteBytes(m_entries.data(), m_entries.size());
    }
}

void ColorMap::Deserialize(AbstractReader* pReader) {
    if (pReader == nullptr) {
        throw ArgumentNullPointerException("pReader");
    }
    const auto format = static_cast<PixelFormat>(pReader->ReadDword());
    const std::uint32_t count = pReader->ReadDword();
    if (count == 0) {
        Empty();
        return;
    }
    if (count > MaximumEntryCount) {
        throw MediaCorruptedException();
    }
    ColorMap read(count, format);
    if (pReader->ReadDword() != read.m_entries.size()) {
        throw MediaCorruptedException();
    }
    pReader->ReadBytes(read.m_entries.size(), read.m_entries.data(), read.m_entries.size());
    *this = read;
}

std::uint32_t ColorMap::GetSerializedSize() const noexcept {
    return static_cast<std::uint32_t>(m_entries.size()) + SerializedHeaderSize;
}

bool ColorMap::operator==(const ColorMap& other) const noexcept {
    return m_uintEntryCount == other.m_uintEntryCount && m_format == other.m_format && m_entries == other.m_entries;
}

} // namespace ImagingFramework
