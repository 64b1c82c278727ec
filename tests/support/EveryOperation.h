#pragma once

// What tests over all operations on a bitmap share: a table of them.

#include "EveryCodec.h"
#include "TestProfiles.h"

#include <Corvane/Rasterloom/ColorManagementProvider.h>
#include <Corvane/Rasterloom/ColorPalette.h>
#include <Corvane/Rasterloom/ColorProfile.h>
#include <Corvane/Rasterloom/EnumNames.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace Corvane::Rasterloom {

struct Operation {
    std::string Name;
    /// Makes the bitmap what the operation begins with.
    std::function<void(Bitmap&)> Prepare;
    std::function<void(Bitmap&)> Run;
};

inline std::shared_ptr<ColorProfile> ProfileOf(const TestProfiles::Bytes& bytes) {
    return std::make_shared<ColorProfile>(std::span(bytes));
}

inline void AddConversions(std::vector<Operation>& operations) {
    using enum PixelFormat;
    const auto fill = [](Bitmap& bitmap) { Codecs::FillWithNoise(bitmap); };
    for (const PixelFormat format : {Format8bppGrayScale, Format32bppArgb, Format32bppCmyk, Format80bppAcmyk}) {
        operations.push_back({"convert to " + std::to_string(static_cast<std::uint32_t>(format)), fill,
                              [=](Bitmap& bitmap) { bitmap.get_ColorManagement()->Convert(format); }});
    }
    for (const auto& dithering : EnumNames<DitheringType>()) {
        operations.push_back({"dither by " + std::string(dithering.Name), fill, [=](Bitmap& bitmap) {
                                  const auto management = bitmap.get_ColorManagement();
                                  management->set_Dithering(dithering.Value);
                                  management->Convert(Format4bppIndexed);
                              }});
    }
    for (const auto algorithm : {ColorQuantizationAlgorithm::Octree, ColorQuantizationAlgorithm::MedianCut}) {
        const auto quantize = [=](Bitmap& bitmap) {
            const auto management = bitmap.get_ColorManagement();
            management->set_ColorQuantizationAlgorithm(algorithm);
            management->ConvertToIndexed(8, ColorPaletteType::Adaptive);
        };
        operations.push_back({"quantize by " + std::to_string(static_cast<int>(algorithm)), fill, quantize});
    }
    const auto fillIndexed = [](Bitmap& bitmap) {
        Codecs::FillWithNoise(bitmap);
        bitmap.get_ColorManagement()->ConvertToIndexed(8, ColorPaletteType::WebSafe);
    };
    operations.push_back({"convert from a palette", fillIndexed,
                          [](Bitmap& bitmap) { bitmap.get_ColorManagement()->Convert(Format64bppArgb); }});
    operations.push_back({"convert by profiles",
                          [](Bitmap& bitmap) {
                              Codecs::FillWithNoise(bitmap);
                              bitmap.set_ColorProfile(ProfileOf(TestProfiles::Rgb()));
                          },
                          [](Bitmap& bitmap) {
                              const auto management = bitmap.get_ColorManagement();
                              management->set_ColorManagementEngine(ColorManagementEngine::LittleCms);
                              management->set_CmykColorProfile(ProfileOf(TestProfiles::Cmyk()));
                              management->Convert(Format32bppCmyk);
                          }});
}

inline void AddGeometry(std::vector<Operation>& operations) {
    const auto fill = [](Bitmap& bitmap) { Codecs::FillWithNoise(bitmap); };
    for (const auto& mode : EnumNames<Transforms::InterpolationMode>()) {
        const bool toGray = mode.Value == Transforms::InterpolationMode::ScaleToGray;
        const auto prepare = [=](Bitmap& bitmap) {
            fill(bitmap);
            if (toGray) {
                bitmap.get_ColorManagement()->ConvertToIndexed(1, ColorPaletteType::Bicolor);
            }
        };
        operations.push_back({"reduce by " + std::string(mode.Name), prepare,
                              [=](Bitmap& bitmap) { bitmap.get_Transforms()->Resize(23, 17, mode.Value); }});
        if (toGray) {
            continue;
        }
        operations.push_back({"enlarge by " + std::string(mode.Name), prepare,
                              [=](Bitmap& bitmap) { bitmap.get_Transforms()->Resize(90, 70, mode.Value); }});
    }
    operations.push_back({"rotate", fill, [](Bitmap& bitmap) { bitmap.get_Transforms()->Rotate(30.0F); }});
    operations.push_back({"turn", fill, [](Bitmap& bitmap) {
                              bitmap.get_Transforms()->RotateAndFlip(Host::RotateFlipType::Rotate90FlipX);
                          }});
    operations.push_back({"crop", fill, [](Bitmap& bitmap) { bitmap.get_Transforms()->Crop(3, 4, 20, 20); }});
}

/// Conversions of every kind, and what changes the size.
inline std::vector<Operation> EveryOperation() {
    std::vector<Operation> operations;
    AddConversions(operations);
    AddGeometry(operations);
    return operations;
}

/// All that a file of the bitmap tells: pixels, palette, resolution.
inline std::vector<std::uint8_t> Contents(Bitmap& bitmap) { return Codecs::SaveTo(Codecs::FormatManager::BmpFormat, bitmap); }

} // namespace Corvane::Rasterloom
