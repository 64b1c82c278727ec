#pragma once

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/IFormatReader.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Corvane::Rasterloom::Codecs {
class AdobeResourceDictionary;
class ExifDictionary;
class IptcDictionary;
} // namespace Corvane::Rasterloom::Codecs

namespace Tool {

/// The metadata blocks of a file; null or empty for one that it does not have.
struct Metadata {
    std::shared_ptr<Corvane::Rasterloom::Codecs::ExifDictionary> Exif;
    std::shared_ptr<Corvane::Rasterloom::Codecs::IptcDictionary> Iptc;
    std::string Xmp;
    std::shared_ptr<Corvane::Rasterloom::Codecs::AdobeResourceDictionary> AdobeResources;
};

/// Reads what the file has. A block that is broken is left out and told to `note`.
Metadata ReadMetadata(Corvane::Rasterloom::Codecs::IFormatReader& reader,
                      const std::function<void(const std::string&)>& note);

/// Makes blocks true for changed pixels: sizes, and thumbnails where there were some. Thumbnails are made anew from the
/// picture, and left out where the picture is as small.
void FollowChanges(Metadata& metadata, Corvane::Rasterloom::Bitmap& bitmap);
/// Makes blocks true for colours that went to another profile.
void FollowProfile(Metadata& metadata, bool isSrgb);
/// Drops the thumbnail of the EXIF block; whether there was one.
bool DropThumbnail(Metadata& metadata);

/// Puts the blocks into the options, where the format can hold any, and names them: "EXIF, XMP".
std::string AddMetadata(Corvane::Rasterloom::Codecs::EncoderOptions& options, const Metadata& metadata);

/// How the picture is to be shown, from 1 (as it stands) to 8, by EXIF's numbers; 1 where nothing valid tells.
std::int32_t GetOrientation(const Metadata& metadata);
/// Whether showing it changes width and height.
constexpr bool IsLyingOrientation(std::int32_t orientation) {
    return orientation >= 5;
}
/// Turns the pixels as the orientation tells, which then is 1; whether that changed anything.
bool TurnUpright(Corvane::Rasterloom::Bitmap& bitmap, Metadata& metadata);

} // namespace Tool
