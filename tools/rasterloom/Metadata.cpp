#include "Metadata.h"

#include "ColorChoices.h"
#include "Conversions.h"
#include "Values.h"

#include <Corvane/Rasterloom/Codecs/AdobeResourceDictionary.h>
#include <Corvane/Rasterloom/Codecs/ExifDictionary.h>
#include <Corvane/Rasterloom/Codecs/IMetadataReadSupport.h>
#include <Corvane/Rasterloom/Codecs/IMetadataWriteSupport.h>
#include <Corvane/Rasterloom/Codecs/IptcDictionary.h>
#include <Corvane/Rasterloom/Codecs/XmpData.h>
#include <Corvane/Rasterloom/Codecs/XmpValueNode.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/RotateFlipType.h>
#include <Corvane/Rasterloom/Transforms/Resize.h>
#include <Corvane/Rasterloom/TransformsProvider.h>

namespace Tool {

using namespace Corvane::Rasterloom;
using Codecs::ExifDictionary;
using Codecs::ExifKeys;

namespace {

/// The size that EXIF has in mind for thumbnails, in either direction.
constexpr std::int32_t ThumbnailSide = 160;

// Image resources by number.
constexpr std::uint32_t ThumbnailResources[] = {0x0409, 0x040C};
constexpr std::uint32_t ProfileResource = 0x040F;
constexpr std::uint32_t IptcResource = 0x0404;

constexpr const char* XmpOrientation = "tiff:Orientation";

void SetNumber(ExifDictionary& exif, std::uint32_t key, std::uint32_t value) {
    if (exif.Contains(key)) {
        exif.set_Item(key, value);
    }
}

void RenewThumbnail(ExifDictionary& exif, Bitmap& bitmap) {
    if (!exif.Contains(ExifKeys::Thumbnail)) {
        return;
    }
    exif.Remove(ExifKeys::Thumbnail);
    if (bitmap.get_Width() <= ThumbnailSide && bitmap.get_Height() <= ThumbnailSide) {
        return;
    }
    Bitmap colors;
    if (bitmap.get_IsIndexed()) {
        colors.Create(bitmap);
        ConvertPixels(colors, PixelFormat::Format24bppRgb, {});
    }
    const auto size = RequestedSize{ThumbnailSide, ThumbnailSide, 0}.Within(bitmap.get_Width(), bitmap.get_Height());
    Transforms::Resize resize(static_cast<float>(size.Width), static_cast<float>(size.Height),
                              Transforms::InterpolationMode::HighQuality);
    const auto thumbnail = std::make_shared<Bitmap>();
    resize.ApplyTransform(colors.get_IsEmpty() ? bitmap : colors, *thumbnail);
    ConvertPixels(*thumbnail, PixelFormat::Format24bppRgb, {});
    // It is in the colours of the picture, whose profile is told once.
    thumbnail->set_ColorProfile(nullptr);
    exif.set_Item(ExifKeys::Thumbnail, thumbnail);
}

void SetXmpOrientation(std::string& packet) {
    if (packet.find(XmpOrientation) == std::string::npos) {
        return;
    }
    Codecs::XmpData xmp(packet);
    if (auto* const value = dynamic_cast<Codecs::XmpValueNode*>(xmp.get_Item(XmpOrientation).get())) {
        value->set_Value("1");
        packet = xmp.Save();
    }
}

/// What a picture has to go through to stand upright.
Host::RotateFlipType TurnOf(std::int32_t orientation) {
    using enum Host::RotateFlipType;
    constexpr Host::RotateFlipType turns[] = {RotateNoneFlipNone, RotateNoneFlipX,  Rotate180FlipNone,
                                              RotateNoneFlipY,    Rotate90FlipX,    Rotate90FlipNone,
                                              Rotate270FlipX,     Rotate270FlipNone};
    return turns[orientation - 1];
}

} // namespace

Metadata ReadMetadata(Codecs::IFormatReader& reader, const std::function<void(const std::string&)>& note) {
    Metadata metadata;
    auto* const source = dynamic_cast<Codecs::IMetadataReadSupport*>(&reader);
    if (source == nullptr) {
        return metadata;
    }
    const auto read = [&](const char* name, auto body) {
        try {
            body();
        } catch (const std::exception& exception) {
            note(std::string(name) + " cannot be read and is left out: " + exception.what());
        }
    };
    read("EXIF", [&] { metadata.Exif = source->get_Exif(); });
    read("IPTC", [&] { metadata.Iptc = source->get_Iptc(); });
    read("XMP", [&] { metadata.Xmp = source->get_Xmp(); });
    read("the block of image resources", [&] { metadata.AdobeResources = source->get_AdobeResources(); });
    return metadata;
}

void FollowChanges(Metadata& metadata, Bitmap& bitmap) {
    if (metadata.Exif) {
        SetNumber(*metadata.Exif, ExifKeys::PixelXDimension, static_cast<std::uint32_t>(bitmap.get_Width()));
        SetNumber(*metadata.Exif, ExifKeys::PixelYDimension, static_cast<std::uint32_t>(bitmap.get_Height()));
        RenewThumbnail(*metadata.Exif, bitmap);
    }
    for (const std::uint32_t key : ThumbnailResources) {
        if (metadata.AdobeResources && metadata.AdobeResources->Contains(key)) {
            metadata.AdobeResources->Remove(key);
        }
    }
}

void FollowProfile(Metadata& metadata, bool isSrgb) {
    constexpr std::uint32_t srgb = 1;
    constexpr std::uint32_t uncalibrated = 0xFFFF;
    if (metadata.Exif) {
        SetNumber(*metadata.Exif, ExifKeys::ColorSpace, isSrgb ? srgb : uncalibrated);
    }
    if (metadata.AdobeResources && metadata.AdobeResources->Contains(ProfileResource)) {
        metadata.AdobeResources->Remove(ProfileResource);
    }
}

bool DropThumbnail(Metadata& metadata) {
    const bool dropped = metadata.Exif && metadata.Exif->Contains(ExifKeys::Thumbnail);
    if (dropped) {
        metadata.Exif->Remove(ExifKeys::Thumbnail);
    }
    return dropped;
}

std::string AddMetadata(Codecs::EncoderOptions& options, const Metadata& metadata) {
    auto* const target = dynamic_cast<Codecs::IMetadataWriteSupport*>(&options);
    std::string names;
    if (target == nullptr) {
        return names;
    }
    const auto add = [&](bool exists, const char* name) {
        if (exists) {
            names += (names.empty() ? "" : ", ") + std::string(name);
        }
    };
    target->set_Exif(metadata.Exif);
    // The resources hold the block as it was: order and bytes stay, which other programs keep digests of.
    if (!metadata.AdobeResources || !metadata.AdobeResources->Contains(IptcResource)) {
        target->set_Iptc(metadata.Iptc);
    }
    target->set_Xmp(metadata.Xmp);
    target->set_AdobeResources(metadata.AdobeResources);
    add(metadata.Exif != nullptr, "EXIF");
    add(metadata.Iptc != nullptr, "IPTC");
    add(!metadata.Xmp.empty(), "XMP");
    add(metadata.AdobeResources != nullptr && !metadata.Iptc, "image resources");
    return names;
}

std::int32_t GetOrientation(const Metadata& metadata) {
    constexpr std::uint32_t last = 8;
    if (!metadata.Exif || !metadata.Exif->Contains(ExifKeys::Orientation)) {
        return 1;
    }
    const auto value = metadata.Exif->get_Item(ExifKeys::Orientation);
    const auto* const number = std::get_if<std::uint32_t>(&value);
    return number != nullptr && *number >= 1 && *number <= last ? static_cast<std::int32_t>(*number) : 1;
}

bool TurnUpright(Bitmap& bitmap, Metadata& metadata) {
    const std::int32_t orientation = GetOrientation(metadata);
    if (orientation == 1) {
        return false;
    }
    bitmap.get_Transforms()->RotateAndFlip(TurnOf(orientation));
    SetNumber(*metadata.Exif, ExifKeys::Orientation, 1);
    SetNumber(*metadata.Exif, ExifKeys::ThumbnailOrientation, 1);
    SetXmpOrientation(metadata.Xmp);
    return true;
}

} // namespace Tool
