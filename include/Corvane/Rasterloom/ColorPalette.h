#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/Color.h>
#include <Corvane/Rasterloom/ColorPaletteEnumerator.h>
#include <Corvane/Rasterloom/ColorPaletteType.h>
#include <Corvane/Rasterloom/ColorQuantizationAlgorithm.h>
#include <Corvane/Rasterloom/Host/ArgbColor.h>
#include <Corvane/Rasterloom/LockableObject.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace ImagingFramework {
class ColorMap;
}

namespace Corvane::Rasterloom {

class Bitmap;

/// A palette: up to 256 colours of 8 bits per channel, with or without alpha. The palette of a `Bitmap` shares the
/// bitmap's entries, so a change shows in both. Each has a lock of its own: it is not to be used while another thread
/// works with the bitmap.
///
/// Members take the object's lock. Neither copied nor moved; `Clone` copies.
class RASTERLOOM_API ColorPalette final : public LockableObject {
public:
    /// An empty palette.
    ColorPalette();
    /// A predefined palette with alpha 255 in all entries. `Adaptive` and `Custom` fail with `Host::ArgumentException`.
    explicit ColorPalette(ColorPaletteType colorPaletteType);
    /// Black entries of alpha 255. A count outside 2 to 256 fails with `Host::ArgumentOutOfRangeException`
    /// ("entryCount").
    ColorPalette(std::int32_t entryCount, bool withAlpha);
    /// A number of entries outside 2 to 256 fails with `Host::ArgumentOutOfRangeException` ("entries").
    ColorPalette(std::span<const RgbColor> entries, bool withAlpha);
    /// From the platform's palette, of any number of entries; always with alpha. A null one fails with
    /// `Host::ArgumentNullException` ("palette").
    explicit ColorPalette(std::span<const Host::ArgbColor> palette);
    /// A copy of the palette of an indexed bitmap, whatever is asked for. For any other bitmap a palette of at most
    /// `entryCount` entries that is made from its colours; the bitmap is locked meanwhile.
    ///
    /// With alpha there are two kinds. With the threshold, entry 0 is transparent and stands for all pixels below
    /// `alphaThreshold`, the other entries are opaque; without it the entries have the alpha of the picture. Both need
    /// `entryCount` to be at least 8, and may then come out with 9 entries where 8 are asked for.
    ///
    /// Fails with `Host::ArgumentOutOfRangeException` for a count outside 2 to 256 ("entryCount") or below 8 with
    /// alpha, and with `BitmapEmptyException`.
    ColorPalette(Bitmap& bitmap, std::int32_t entryCount, bool withAlpha,
                 ColorQuantizationAlgorithm algorithm = ColorQuantizationAlgorithm::Octree,
                 std::uint8_t alphaThreshold = 255, bool useAlphaThreshold = true);
    /// Shares the engine's palette; null gives an empty one.
    explicit ColorPalette(std::shared_ptr<ImagingFramework::ColorMap> map);
    ~ColorPalette() override;

    /// Number of entries.
    std::int32_t get_Count();
    /// Whether entries have alpha; in a palette without, all are opaque.
    bool get_HasAlpha();
    /// The kind that it was made as: predefined, `Adaptive` when made from the colours of a bitmap, else `Custom`.
    ColorPaletteType get_Type();
    /// Fails with `Host::ArgumentOutOfRangeException` ("itemIndex").
    RgbColor get_Item(std::int32_t itemIndex);
    /// Alpha is dropped in a palette without alpha.
    void set_Item(std::int32_t itemIndex, const RgbColor& color);
    /// The entry nearest to the colour's red, green and blue, with alpha taken as 255. "No colour" fails with
    /// `Host::ArgumentNullException` ("color"), an empty palette with `ColorPaletteEmptyException`.
    std::int32_t FindNearestIndex(const Color& color);
    /// Makes one entry transparent and all others opaque. Fails with `Host::ArgumentOutOfRangeException`
    /// ("entryIndex").
    void SetColorKey(std::int32_t entryIndex);
    /// The same for the entry nearest to a colour.
    void SetColorKey(const Color& color);
    /// All entries.
    std::vector<RgbColor> Export();
    /// Sets all entries; another number than `Count` fails with `Host::ArgumentException` ("array").
    void Import(std::span<const RgbColor> array);
    /// A copy, independent of this one and of a bitmap.
    std::unique_ptr<ColorPalette> Clone();
    /// A cursor over the entries.
    ColorPaletteEnumerator GetEnumerator();
    /// The entries as the platform's palette has them.
    std::vector<Host::ArgbColor> ToGdiplusPalette();
    /// As `ToGdiplusPalette`.
    explicit operator std::vector<Host::ArgbColor>() { return ToGdiplusPalette(); }

    /// @name Lock-free bodies and the seam to the bitmap
    /// @{
    std::int32_t get__Count() const;
    RgbColor _GetItem(std::int32_t itemIndex) const;
    std::int32_t _FindNearestIndex(const Color& color);
    const std::shared_ptr<ImagingFramework::ColorMap>& get__ColorMap() const noexcept { return m_pColorMap; }
    /// Whether an entry changed since the palette was attached or the flag was cleared.
    bool _IsChanged() const noexcept { return m_bChanged; }
    void _ClearChanged() noexcept { m_bChanged = false; }
    /// How a cursor that may outlive the palette finds it.
    const std::shared_ptr<Codecs::ObjectLink<ColorPalette>>& get__Link() const noexcept { return m_pLink; }
    /// @}

    using LockableObject::Dispose;

protected:
    void Dispose(bool disposing) override;

private:
    void _SetItem(std::int32_t itemIndex, const RgbColor& color);
    void _SetColorKey(std::int32_t entryIndex);
    void CheckNotDisposed() const;

    std::shared_ptr<Codecs::ObjectLink<ColorPalette>> m_pLink;
    std::shared_ptr<ImagingFramework::ColorMap> m_pColorMap;
    ColorPaletteType m_enType = ColorPaletteType::Custom;
    bool m_bChanged = false;
};

} // namespace Corvane::Rasterloom
