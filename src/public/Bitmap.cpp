#include "BitmapImpl.h"

#include "CallEngine.h"
#include "Common/Numeric.h"
#include "Common/PixelFormat.h"
#include "ObjectGuard.h"
#include "PixelAccess.h"
#include "TwoObjectGuard.h"
#include "Validator.h"

#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/PixelFormatUtils.h>

#include <algorithm>
#include <utility>

namespace Corvane::Rasterloom {

namespace engine = ImagingFramework;

namespace {

engine::PixelFormat ToEngine(PixelFormat format) { return static_cast<engine::PixelFormat>(format); }

std::unique_ptr<engine::BitmapData> NewRaster() {
    return CallEngine([] { return std::make_unique<engine::BitmapData>(); });
}

/// The object for the palette of a raster; null without one.
std::shared_ptr<ColorPalette> PaletteOf(const engine::BitmapData& raster) {
    const auto& map = raster.GetColorMap();
    return map ? std::make_shared<ColorPalette>(map) : nullptr;
}

std::int32_t MaximumEntries(PixelFormat format) { return 1 << PixelFormatUtils::BitsPerPixel(format); }

/// Everything that `_Create` refuses, checked before the old raster is dropped.
void CheckCreation(PixelFormat format, const ColorPalette* palette, bool paletteGiven) {
    Validator::ValidateEnum("pixelFormat", format);
    if (!paletteGiven || !PixelFormatUtils::IsIndexed(format)) {
        return;
    }
    if (palette == nullptr) {
        throw Host::ArgumentNullException("palette");
    }
    if (palette->get__Count() > MaximumEntries(format)) {
        throw Host::ArgumentException("Count of palette entries is not supported by pixel format.", "palette");
    }
}

/// The palette of an indexed format that was made without one.
std::unique_ptr<ColorPalette> DefaultPalette(PixelFormat format) {
    if (format == PixelFormat::Format1bppIndexed) {
        return std::make_unique<ColorPalette>(ColorPaletteType::Bicolor);
    }
    return std::make_unique<ColorPalette>(MaximumEntries(format), true);
}

} // namespace

// --- Construction

Bitmap::Bitmap() : Bitmap(NewRaster()) {}

Bitmap::Bitmap(std::unique_ptr<engine::BitmapData> bitmap) {
    if (!bitmap) {
        throw Host::ArgumentNullException("bitmap");
    }
    m_pImpl = std::make_unique<Impl>(this, std::move(bitmap));
    m_pImpl->m_pTransformsProvider = std::make_shared<TransformsProvider>(m_pImpl->m_pLink);
    m_pImpl->m_pBitmapStatisticsProvider = std::make_shared<BitmapStatisticsProvider>(m_pImpl->m_pLink);
    m_pImpl->m_pColorManagementProvider = std::make_shared<ColorManagementProvider>(m_pImpl->m_pLink);
    m_pImpl->m_pChannelsProvider = std::make_shared<ChannelsProvider>(m_pImpl->m_pLink);
    Update();
}

Bitmap::Bitmap(std::int32_t width, std::int32_t height, PixelFormat format) : Bitmap() {
    _Create(width, height, format, nullptr, false, nullptr);
}

Bitmap::Bitmap(const Color& background, std::int32_t width, std::int32_t height, PixelFormat format) : Bitmap() {
    _Create(width, height, format, nullptr, false, &background);
}

Bitmap::Bitmap(std::int32_t width, std::int32_t height, PixelFormat format, const ColorPalette* palette) : Bitmap() {
    _Create(width, height, format, palette, true, nullptr);
}

Bitmap::Bitmap(const Color& background, std::int32_t width, std::int32_t height, PixelFormat format,
               const ColorPalette* palette)
    : Bitmap() {
    _Create(width, height, format, palette, true, &background);
}

Bitmap::Bitmap(const PixelArray& array, PixelFormat format) : Bitmap() { _Load(array, format, nullptr, false); }

Bitmap::Bitmap(const PixelArray& array, PixelFormat format, const ColorPalette* palette) : Bitmap() {
    _Load(array, format, palette, true);
}

Bitmap::Bitmap(Bitmap& bitmap) : Bitmap() { _Create(bitmap); }

Bitmap::~Bitmap() {
    if (const std::shared_ptr<BitmapData> view = m_pImpl ? m_pImpl->m_pLockedBitmapData.lock() : nullptr) {
        view->_DisposeQuietly();
    }
    DisposeFinally();
    DisposeProviders();
}

void Bitmap::Dispose(bool disposing) {
    // View and providers are dead without their link. Their locks come before the bitmap's and are not waited for here.
    m_pImpl->m_pLink->Clear();
    m_pImpl->m_bBitsLocked = false;
    // A palette that the host keeps goes on with its entries; the raster dies here.
    m_pImpl->m_pColorPalette.reset();
    m_pImpl->m_pColorProfile.reset();
    m_pImpl->m_pInternalBitmapData = std::make_unique<engine::BitmapData>();
    UnitConverterObject::Dispose(disposing);
}

void Bitmap::Dispose() {
    DisposeView();
    UnitConverterObject::Dispose();
    // One may have come out before the lock was had again.
    DisposeView();
    DisposeProviders();
}

void Bitmap::DisposeProviders() noexcept {
    for (BitmapProvider* const provider : std::initializer_list<BitmapProvider*>{
             m_pImpl->m_pTransformsProvider.get(), m_pImpl->m_pBitmapStatisticsProvider.get(),
             m_pImpl->m_pColorManagementProvider.get(), m_pImpl->m_pChannelsProvider.get()}) {
        provider->_DisposeQuietly();
    }
}

void Bitmap::DisposeView() {
    std::shared_ptr<BitmapData> view;
    {
        // The view of a transform at work is nobody else's; it is gone when the lock is had.
        const ObjectGuard guard(*this);
        view = m_pImpl->m_pLockedBitmapData.lock();
    }
    // Outside the guard: the view's lock comes first.
    if (view) {
        view->Dispose();
    }
}

void Bitmap::CheckNotDisposed() const {
    if (get__IsDisposed()) {
        throw Host::ObjectDisposedException("Bitmap");
    }
}

void Bitmap::CheckBitsNotLocked() const {
    if (m_pImpl->m_bBitsLocked) {
        throw BitmapLockedException();
    }
}

void Bitmap::ThrowIfEmpty(const char* name) const {
    if (m_pImpl->m_pInternalBitmapData->IsEmpty()) {
        throw name != nullptr ? BitmapEmptyException(std::string(name)) : BitmapEmptyException();
    }
}

// --- The shape of a changing operation

template <class Body> void Bitmap::Change(BitmapChange change, Body body) {
    _RaiseChangingEvent(change);
    {
        const ObjectGuard guard(*this);
        CheckNotDisposed();
        body();
    }
    _RaiseChangedEvent(change);
}

void Bitmap::Create(std::int32_t width, std::int32_t height, PixelFormat format) {
    Change(BitmapChange::CreateNew, [&] { _Create(width, height, format, nullptr, false, nullptr); });
}

void Bitmap::Create(const Color& background, std::int32_t width, std::int32_t height, PixelFormat format) {
    Change(BitmapChange::CreateNew, [&] { _Create(width, height, format, nullptr, false, &background); });
}

void Bitmap::Create(std::int32_t width, std::int32_t height, PixelFormat format, const ColorPalette* palette) {
    Change(BitmapChange::CreateNew, [&] { _Create(width, height, format, palette, true, nullptr); });
}

void Bitmap::Create(const Color& background, std::int32_t width, std::int32_t height, PixelFormat format,
                    const ColorPalette* palette) {
    Change(BitmapChange::CreateNew, [&] { _Create(width, height, format, palette, true, &background); });
}

void Bitmap::Create(float width, float height, PixelFormat format) {
    Change(BitmapChange::CreateNew, [&] { _Create(width, height, format, nullptr, false, nullptr); });
}

void Bitmap::Create(const Color& background, float width, float height, PixelFormat format) {
    Change(BitmapChange::CreateNew, [&] { _Create(width, height, format, nullptr, false, &background); });
}

void Bitmap::Create(float width, float height, PixelFormat format, const ColorPalette* palette) {
    Change(BitmapChange::CreateNew, [&] { _Create(width, height, format, palette, true, nullptr); });
}

void Bitmap::Create(const Color& background, float width, float height, PixelFormat format,
                    const ColorPalette* palette) {
    Change(BitmapChange::CreateNew, [&] { _Create(width, height, format, palette, true, &background); });
}

void Bitmap::Create(Bitmap& bitmap) {
    _RaiseChangingEvent(BitmapChange::CreateNew);
    {
        const TwoObjectGuard guard(*this, bitmap);
        _CreateFrom(bitmap);
    }
    _RaiseChangedEvent(BitmapChange::CreateNew);
}

void Bitmap::Unload() {
    Change(BitmapChange::Unload, [this] { _Unload(); });
}

void Bitmap::Load(const PixelArray& array, PixelFormat format) {
    Change(BitmapChange::Load, [&] { _Load(array, format, nullptr, false); });
}

void Bitmap::Load(const PixelArray& array, PixelFormat format, const ColorPalette* palette) {
    Change(BitmapChange::Load, [&] { _Load(array, format, palette, true); });
}

// --- The raster

void Bitmap::_Create(std::int32_t width, std::int32_t height, PixelFormat format, const ColorPalette* palette,
                     bool paletteGiven, const Color* background) {
    CheckNotDisposed();
    CheckBitsNotLocked();
    if (width <= 0) {
        throw Host::ArgumentOutOfRangeException("width", "Width of bitmap should be above zero.");
    }
    if (height <= 0) {
        throw Host::ArgumentOutOfRangeException("height", "Height of bitmap should be above zero.");
    }
    CheckCreation(format, palette, paletteGiven);
    auto raster = CallEngine([&] {
        return std::make_unique<engine::BitmapData>(static_cast<std::uint32_t>(width),
                                                    static_cast<std::uint32_t>(height), ToEngine(format));
    });
    if (PixelFormatUtils::IsIndexed(format)) {
        const auto made = paletteGiven ? nullptr : DefaultPalette(format);
        raster->SetColorMap(*(made ? made.get() : palette)->get__ColorMap());
    }
    raster->SetHorizontalResolution(m_pImpl->m_pInternalBitmapData->GetHorizontalResolution());
    raster->SetVerticalResolution(m_pImpl->m_pInternalBitmapData->GetVerticalResolution());
    if (background != nullptr) {
        if (background->IsNull()) {
            throw Host::ArgumentNullException("color");
        }
        PixelAccess(*raster).Clear(*background);
    }
    _Attach(std::move(raster));
}

void Bitmap::_Create(float width, float height, PixelFormat format, const ColorPalette* palette, bool paletteGiven,
                     const Color* background) {
    CheckNotDisposed();
    CheckBitsNotLocked();
    if (!(width > 0.0F)) {
        throw Host::ArgumentOutOfRangeException("width", "Width of bitmap should be above zero.");
    }
    if (!(height > 0.0F)) {
        throw Host::ArgumentOutOfRangeException("height", "Height of bitmap should be above zero.");
    }
    _Create(_HorizontalUnitsToPixels(width), _VerticalUnitsToPixels(height), format, palette, paletteGiven, background);
}

void Bitmap::_Create(const engine::BitmapData& bitmap) {
    CheckNotDisposed();
    CheckBitsNotLocked();
    _Attach(CallEngine([&] { return std::make_unique<engine::BitmapData>(bitmap); }));
}

void Bitmap::_Create(Bitmap& bitmap) {
    const ObjectGuard guard(bitmap);
    _CreateFrom(bitmap);
}

void Bitmap::_CreateFrom(Bitmap& bitmap) {
    CheckNotDisposed();
    _Create(bitmap.get__InternalBitmapData());
}

void Bitmap::_Load(const PixelArray& array, PixelFormat format, const ColorPalette* palette, bool paletteGiven) {
    if (array.get_IsNull()) {
        throw Host::ArgumentNullException("array");
    }
    if (array.get_Rank() != 3) {
        throw Host::ArgumentException("Number of dimensions should be 3.", "array");
    }
    Validator::ValidateEnum("pixelFormat", format);
    if (PixelFormatUtils::IsIndexed(format) && palette == nullptr) {
        throw Host::ArgumentException("You should specify palette for indexed pixel formats.");
    }
    // Filled apart, so that samples which do not fit leave the present raster as it is.
    Bitmap filled;
    filled.SetHorizontalResolution(GetHorizontalResolution());
    filled.SetVerticalResolution(GetVerticalResolution());
    filled._Create(array.GetLength(0), array.GetLength(1), format, palette, paletteGiven, nullptr);
    PixelAccess(filled.get__InternalBitmapData()).Import(array, *this);
    _Attach(filled._Detach());
}

void Bitmap::_Attach(std::unique_ptr<engine::BitmapData> bitmap) {
    if (!bitmap) {
        throw Host::ArgumentNullException("bitmap");
    }
    CheckNotDisposed();
    CheckBitsNotLocked();
    // What can fail comes first: without memory for its object the new palette would stand beside the old one.
    std::shared_ptr<ColorPalette> palette = PaletteOf(*bitmap);
    m_pImpl->m_pInternalBitmapData = std::move(bitmap);
    m_pImpl->m_pColorPalette = std::move(palette);
    m_pImpl->m_pColorProfile.reset();
}

std::unique_ptr<engine::BitmapData> Bitmap::_Detach() {
    CheckNotDisposed();
    CheckBitsNotLocked();
    auto raster = std::exchange(m_pImpl->m_pInternalBitmapData, NewRaster());
    Update();
    return raster;
}

void Bitmap::_CreateEmpty() {
    m_pImpl->m_pInternalBitmapData = NewRaster();
    Update();
}

void Bitmap::_Unload() {
    CheckNotDisposed();
    CheckBitsNotLocked();
    m_pImpl->m_pInternalBitmapData->Empty();
    Update();
}

void Bitmap::Update() {
    UpdatePalette();
    m_pImpl->m_pColorProfile.reset();
}

void Bitmap::UpdatePalette() {
    m_pImpl->m_pColorPalette = PaletteOf(*m_pImpl->m_pInternalBitmapData);
}

engine::BitmapData& Bitmap::get__InternalBitmapData() {
    CheckBitsNotLocked();
    CheckNotDisposed();
    return *m_pImpl->m_pInternalBitmapData;
}

engine::BitmapData& Bitmap::get__InternalBitmapDataUnsafe() noexcept { return *m_pImpl->m_pInternalBitmapData; }

const std::shared_ptr<BitmapLink>& Bitmap::get__Link() const noexcept { return m_pImpl->m_pLink; }

void Bitmap::_Clear(const Color& color) {
    CheckNotDisposed();
    if (color.IsNull()) {
        throw Host::ArgumentNullException("color");
    }
    engine::BitmapData& raster = get__InternalBitmapData();
    ThrowIfEmpty();
    PixelAccess(raster).Clear(color);
}

void Bitmap::Clear(const Color& color) {
    const ObjectGuard guard(*this);
    _Clear(color);
}

std::unique_ptr<Bitmap> Bitmap::Clone() {
    auto copy = std::make_unique<Bitmap>();
    copy->Create(*this);
    return copy;
}

std::unique_ptr<Bitmap> Bitmap::GetEmptyMask() {
    const ObjectGuard guard(*this);
    const engine::BitmapData& raster = get__InternalBitmapData();
    ThrowIfEmpty();
    return std::make_unique<Bitmap>(static_cast<std::int32_t>(raster.GetWidth()),
                                    static_cast<std::int32_t>(raster.GetHeight()), PixelFormat::Format8bppGrayScale);
}

// --- Properties

template <class Read> auto Bitmap::ReadRaster(Read read) {
    const ObjectGuard guard(*this);
    return read(std::as_const(get__InternalBitmapData()));
}

bool Bitmap::get_IsEmpty() {
    return ReadRaster([](const engine::BitmapData& raster) { return raster.IsEmpty(); });
}

std::int32_t Bitmap::get_Width() {
    return ReadRaster([](const engine::BitmapData& raster) { return static_cast<std::int32_t>(raster.GetWidth()); });
}

std::int32_t Bitmap::get_Height() {
    return ReadRaster([](const engine::BitmapData& raster) { return static_cast<std::int32_t>(raster.GetHeight()); });
}

float Bitmap::get_LogicalWidth() {
    return ReadRaster([this](const engine::BitmapData& raster) {
        return _HorizontalPixelsToUnits(static_cast<std::int32_t>(raster.GetWidth()));
    });
}

float Bitmap::get_LogicalHeight() {
    return ReadRaster([this](const engine::BitmapData& raster) {
        return _VerticalPixelsToUnits(static_cast<std::int32_t>(raster.GetHeight()));
    });
}

std::int64_t Bitmap::get_MemoryUsed() {
    return ReadRaster([](const engine::BitmapData& raster) {
        return std::int64_t{raster.GetStride()} * std::int64_t{raster.GetHeight()};
    });
}

PixelFormat Bitmap::get_PixelFormat() {
    return ReadRaster([](const engine::BitmapData& raster) { return static_cast<PixelFormat>(raster.GetPixelFormat()); });
}

ColorSpace Bitmap::get_ColorSpace() {
    return ReadRaster([](const engine::BitmapData& raster) {
        return CallEngine([&] { return static_cast<ColorSpace>(engine::PixelFormatColorSpace(raster.GetPixelFormat())); });
    });
}

std::int32_t Bitmap::get_BitsPerPixel() {
    return ReadRaster([](const engine::BitmapData& raster) {
        return static_cast<std::int32_t>(engine::PixelFormatSize(raster.GetPixelFormat()));
    });
}

bool Bitmap::get_HasAlpha() {
    return ReadRaster([](const engine::BitmapData& raster) { return engine::PixelFormatHasAlpha(raster.GetPixelFormat()); });
}

bool Bitmap::get_IsCmyk() {
    return ReadRaster([](const engine::BitmapData& raster) { return engine::PixelFormatIsCmyk(raster.GetPixelFormat()); });
}

bool Bitmap::get_IsGrayScale() {
    return ReadRaster(
        [](const engine::BitmapData& raster) { return engine::PixelFormatIsGrayscale(raster.GetPixelFormat()); });
}

bool Bitmap::get_IsRgb() {
    return ReadRaster([](const engine::BitmapData& raster) { return engine::PixelFormatIsRgb(raster.GetPixelFormat()); });
}

bool Bitmap::get_IsExtended() {
    return ReadRaster(
        [](const engine::BitmapData& raster) { return engine::PixelFormatIsExtended(raster.GetPixelFormat()); });
}

bool Bitmap::get_IsIndexed() {
    return ReadRaster(
        [](const engine::BitmapData& raster) { return engine::PixelFormatIsIndexed(raster.GetPixelFormat()); });
}

bool Bitmap::get_Modified() { return m_pImpl->m_bModified; }

void Bitmap::set_Modified(bool modified) { m_pImpl->m_bModified = modified; }

std::shared_ptr<ColorPalette> Bitmap::get_Palette() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return m_pImpl->m_pColorPalette;
}

void Bitmap::set_Palette(const ColorPalette& palette) {
    const ObjectGuard guard(*this);
    engine::BitmapData& raster = get__InternalBitmapData();
    ThrowIfEmpty();
    const auto format = static_cast<PixelFormat>(raster.GetPixelFormat());
    if (!PixelFormatUtils::IsIndexed(format)) {
        throw UnsupportedPixelFormatException();
    }
    CheckCreation(format, &palette, true);
    const auto map = CallEngine([&] { return std::make_shared<engine::ColorMap>(*palette.get__ColorMap()); });
    m_pImpl->m_pColorPalette = std::make_shared<ColorPalette>(map);
    raster.SetColorMapRef(map);
}

std::shared_ptr<TransformsProvider> Bitmap::get_Transforms() { return m_pImpl->m_pTransformsProvider; }

std::shared_ptr<BitmapStatisticsProvider> Bitmap::get_Statistics() { return m_pImpl->m_pBitmapStatisticsProvider; }

float Bitmap::GetHorizontalResolution() {
    return static_cast<float>(m_pImpl->m_pInternalBitmapData->GetHorizontalResolution());
}

void Bitmap::SetHorizontalResolution(float value) { m_pImpl->m_pInternalBitmapData->SetHorizontalResolution(value); }

float Bitmap::GetVerticalResolution() {
    return static_cast<float>(m_pImpl->m_pInternalBitmapData->GetVerticalResolution());
}

void Bitmap::SetVerticalResolution(float value) { m_pImpl->m_pInternalBitmapData->SetVerticalResolution(value); }

void Bitmap::PreserveScaleFactor(std::int32_t sourceWidth, std::int32_t sourceHeight, std::int32_t* destinationWidth,
                                 std::int32_t* destinationHeight) {
    if (destinationWidth == nullptr) {
        throw Host::ArgumentNullException("destinationWidth");
    }
    if (destinationHeight == nullptr) {
        throw Host::ArgumentNullException("destinationHeight");
    }
    // Integers pass through a float on their way into double arithmetic, here and in the result.
    const auto scaled = [](std::int32_t size, std::int32_t numerator, std::int32_t denominator) {
        const double factor = static_cast<double>(static_cast<float>(numerator)) / static_cast<float>(denominator);
        return std::max(1, engine::TruncateToInt32(static_cast<double>(static_cast<float>(size)) * factor));
    };
    if (*destinationWidth <= 0 && *destinationHeight <= 0) {
        *destinationWidth = sourceWidth;
        *destinationHeight = sourceHeight;
    } else if (*destinationWidth <= 0) {
        *destinationWidth = scaled(sourceWidth, *destinationHeight, sourceHeight);
    } else if (*destinationHeight <= 0) {
        *destinationHeight = scaled(sourceHeight, *destinationWidth, sourceWidth);
    }
    *destinationWidth = std::max(1, *destinationWidth);
    *destinationHeight = std::max(1, *destinationHeight);
}

} // namespace Corvane::Rasterloom
