#include "metadata/Exif/ExifKey.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Exif/ExifTagTable.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

constexpr std::uint32_t PseudoKeyMark = 0xF0000000;
constexpr std::uint32_t HighestTag = 0xFFFF;
constexpr std::string_view Prefix = "Exif";
constexpr std::string_view ThumbnailName = "ExifThumbnail";

/// The thumbnail's names put "Thumbnail" behind the prefix, and in place of "Image" for its two sides.
std::string NameOf(const ExifTagInfo& info, ExifIfd ifd) {
    if (ifd != ExifIfd::Thumbnail) {
        return std::string(info.Name);
    }
    const bool isSide = info.Tag == ExifTagId::ImageWidth || info.Tag == ExifTagId::ImageHeight;
    constexpr std::string_view sidePrefix = "ExifImage";
    return std::string(ThumbnailName).append(info.Name.substr(isSide ? sidePrefix.size() : Prefix.size()));
}

char ToLower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool EqualNames(std::string_view a, std::string_view b) noexcept {
    return std::ranges::equal(a, b, {}, ToLower, ToLower);
}

} // namespace

bool ExifKey::IsPseudoKey(std::uint32_t key) noexcept {
    return (key & PseudoKeyMark) == PseudoKeyMark && GetIfdNumber(key) < ExifIfdCount;
}

ExifIfd ExifKey::GetTagIfd(std::uint16_t tag) noexcept {
    for (const ExifIfd ifd : {ExifIfd::Exif, ExifIfd::Interoperability, ExifIfd::Gps}) {
        if (FindExifTagInfo(tag, ifd) != nullptr) {
            return ifd;
        }
    }
    return ExifIfd::MainImage;
}

ExifTagPlace ExifKey::TranslateKey(std::uint32_t key) {
    if (key <= HighestTag) {
        return {GetTagId(key), GetTagIfd(GetTagId(key))};
    }
    if (!IsPseudoKey(key)) {
        throw ArgumentException("key");
    }
    return {GetTagId(key), static_cast<ExifIfd>(GetIfdNumber(key))};
}

std::uint32_t ExifKey::MakeKey(ExifTagPlace place) noexcept {
    return PseudoKeyMark + (static_cast<std::uint32_t>(place.Ifd) << 16) + place.Tag;
}

bool ExifKey::KeyToName(std::uint32_t key, std::string& text) {
    if (key == Thumbnail) {
        text = ThumbnailName;
        return true;
    }
    if (key > HighestTag && !IsPseudoKey(key)) {
        return false;
    }
    const ExifTagPlace place = TranslateKey(key);
    const ExifTagInfo* const pInfo = FindExifTagInfo(place.Tag, place.Ifd);
    if (pInfo != nullptr) {
        text = NameOf(*pInfo, place.Ifd);
    }
    return pInfo != nullptr;
}

bool ExifKey::NameToKey(std::string_view text, std::uint32_t& key) {
    if (EqualNames(text, ThumbnailName)) {
        key = Thumbnail;
        return true;
    }
    for (std::uint32_t number = 0; number < ExifIfdCount; ++number) {
        const auto ifd = static_cast<ExifIfd>(number);
        for (const ExifTagInfo& info : GetExifTagTable(ifd)) {
            if (EqualNames(text, NameOf(info, ifd))) {
                key = MakeKey({info.Tag, ifd});
                return true;
            }
        }
    }
    return false;
}

} // namespace ImagingFramework
