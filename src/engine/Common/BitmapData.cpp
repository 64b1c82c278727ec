#include "Common/BitmapData.h"

#include "Common/ColorProfileUtils.h"
#include "Common/Numeric.h"
#include "MemoryManagement/Memory.h"
#include "metadata/Streams/AbstractReader.h"
#include "metadata/Streams/AbstractWriter.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace ImagingFramework {

namespace {

/// What `Serialize` writes besides pixels, palette and profile, with room to spare.
constexpr std::uint64_t SerializedOverhead = 300;

double ToDotsPerInch(double value, LinearUnit unit) {
    const double dpi = value / InchesPerUnit(unit);
    return std::isfinite(dpi) && dpi > 0.0 ? dpi : BitmapData::DefaultResolution;
}

bool IsRasterFormat(PixelFormat format) { return std::ranges::count(AllPixelFormats(), format) != 0; }

} // namespace

BitmapData::BitmapData(std::uint32_t width, std::uint32_t height, PixelFormat format, const ColorMap* pPalette) {
    Create(width, height, format, pPalette);
}

BitmapData::BitmapData(const BitmapData& other) { *this = other; }

BitmapData& BitmapData::operator=(const BitmapData& other) {
    if (this == &other) {
        return *this;
    }
    if (other.IsEmpty()) {
        Empty();
        return *this;
    }
    Create(other.m_uintWidth, other.m_uintHeight, other.m_format, other.GetColorMapRef());
    m_horizontalResolution = other.m_horizontalResolution;
    m_verticalResolution = other.m_verticalResolution;
    m_pProfile = other.m_pProfile;
    const std::size_t rowSize = GetRowSize();
    if (m_uintStride == other.m_uintStride && !other.m_bAttached) {
        std::memcpy(m_pPixels, other.m_pPixels, std::size_t{m_uintStride} * m_uintHeight);
        return *this;
    }
    for (std::uint32_t y = 0; y < m_uintHeight; ++y) {
        std::memcpy(GetScanlineRef(y), other.GetScanlineRef(y), rowSize);
    }
    return *this;
}

std::uint8_t* BitmapData::GetScanlineRef(std::uint32_t y) const {
    if (y >= m_uintHeight) {
        throw ArgumentException("intScanline");
    }
    return m_pPixels == nullptr ? nullptr : m_pPixels + std::size_t{m_uintStride} * y;
}

double BitmapData::GetHorizontalResolution(LinearUnit unit) const noexcept {
    return m_horizontalResolution * InchesPerUnit(unit);
}

double BitmapData::GetVerticalResolution(LinearUnit unit) const noexcept {
    return m_verticalResolution * InchesPerUnit(unit);
}

void BitmapData::SetHorizontalResolution(double value, LinearUnit unit) noexcept {
    m_horizontalResolution = ToDotsPerInch(value, unit);
}

void BitmapData::SetVerticalResolution(double value, LinearUnit unit) noexcept {
    m_verticalResolution = ToDotsPerInch(value, unit);
}

void BitmapData::SetProfileName(const std::filesystem::path* pPath) {
    // The path may be that of the old profile, whose file goes with it.
    const std::shared_ptr<const ProfileFile> old = std::move(m_pProfile);
    if (pPath == nullptr) {
        return;
    }
    if (IsEmpty()) {
        throw NotInitializedException("BitmapData");
    }
    m_pProfile = DuplicateColorProfile(*pPath);
}

void BitmapData::SetProfile(const void* pProfileBuffer, std::size_t size) {
    if (pProfileBuffer == nullptr) {
        throw ArgumentNullPointerException("pProfileBuffer");
    }
    m_pProfile = CreateProfileByData({static_cast<const std::uint8_t*>(pProfileBuffer), size});
}

std::vector<std::uint8_t> BitmapData::GetProfileData() const {
    return ImagingFramework::GetProfileData(GetProfileNameRef());
}

void BitmapData::Create(std::uint32_t width, std::uint32_t height, PixelFormat format, const ColorMap* pPalette) {
    // A palette of this very raster must outlive the emptying.
    std::shared_ptr<ColorMap> palette = pPalette != nullptr ? std::make_shared<ColorMap>(*pPalette) : nullptr;
    Describe(width, height, format);
    AllocatePixels(true);
    m_pColorMap = std::move(palette);
}

void BitmapData::CreateUncleared(std::uint32_t width, std::uint32_t height, PixelFormat format) {
    Describe(width, height, format);
    AllocatePixels(false);
    ClearRowEnds();
}

void BitmapData::Describe(std::uint32_t width, std::uint32_t height, PixelFormat format) {
    Empty();
    if (format == PixelFormat::FormatUnknown) {
        throw ArgumentException("format", "Pixel format should be known.");
    }
    m_horizontalResolution = DefaultResolution;
    m_verticalResolution = DefaultResolution;
    m_uintWidth = width;
    m_uintHeight = height;
    m_format = format;
}

/// What no pixel covers must not tell what the memory held before: files get it.
void BitmapData::ClearRowEnds() {
    if (IsEmpty()) {
        return;
    }
    const std::size_t whole = static_cast<std::size_t>(std::uint64_t{m_uintWidth} * PixelFormatSize(m_format) / 8);
    if (whole == m_uintStride) {
        return;
    }
    for (std::size_t y = 0; y < m_uintHeight; ++y) {
        std::memset(m_pPixels + y * m_uintStride + whole, 0, m_uintStride - whole);
    }
}

void BitmapData::AllocatePixels(bool zeroed) {
    if (m_uintWidth == 0 || m_uintHeight == 0) {
        return;
    }
    const std::uint32_t stride = CheckedStride(m_uintWidth, m_format, StrideAlignment);
    const std::uint64_t size = CheckedProduct(stride, m_uintHeight);
    if (size > std::numeric_limits<std::uint32_t>::max()) {
        throw OverflowException();
    }
    m_pMemory = AllocSharedBytes(size, zeroed);
    m_pPixels = m_pMemory.get();
    m_uintStride = stride;
}

void BitmapData::Empty() noexcept {
    m_pPixels = nullptr;
    m_pMemory.reset();
    m_pColorMap.reset();
    m_pProfile.reset();
    m_uintWidth = 0;
    m_uintHeight = 0;
    m_uintStride = 0;
    m_format = PixelFormat::FormatUnknown;
    m_bAttached = false;
}

void BitmapData::AttachPartially(const BitmapData& parent, const RegionRect& rectangle) {
    if (parent.IsEmpty()) {
        throw ArgumentException("objData", "instance is empty");
    }
    const std::int64_t x = std::min(rectangle.Left, rectangle.Right);
    const std::int64_t y = std::min(rectangle.Top, rectangle.Bottom);
    if (x < 0 || y < 0 || x >= parent.m_uintWidth || y >= parent.m_uintHeight) {
        throw ArgumentException("rectangle", "memory region should be inside of the bitmap");
    }
    const std::int64_t width = std::min<std::int64_t>(
        parent.m_uintWidth - x, std::abs(std::int64_t{rectangle.Left} - rectangle.Right));
    const std::int64_t height = std::min<std::int64_t>(
        parent.m_uintHeight - y, std::abs(std::int64_t{rectangle.Top} - rectangle.Bottom));
    const std::int64_t bits = PixelFormatSize(parent.m_format);
    if (width < parent.m_uintWidth && ((width * bits) % 8 != 0 || (x * bits) % 8 != 0)) {
        throw ArgumentException("rectangle", "memory region should be aligned to byte boundary");
    }
    // The parent may be this object's own former parent: take what is shared before emptying.
    const std::shared_ptr<unsigned char> memory = parent.m_pMemory;
    const std::shared_ptr<ColorMap> map = parent.m_pColorMap;
    const std::shared_ptr<const ProfileFile> profile = parent.m_pProfile;
    std::uint8_t* const pixels = parent.m_pPixels + (x * bits) / 8 + std::int64_t{parent.m_uintStride} * y;
    const std::uint32_t stride = parent.m_uintStride;
    const PixelFormat format = parent.m_format;
    const double horizontal = parent.m_horizontalResolution;
    const double vertical = parent.m_verticalResolution;
    Empty();
    m_pMemory = memory;
    m_pColorMap = map;
    m_pProfile = profile;
    m_uintStride = stride;
    m_format = format;
    m_horizontalResolution = horizontal;
    m_verticalResolution = vertical;
    m_uintWidth = static_cast<std::uint32_t>(width);
    m_uintHeight = static_cast<std::uint32_t>(height);
    m_pPixels = width == 0 || height == 0 ? nullptr : pixels;
    m_bAttached = true;
}

std::uint64_t BitmapData::GetSize() const {
    std::uint64_t size = std::uint64_t{m_uintStride} * m_uintHeight + SerializedOverhead;
    if (m_pColorMap) {
        size += m_pColorMap->GetSerializedSize();
    }
    if (m_pProfile) {
        size += GetProfileDataSize(&m_pProfile->GetPath());
    }
    return size;
}

void BitmapData::Serialize(AbstractWriter* pWriter) const {
    if (pWriter == nullptr) {
        throw ArgumentNullPointerException("pWriter");
    }
    // A part of a wider raster is written with a stride of its own, so that no byte outside it reaches the writer.
    const std::uint32_t stride = IsEmpty() ? 0 : CheckedStride(m_uintWidth, m_format, StrideAlignment);
    pWriter->WriteDword(ToWord(m_format));
    pWriter->WriteDword(m_uintWidth);
    pWriter->WriteDword(m_uintHeight);
    pWriter->WriteDword(stride);
    pWriter->WriteDouble(m_horizontalResolution);
    pWriter->WriteDouble(m_verticalResolution);
    pWriter->WriteDword(static_cast<std::uint32_t>(std::uint64_t{stride} * m_uintHeight));
    if (!m_bAttached) {
        if (stride != 0) {
            pWriter->WriteBytes(m_pPixels, std::uint64_t{stride} * m_uintHeight);
        }
    } else if (stride != 0) {
        const std::uint32_t rowSize = GetRowSize();
        constexpr std::uint8_t padding[StrideAlignment] = {};
        for (std::uint32_t y = 0; y < m_uintHeight; ++y) {
            pWriter->WriteBytes(GetScanlineRef(y), rowSize);
            pWriter->WriteBytes(padding, stride - rowSize);
        }
    }
    pWriter->WriteDword(m_pColorMap ? 1 : 0);
    if (m_pColorMap) {
        m_pColorMap->Serialize(pWriter);
    }
    const std::vector<std::uint8_t> profile = m_pProfile ? GetProfileData() : std::vector<std::uint8_t>();
    pWriter->WriteDword(static_cast<std::uint32_t>(profile.size()));
    if (!profile.empty()) {
        pWriter->WriteBytes(profile.data(), profile.size());
    }
}

void BitmapData::Deserialize(AbstractReader* pReader) {
    if (pReader == nullptr) {
        throw ArgumentNullPointerException("pReader");
    }
    const auto format = static_cast<PixelFormat>(pReader->ReadDword());
    const std::uint32_t width = pReader->ReadDword();
    const std::uint32_t height = pReader->ReadDword();
    const std::uint32_t stride = pReader->ReadDword();
    const double horizontal = pReader->ReadDouble();
    const double vertical = pReader->ReadDouble();
    if (format == PixelFormat::FormatUnknown) {
        // The three zero words that end such a record stay unread.
        Empty();
        return;
    }
    const std::uint32_t count = pReader->ReadDword();
    const std::uint64_t rowSize = CalculateStride64(width, PixelFormatSize(format), 1);
    const bool empty = width == 0 || height == 0;
    const bool sane = IsRasterFormat(format) && std::isfinite(horizontal) && std::isfinite(vertical) &&
                      (empty ? count == 0 : stride >= rowSize && std::uint64_t{stride} * height == count) &&
                      count <= pReader->GetRemaining();
    if (!sane) {
        throw MediaCorruptedException();
    }
    BitmapData read(width, height, format);
    read.SetHorizontalResolution(horizontal);
    read.SetVerticalResolution(vertical);
    if (!empty) {
        // Row by row, since the stored stride may follow another rule.
        const std::uint64_t padding = stride - rowSize;
        for (std::uint32_t y = 0; y < height; ++y) {
            pReader->ReadBytes(rowSize, read.GetScanlineRef(y), rowSize);
            pReader->Seek(static_cast<std::int64_t>(padding), SeekOrigin::Current);
        }
    }
    const std::uint32_t paletteFlag = pReader->ReadDword();
    if (paletteFlag > 1) {
        throw MediaCorruptedException();
    }
    if (paletteFlag == 1) {
        auto map = std::make_shared<ColorMap>();
        map->Deserialize(pReader);
        read.SetColorMapRef(std::move(map));
    }
    const std::uint32_t profileSize = pReader->ReadDword();
    if (profileSize > pReader->GetRemaining()) {
        throw MediaCorruptedException();
    }
    if (profileSize > 0) {
        std::vector<std::uint8_t> profile(profileSize);
        pReader->ReadBytes(profileSize, profile.data(), profileSize);
        read.SetProfile(profile.data(), profile.size());
    }
    Empty();
    m_format = read.m_format;
    m_uintWidth = read.m_uintWidth;
    m_uintHeight = read.m_uintHeight;
    m_uintStride = read.m_uintStride;
    m_horizontalResolution = read.m_horizontalResolution;
    m_verticalResolution = read.m_verticalResolution;
    m_pPixels = read.m_pPixels;
    m_pMemory = std::move(read.m_pMemory);
    m_pColorMap = std::move(read.m_pColorMap);
    m_pProfile = std::move(read.m_pProfile);
}

} // namespace ImagingFramework
