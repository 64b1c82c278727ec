#include <Corvane/Rasterloom/ColorPaletteEnumerator.h>

#include "Codecs/ObjectLink.h"

#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/Exceptions.h>

namespace Corvane::Rasterloom {

ColorPaletteEnumerator::ColorPaletteEnumerator(ColorPalette& palette) : m_pPaletteLink(palette.get__Link()) {}

ColorPaletteEnumerator::~ColorPaletteEnumerator() = default;

ColorPalette& ColorPaletteEnumerator::RequirePalette() const {
    ColorPalette* const palette = m_pPaletteLink->Get();
    if (palette == nullptr) {
        throw Host::ObjectDisposedException("ColorPalette");
    }
    return *palette;
}

bool ColorPaletteEnumerator::MoveNext() {
    const std::int32_t count = RequirePalette().get_Count();
    // Stays behind the last entry, however often it is called.
    if (m_intIndex < count) {
        ++m_intIndex;
    }
    return m_intIndex < count;
}

RgbColor ColorPaletteEnumerator::get_Current() const {
    ColorPalette& palette = RequirePalette();
    if (m_intIndex < 0 || m_intIndex >= palette.get_Count()) {
        throw Host::InvalidOperationException();
    }
    return palette.get_Item(m_intIndex);
}

} // namespace Corvane::Rasterloom
