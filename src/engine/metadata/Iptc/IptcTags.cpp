#include "metadata/Iptc/IptcTags.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

constexpr IptcTag Tags[] = {
#define RASTERLOOM_IPTC_TAG(Key, Name, Text) {Key, "Iptc" #Name, Text},
#include "metadata/Iptc/IptcTags.def"
#undef RASTERLOOM_IPTC_TAG
};
static_assert(std::ranges::is_sorted(Tags, {}, &IptcTag::Key));

constexpr char ToLower(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

const IptcTag* FindIptcTag(std::uint16_t key) noexcept {
    const auto* const found = std::ranges::lower_bound(Tags, key, {}, &IptcTag::Key);
    return found != std::end(Tags) && found->Key == key ? found : nullptr;
}

const IptcTag* FindIptcTag(std::string_view name) noexcept {
    const auto* const found = std::ranges::find_if(
        Tags, [&](const IptcTag& tag) { return std::ranges::equal(tag.Name, name, {}, ToLower, ToLower); });
    return found != std::end(Tags) ? found : nullptr;
}

} // namespace ImagingFramework
