#pragma once

#include "Common/ColorMap.h"
#include "Common/PixelFormat.h"
#include "Common/ProfileFile.h"
#include "Common/SpaceUnitConverter.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace ImagingFramework {

/// A region by its corners in pixels; in either order where the operation says so.
struct RegionRect {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Right = 0;
    std::int32_t Bottom = 0;
};

/// The engine's one raster: scanlines from the top, a format, resolutions in dots per inch, and, where there are any, a
/// palette and a colour profile.
///
/// A raster is empty exactly when it has no pixels. Scanlines of a created raster start on 4-byte boundaries, and all its
/// bytes begin as zero. A raster attached to a part of another shares its memory and keeps its stride; the memory lives as
/// long as either of them. A raster has no lock of its own.
class BitmapData {
public:
    static constexpr double DefaultResolution = 72.0;
    static constexpr std::uint32_t StrideAlignment = 4;

    BitmapData() = default;
    BitmapData(std::uint32_t width, std::uint32_t height, PixelFormat format, const ColorMap* pPalette = nullptr);
    /// Deep copies of pixels and palette; the profile file is shared.
    BitmapData(const BitmapData& other);
    BitmapData& operator=(const BitmapData& other);
    virtual ~BitmapData() = default;

    bool IsEmpty() const noexcept { return m_pPixels == nullptr; }
    std::uint32_t GetWidth() const noexcept { return m_uintWidth; }
    std::uint32_t GetHeight() const noexcept { return m_uintHeight; }
    /// Bytes from one scanline to the next.
    std::uint32_t GetStride() const noexcept { return m_uintStride; }
    PixelFormat GetPixelFormat() const noexcept { return m_format; }
    std::uint8_t* GetPixelsRef() const noexcept { return m_pPixels; }
    /// Fails with `ArgumentException` ("intScanline") below the last row; null when the raster is empty.
    std::uint8_t* GetScanlineRef(std::uint32_t y) const;
    /// Bytes of a scanline that hold pixels.
    std::uint32_t GetRowSize() const { return CheckedStride(m_uintWidth, m_format, 1); }

    ColorMap* GetColorMapRef() const noexcept { return m_pColorMap.get(); }
    const std::shared_ptr<ColorMap>& GetColorMap() const noexcept { return m_pColorMap; }
    /// Shares `map` from now on.
    void SetColorMapRef(std::shared_ptr<ColorMap> map) noexcept { m_pColorMap = std::move(map); }
    /// Stores a copy of `map`.
    void SetColorMap(const ColorMap& map) { m_pColorMap = std::make_shared<ColorMap>(map); }
    /// Hands the palette over and forgets it.
    std::shared_ptr<ColorMap> DetachColorMap() noexcept { return std::move(m_pColorMap); }

    double GetHorizontalResolution(LinearUnit unit = LinearUnit::Inch) const noexcept;
    double GetVerticalResolution(LinearUnit unit = LinearUnit::Inch) const noexcept;
    /// Pixels per unit; values not above 0, and those that are no finite number, store the default of 72 dots per inch.
    void SetHorizontalResolution(double value, LinearUnit unit = LinearUnit::Inch) noexcept;
    void SetVerticalResolution(double value, LinearUnit unit = LinearUnit::Inch) noexcept;

    /// Path of the profile file, null without one.
    const std::filesystem::path* GetProfileNameRef() const noexcept { return m_pProfile ? &m_pProfile->GetPath() : nullptr; }
    const std::shared_ptr<const ProfileFile>& GetProfileFile() const noexcept { return m_pProfile; }
    void SetProfileFile(std::shared_ptr<const ProfileFile> profile) noexcept { m_pProfile = std::move(profile); }
    /// Keeps a duplicate of the file; null drops the profile. Fails with `NotInitializedException` on an empty raster,
    /// and as `DuplicateColorProfile`.
    void SetProfileName(const std::filesystem::path* pPath);
    /// Fails with `ArgumentNullPointerException` ("pProfileBuffer") on null.
    void SetProfile(const void* pProfileBuffer, std::size_t size);
    /// Fails with `CmException` ("Bitmap doesn't have color profile.") without a profile, and as the function
    /// `GetProfileData`.
    std::vector<std::uint8_t> GetProfileData() const;

    /// A new raster of zeroed pixels with default resolutions and no profile. A width or height of 0 gives an empty one of
    /// the format. Fails with `ArgumentException` ("format") for format 0 and with `OverflowException` when a scanline or
    /// the whole does not fit in 32 bits.
    void Create(std::uint32_t width, std::uint32_t height, PixelFormat format, const ColorMap* pPalette = nullptr);
    /// The same without zeroing, for whoever writes every pixel: they are undefined until then. Bytes and bits behind the
    /// last pixel of a scanline are zero.
    void CreateUncleared(std::uint32_t width, std::uint32_t height, PixelFormat format);
    void Empty() noexcept;
    bool IsAttached() const noexcept { return m_bAttached; }
    /// Shows a part of `parent`: memory, palette and profile are shared. Corners in either order; the greater ones lie
    /// outside the part, so its width is their difference. Fails with
    /// `ArgumentException` for an empty parent ("objData"), a corner outside it, and a part that does not begin and end on
    /// whole bytes ("rectangle"); a part as wide as the parent is always whole.
    void AttachPartially(const BitmapData& parent, const RegionRect& rectangle);

    /// An upper bound of what `Serialize` writes.
    std::uint64_t GetSize() const;
    /// All values little-endian: format, width, height, stride (32 bits each), both resolutions (doubles), the pixel byte
    /// count and the scanlines with their padding, palette flag and palette, profile byte count and profile.
    void Serialize(AbstractWriter* pWriter) const;
    /// Everything read is validated; damage is `MediaCorruptedException` and leaves this raster as it was.
    void Deserialize(AbstractReader* pReader);

private:
    void Describe(std::uint32_t width, std::uint32_t height, PixelFormat format);
    void AllocatePixels(bool zeroed);
    void ClearRowEnds();

    PixelFormat m_format = PixelFormat::FormatUnknown;
    std::uint32_t m_uintWidth = 0;
    std::uint32_t m_uintHeight = 0;
    std::uint32_t m_uintStride = 0;
    double m_horizontalResolution = DefaultResolution;
    double m_verticalResolution = DefaultResolution;
    std::uint8_t* m_pPixels = nullptr;
    std::shared_ptr<unsigned char> m_pMemory; ///< what holds the pixels, shared with attached parts
    std::shared_ptr<ColorMap> m_pColorMap;
    std::shared_ptr<const ProfileFile> m_pProfile;
    bool m_bAttached = false;
};

} // namespace ImagingFramework
