#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/ColorPaletteType.h>
#include <Corvane/Rasterloom/LockableObject.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace ImagingFramework {
class ColorMap;
}

namespace Corvane::Rasterloom {

/// A palette: up to 256 colours of 8 bits per channel, with or without alpha. The palette of a `Bitmap` shares the bitmap's
/// entries, so a change shows in both.
///
/// Members take the object's lock. Neither copied nor moved; `Clone` copies.
class RASTERLOOM_API ColorPalette final : public LockableObject {
public:
    /// An empty palette.
    ColorPalette();
    /// A predefined palette with alpha 255 in all entries. `Adaptive` and `Custom` fail with `Host::ArgumentException`.
    explicit ColorPalette(ColorPaletteType colorPaletteType);
    /// Black entries of alpha 255. A count outside 2 to 256 fails with `Host::ArgumentOutOfRangeException` ("entryCount").
    ColorPalette(std::int32_t entryCount, bool withAlpha);
    /// A number of entries outside 2 to 256 fails with `Host::ArgumentOutOfRangeException` ("entries").
    ColorPalette(std::span<const RgbColor> entries, bool withAlpha);
    /// Shares the engine's palette; null gives an empty one.
    explicit ColorPalette(std::shared_ptr<ImagingFramework::ColorMap> map);
    ~ColorPalette() override;

    std::int32_t get_Count();
    bool get_HasAlpha();
    /// The predefined kind that it was made from, else `Custom`.
    ColorPaletteType get_Type();
    /// Fails with `Host::ArgumentOutOfRangeException` ("itemIndex").
    RgbColor get_Item(std::int32_t itemIndex);
    /// Alpha is dropped in a palette without alpha.
    void set_Item(std::int32_t itemIndex, const RgbColor& color);
    /// The entry nearest to the colour's red, green and blue, with alpha taken as 255. "No colour" fails with
    /// `Host::ArgumentNullException` ("color"), an empty palette with `ColorPaletteEmptyException`.
    std::int32_t FindNearestIndex(const Color& color);
    /// Makes one entry transparent and all others opaque. Fails with `Host::ArgumentOutOfRangeException` ("entryIndex").
    void SetColorKey(std::int32_t entryIndex);
    /// The same for the entry nearest to a colour.
    void SetColorKey(const Color& color);
    std::vector<RgbColor> Export();
    /// Sets all entries; another number than `Count` fails with `Host::ArgumentException` ("array").
    void Import(std::span<const RgbColor> array);
    std::unique_ptr<ColorPalette> Clone();

    /// @name Lock-free bodies and the seam to the bitmap
    /// @{
    std::int32_t get__Count() const;
    RgbColor _GetItem(std::int32_t itemIndex) const;
    std::int32_t _FindNearestIndex(const Color& color);
    const std::shared_ptr<ImagingFramework::ColorMap>& get__ColorMap() const noexcept { return m_pColorMap; }
    /// Whether an entry changed since the palette was attached or the flag was cleared.
    bool _IsChanged() const noexcept { return m_bChanged; }
    void _ClearChanged() noexcept { m_bChanged = false; }
    /// @}

    using LockableObject::Dispose;

protected:
    void Dispose(bool disposing) override;

private:
    void _SetItem(std::int32_t itemIndex, const RgbColor& color);
    void _SetColorKey(std::int32_t entryIndex);
    void CheckNotDisposed() const;

    std::shared_ptr<ImagingFramework::ColorMap> m_pColorMap;
    ColorPaletteType m_enType = ColorPaletteType::Custom;
    bool m_bChanged = false;
};

} // namespace Corvane::Rasterloom
