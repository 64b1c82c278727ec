#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/Color.h>

#include <cstdint>
#include <memory>

namespace Corvane::Rasterloom {

class ColorPalette;
namespace Codecs {
template <class T>
class ObjectLink;
}

/// A cursor over the entries of a palette, at first before the first one. Shows changes of the palette. It may outlive
/// the palette; it then fails with `Host::ObjectDisposedException`. Not for several threads at once.
class RASTERLOOM_API ColorPaletteEnumerator {
public:
    /// Before the first entry.
    explicit ColorPaletteEnumerator(ColorPalette& palette);
    ~ColorPaletteEnumerator();
    ColorPaletteEnumerator(const ColorPaletteEnumerator&) = default;
    ColorPaletteEnumerator& operator=(const ColorPaletteEnumerator&) = default;

    /// Goes to the next entry; false behind the last one.
    bool MoveNext();
    /// Fails with `Host::InvalidOperationException` while the cursor is on no entry.
    RgbColor get_Current() const;
    /// Back before the first entry.
    void Reset() noexcept { m_intIndex = -1; }

private:
    ColorPalette& RequirePalette() const;

    std::shared_ptr<Codecs::ObjectLink<ColorPalette>> m_pPaletteLink;
    std::int32_t m_intIndex = -1;
};

} // namespace Corvane::Rasterloom
