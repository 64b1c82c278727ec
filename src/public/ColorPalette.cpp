#include <Corvane/Rasterloom/ColorPalette.h>

#include "CallEngine.h"
#include "Codecs/ObjectLink.h"
#include "Common/BitmapData.h"
#include "ObjectGuard.h"
#include "Validator.h"
#include "colorconversion/AdaptivePaletteCreator.h"
#include "colorconversion/ColorSpaceManager.h"

#include <Corvane/Rasterloom/Bitmap.h>

namespace Corvane::Rasterloom {

namespace {

constexpr std::size_t MinimumEntries = 2;

namespace engine = ImagingFramework;

using engine::ColorMap;

engine::PixelFormat EntryFormat(bool withAlpha) {
    return withAlpha ? engine::PixelFormat::Format32bppArgb : engine::PixelFormat::Format24bppRgb;
}

std::shared_ptr<ColorMap> BlackEntries(std::uint32_t count, bool withAlpha) {
    return CallEngine([&] {
        auto map = std::make_shared<ColorMap>(count, EntryFormat(withAlpha));
        constexpr std::uint8_t black[4] = {0, 0, 0, 255};
        for (std::uint32_t i = 0; i < count; ++i) {
            map->SetEntryArgb(i, black);
        }
        return map;
    });
}

bool IsEntryCount(std::size_t count) { return count >= MinimumEntries && count <= ColorMap::MaximumEntryCount; }

} // namespace

ColorPalette::ColorPalette() : ColorPalette(std::make_shared<ColorMap>()) {}

ColorPalette::ColorPalette(ColorPaletteType colorPaletteType) : ColorPalette() {
    m_enType = colorPaletteType;
    Validator::ValidateEnum("colorPaletteType", colorPaletteType);
    if (colorPaletteType == ColorPaletteType::Adaptive || colorPaletteType == ColorPaletteType::Custom) {
        throw Host::ArgumentException("The color palette type specified is not supported.", "colorPaletteType");
    }
    CallEngine([&] {
        engine::ColorSpaceManager::FillPalette(*m_pColorMap, static_cast<engine::ColorMapType>(colorPaletteType), true);
    });
}

ColorPalette::ColorPalette(std::int32_t entryCount, bool withAlpha) : ColorPalette() {
    if (entryCount < 0 || !IsEntryCount(static_cast<std::size_t>(entryCount))) {
        throw Host::ArgumentOutOfRangeException("entryCount", "The number of entries should be in the range [2, 256].");
    }
    m_pColorMap = BlackEntries(static_cast<std::uint32_t>(entryCount), withAlpha);
}

ColorPalette::ColorPalette(std::span<const RgbColor> entries, bool withAlpha) : ColorPalette() {
    if (!IsEntryCount(entries.size())) {
        throw Host::ArgumentOutOfRangeException(
            "entries", "Entries array should contain number of entries in the range [2, 256].");
    }
    m_pColorMap = BlackEntries(static_cast<std::uint32_t>(entries.size()), withAlpha);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        _SetItem(static_cast<std::int32_t>(i), entries[i]);
    }
    m_bChanged = false;
}

ColorPalette::ColorPalette(std::span<const Host::ArgbColor> palette) : ColorPalette() {
    if (palette.data() == nullptr) {
        throw Host::ArgumentNullException("palette");
    }
    m_pColorMap = BlackEntries(static_cast<std::uint32_t>(palette.size()), true);
    for (std::size_t i = 0; i < palette.size(); ++i) {
        _SetItem(static_cast<std::int32_t>(i), palette[i]);
    }
    m_bChanged = false;
}

ColorPalette::ColorPalette(Bitmap& bitmap, std::int32_t entryCount, bool withAlpha,
                           ColorQuantizationAlgorithm algorithm, std::uint8_t alphaThreshold, bool useAlphaThreshold)
    : ColorPalette() {
    if (entryCount < 0 || !IsEntryCount(static_cast<std::size_t>(entryCount))) {
        throw Host::ArgumentOutOfRangeException("entryCount", "The value should be in the range of [2, 256]");
    }
    Validator::ValidateEnum("algorithm", algorithm);
    const ObjectGuard guard(bitmap);
    const engine::BitmapData& raster = bitmap.get__InternalBitmapData();
    if (raster.IsEmpty()) {
        throw BitmapEmptyException("Bitmap is empty.", nullptr);
    }
    if (engine::PixelFormatIsIndexed(raster.GetPixelFormat()) && raster.GetColorMapRef() != nullptr) {
        CallEngine([&] { *m_pColorMap = *raster.GetColorMapRef(); });
        return;
    }
    const engine::AdaptivePaletteParameters parameters{static_cast<std::uint32_t>(entryCount), withAlpha,
                                                       static_cast<engine::ColorQuantizationAlgorithm>(algorithm),
                                                       useAlphaThreshold, alphaThreshold};
    CallEngine([&] { engine::AdaptivePaletteCreator(parameters).GetPalette(raster, *m_pColorMap); });
    m_enType = ColorPaletteType::Adaptive;
}

ColorPalette::ColorPalette(std::shared_ptr<ColorMap> map)
    : m_pLink(std::make_shared<Codecs::ObjectLink<ColorPalette>>(this)),
      m_pColorMap(map ? std::move(map) : std::make_shared<ColorMap>()) {}

ColorPalette::~ColorPalette() {
    m_pLink->Clear();
    DisposeFinally();
}

void ColorPalette::Dispose(bool disposing) {
    // The entries may be a bitmap's as well; they die with their last owner.
    m_pColorMap = std::make_shared<ColorMap>();
    LockableObject::Dispose(disposing);
}

void ColorPalette::CheckNotDisposed() const {
    if (get__IsDisposed()) {
        throw Host::ObjectDisposedException("ColorPalette");
    }
}

std::int32_t ColorPalette::get__Count() const {
    CheckNotDisposed();
    return static_cast<std::int32_t>(m_pColorMap->GetEntryCount());
}

std::int32_t ColorPalette::get_Count() {
    const ObjectGuard guard(*this);
    return get__Count();
}

bool ColorPalette::get_HasAlpha() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return m_pColorMap->GetPixelFormat() == engine::PixelFormat::Format32bppArgb;
}

ColorPaletteType ColorPalette::get_Type() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return m_enType;
}

RgbColor ColorPalette::_GetItem(std::int32_t itemIndex) const {
    if (itemIndex < 0 || itemIndex >= get__Count()) {
        throw Host::ArgumentOutOfRangeException("itemIndex", "Invalid value of entry index.");
    }
    std::uint8_t entry[4];
    m_pColorMap->GetEntryArgb(static_cast<std::uint32_t>(itemIndex), entry);
    return RgbColor(Color::FromArgb(entry[3], entry[2], entry[1], entry[0]));
}

RgbColor ColorPalette::get_Item(std::int32_t itemIndex) {
    const ObjectGuard guard(*this);
    return _GetItem(itemIndex);
}

void ColorPalette::_SetItem(std::int32_t itemIndex, const RgbColor& color) {
    if (itemIndex < 0 || itemIndex >= get__Count()) {
        throw Host::ArgumentOutOfRangeException("itemIndex", "Invalid value of entry index.");
    }
    const std::uint8_t entry[4] = {color.get_B(), color.get_G(), color.get_R(), color.get_A()};
    m_pColorMap->SetEntryArgb(static_cast<std::uint32_t>(itemIndex), entry);
    m_bChanged = true;
}

void ColorPalette::set_Item(std::int32_t itemIndex, const RgbColor& color) {
    const ObjectGuard guard(*this);
    _SetItem(itemIndex, color);
}

std::int32_t ColorPalette::_FindNearestIndex(const Color& color) {
    if (color.IsNull()) {
        throw Host::ArgumentNullException("color");
    }
    if (get__Count() == 0) {
        throw ColorPaletteEmptyException("ColorPalette");
    }
    const RgbColor rgb(color);
    return CallEngine([&] {
        return static_cast<std::int32_t>(m_pColorMap->FindNearestEntryIndex(rgb.get_R(), rgb.get_G(), rgb.get_B()));
    });
}

std::int32_t ColorPalette::FindNearestIndex(const Color& color) {
    const ObjectGuard guard(*this);
    return _FindNearestIndex(color);
}

void ColorPalette::_SetColorKey(std::int32_t entryIndex) {
    if (entryIndex < 0 || entryIndex >= get__Count()) {
        throw Host::ArgumentOutOfRangeException("entryIndex", "Invalid value of entry index.");
    }
    CallEngine([&] {
        for (std::uint32_t i = 0; i < m_pColorMap->GetEntryCount(); ++i) {
            m_pColorMap->SetAlpha(i, 255);
        }
        m_pColorMap->SetAlpha(static_cast<std::uint32_t>(entryIndex), 0);
    });
    m_bChanged = true;
}

void ColorPalette::SetColorKey(std::int32_t entryIndex) {
    const ObjectGuard guard(*this);
    _SetColorKey(entryIndex);
}

void ColorPalette::SetColorKey(const Color& color) {
    const ObjectGuard guard(*this);
    _SetColorKey(_FindNearestIndex(color));
}

std::vector<RgbColor> ColorPalette::Export() {
    const ObjectGuard guard(*this);
    std::vector<RgbColor> colors;
    const std::int32_t count = get__Count();
    colors.reserve(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i) {
        colors.push_back(_GetItem(i));
    }
    return colors;
}

void ColorPalette::Import(std::span<const RgbColor> array) {
    const ObjectGuard guard(*this);
    if (array.size() != static_cast<std::size_t>(get__Count())) {
        throw Host::ArgumentException("Array should have the same number of values as the palette instance.", "array");
    }
    for (std::size_t i = 0; i < array.size(); ++i) {
        _SetItem(static_cast<std::int32_t>(i), array[i]);
    }
}

std::unique_ptr<ColorPalette> ColorPalette::Clone() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    auto copy = std::make_unique<ColorPalette>(std::make_shared<ColorMap>(*m_pColorMap));
    copy->m_enType = m_enType;
    return copy;
}

ColorPaletteEnumerator ColorPalette::GetEnumerator() { return ColorPaletteEnumerator(*this); }

std::vector<Host::ArgbColor> ColorPalette::ToGdiplusPalette() {
    std::vector<Host::ArgbColor> palette;
    for (const RgbColor& color : Export()) {
        palette.push_back(color.ToGdiplusColor());
    }
    return palette;
}

} // namespace Corvane::Rasterloom
