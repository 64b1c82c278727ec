#include "Common/ColorProfileUtils.h"
#include "Common/EventsMetaHost.h"
#include "Common/Numeric.h"
#include "colorconversion/AdaptivePaletteCreator.h"
#include "colorconversion/ColorSpaceManager.h"
#include "colorconversion/EntrySelection.h"
#include "colorconversion/SampleAccess.h"

#include <algorithm>
#include <limits>

namespace ImagingFramework {

namespace {

/// Steps that a conversion in two tasks adds to the events.
constexpr std::int32_t TwoTaskSteps = 1000;

std::int32_t StepCount(std::uint64_t steps) {
    return static_cast<std::int32_t>(std::min<std::uint64_t>(steps, std::numeric_limits<std::int32_t>::max()));
}

std::uint32_t EntryLimit(PixelFormat format) {
    return 1U << PixelFormatSize(format);
}

} // namespace

struct ColorSpaceManager::RasterConversion {
    const BitmapData& Source;
    BitmapData& Destination;
    const IInternalEventsHost& Host;
    std::unique_ptr<EventsMetaHost> Tasks; ///< set once the progress is split in two

    PixelFormat DestinationFormat() const { return Destination.GetPixelFormat(); }

    /// Splits the progress into two tasks of equal weight.
    void Split() {
        Tasks =
            std::make_unique<EventsMetaHost>(std::vector<std::uint32_t>{1, 1}, std::set<std::size_t>{}, TwoTaskSteps);
        Tasks->SetTimeout(Host.GetTimeout());
        Tasks->SetEvents(Host.GetEvents());
    }

    /// Gives `worker` the events of a task.
    void Attach(IInternalEventsHost& worker, std::size_t task) const {
        worker.SetEvents(Tasks ? Tasks->GetWorkerEvents(task) : Host.GetEvents());
        // Where there are two tasks their common host watches the clock.
        worker.SetTimeout(Tasks ? 0 : Host.GetTimeout());
    }
};

void ColorSpaceManager::TransformBitmapData(const BitmapData& source, PixelFormat destinationFormat,
                                            std::unique_ptr<BitmapData>& destination) {
    if (source.IsEmpty()) {
        throw ArgumentException("objSrcBitmapData", "instance is empty");
    }
    if (PixelFormatIsIndexed(source.GetPixelFormat()) &&
        (source.GetColorMapRef() == nullptr || source.GetColorMapRef()->IsEmpty())) {
        throw PaletteException();
    }
    const std::filesystem::path* const pProfile = source.GetProfileNameRef();
    const std::string profileName = pProfile != nullptr ? pProfile->string() : std::string();
    BeginConversion(source.GetWidth(), source.GetPixelFormat(), destinationFormat, source.GetColorMapRef(),
                    pProfile != nullptr ? &profileName : nullptr);
    // The chain is for this raster alone, whether it succeeds or not.
    struct ChainEnd {
        ColorSpaceManager& Manager;
        ~ChainEnd() { Manager.m_pChain.reset(); }
    } chainEnd{*this};

    const bool isReused = destination != nullptr && destination.get() != &source;
    std::unique_ptr<BitmapData> made = isReused ? nullptr : std::make_unique<BitmapData>();
    BitmapData& target = isReused ? *destination : *made;
    target.Create(source.GetWidth(), source.GetHeight(), destinationFormat);
    target.SetHorizontalResolution(source.GetHorizontalResolution());
    target.SetVerticalResolution(source.GetVerticalResolution());
    ConvertRaster(source, target);
    if (made) {
        destination = std::move(made);
    }
}

void ColorSpaceManager::ConvertRaster(const BitmapData& source, BitmapData& destination) {
    RasterConversion conversion{source, destination, *this, nullptr};
    // Taken now: the chain that counts the entries of a palette has none.
    const ProfileHandle resultProfile = m_resultProfile;
    if (PixelFormatIsIndexed(destination.GetPixelFormat())) {
        PrepareColorMap(conversion);
    }
    ConvertRows(conversion);
    if (PixelFormatIsIndexed(destination.GetPixelFormat())) {
        destination.SetColorMap(m_destinationColorMap);
        m_destinationColorMap.Empty();
    }
    destination.SetProfileFile(DuplicateColorProfile(resultProfile));
}

void ColorSpaceManager::CreateAdaptiveColorMap(RasterConversion& conversion) {
    conversion.Split();
    AdaptivePaletteParameters parameters;
    parameters.EntryCount = EntryLimit(conversion.DestinationFormat());
    if (m_uintColorMapEntryCount != 0) {
        parameters.EntryCount = std::min(parameters.EntryCount, m_uintColorMapEntryCount);
    }
    parameters.CreateWithAlpha = m_bCreateColorMapWithAlpha;
    parameters.Algorithm = m_algorithm;
    parameters.UseAlphaThreshold = m_bUsePaletteAlphaThreshold;
    parameters.AlphaThreshold = m_paletteAlphaThreshold;
    AdaptivePaletteCreator creator(parameters);
    conversion.Attach(creator, 0);
    creator.GetPalette(conversion.Source, m_destinationColorMap);
}

void ColorSpaceManager::PrepareColorMap(RasterConversion& conversion) {
    const PixelFormat format = conversion.DestinationFormat();
    const bool isBicolor = PixelFormatSize(format) == 1;
    if (m_colorMapType == ColorMapType::Adaptive && !isBicolor) {
        CreateAdaptiveColorMap(conversion);
        return;
    }
    const bool isCustom = m_colorMapType == ColorMapType::Custom;
    ColorMap map;
    if (isBicolor) {
        // Whatever the type says, a custom one included.
        FillPalette(map, ColorMapType::Bicolor, m_bCreateColorMapWithAlpha);
    } else if (isCustom) {
        if (m_customColorMap.IsEmpty()) {
            throw PaletteException("Custom");
        }
        map = m_customColorMap;
    } else {
        FillPalette(map, m_colorMapType, m_bCreateColorMapWithAlpha);
    }
    std::uint32_t count = std::min(EntryLimit(format), map.GetEntryCount());
    if (m_uintColorMapEntryCount != 0) {
        count = std::min(count, m_uintColorMapEntryCount);
    }
    if (count == map.GetEntryCount()) {
        m_destinationColorMap = map;
        return;
    }
    SelectColorMapEntries(conversion, map, count, m_bCreateColorMapWithAlpha && !isCustom);
}

/// Keeps the `count` entries of `map` that the picture uses most.
void ColorSpaceManager::SelectColorMapEntries(RasterConversion& conversion, ColorMap& map, std::uint32_t count,
                                              bool withAlpha) {
    conversion.Split();
    std::unique_ptr<ColorTransformChain> chain;
    CreateTransformChain(m_blend.GetBlendedFormat(), PixelFormat::Format32bppArgb, &chain);
    MemPtr<std::uint8_t> scanline;
    scanline.AllocateCount(CheckedStride(m_uintPixelCount, PixelFormat::Format32bppArgb, 1));
    EntrySelection selection(map);
    IInternalEventsHostImpl task;
    conversion.Attach(task, 0);
    const std::uint32_t height = conversion.Source.GetHeight();
    task.ResetProgress(StepCount(std::uint64_t{height} + selection.GetSortStepCount()));
    for (std::uint32_t y = 0; y < height; ++y) {
        chain->ApplyScanlineTransform(BlendScanline(conversion.Source.GetScanlineRef(y)), scanline.Get());
        selection.AddPixels(scanline.Get(), m_uintPixelCount);
        task.UpdateEvents(1);
    }
    const std::vector<std::uint32_t> indices = selection.Sort([&task] { task.UpdateEvents(1); });
    m_destinationColorMap = selection.Pick(std::span(indices).first(count), withAlpha);
    task.UpdateEvents(1);
}

void ColorSpaceManager::ConvertRows(RasterConversion& conversion) {
    IInternalEventsHostImpl task;
    conversion.Attach(task, 1);
    const std::uint32_t height = conversion.Source.GetHeight();
    task.ResetProgress(StepCount(height));
    for (std::uint32_t y = 0; y < height; ++y) {
        m_pChain->ApplyScanlineTransform(BlendScanline(conversion.Source.GetScanlineRef(y)),
                                         conversion.Destination.GetScanlineRef(y));
        task.UpdateEvents(1);
    }
}

void ColorSpaceManager::KeepAlpha(std::unique_ptr<BitmapData>& bitmapData, std::uint16_t alpha) {
    if (!bitmapData) {
        throw ArgumentNullPointerException("bitmapData");
    }
    const PixelFormat format = bitmapData->GetPixelFormat();
    const PixelFormat alphaFormat = PixelFormatAddAlpha(format);
    if (alphaFormat == format) {
        return;
    }
    ColorSpaceManager manager;
    manager.SetColorManagementEngine(ColorManagementEngine::None);
    std::unique_ptr<BitmapData> converted;
    manager.TransformBitmapData(*bitmapData, alphaFormat, converted);
    // Written apart, so that a palette with alpha does not show through.
    const std::size_t channels = PixelFormatChannelCount(alphaFormat);
    for (std::uint32_t y = 0; y < converted->GetHeight(); ++y) {
        std::uint8_t* const row = converted->GetScanlineRef(y);
        for (std::size_t x = 0; x < converted->GetWidth(); ++x) {
            if (PixelFormatIsExtended(alphaFormat)) {
                StoreSample(row, x * channels + channels - 1, alpha);
            } else {
                StoreSample(row, x * channels + channels - 1, static_cast<std::uint8_t>(alpha >> 8));
            }
        }
    }
    converted->SetProfileFile(bitmapData->GetProfileFile());
    bitmapData = std::move(converted);
}

} // namespace ImagingFramework
