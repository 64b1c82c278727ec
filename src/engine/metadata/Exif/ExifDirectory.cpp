#include "metadata/Exif/ExifDirectory.h"

#include "ErrorHandling/Exceptions.h"

#include <algorithm>
#include <utility>

namespace ImagingFramework {

ExifDirectory::ExifDirectory(std::vector<ExifEntry> entries) : m_entries(std::move(entries)) {
    std::ranges::stable_sort(m_entries, {}, &ExifEntry::Tag);
    const auto repeated = std::ranges::unique(m_entries, {}, &ExifEntry::Tag);
    m_entries.erase(repeated.begin(), repeated.end());
}

std::uint16_t ExifDirectory::GetTagAt(std::uint32_t index) const {
    if (index >= m_entries.size()) {
        throw ArgumentOutOfRangeException("index");
    }
    return m_entries[index].Tag;
}

const ExifTag* ExifDirectory::Find(std::uint16_t tag) const noexcept {
    const auto place = std::ranges::lower_bound(m_entries, tag, {}, &ExifEntry::Tag);
    return place != m_entries.end() && place->Tag == tag ? &place->Value : nullptr;
}

void ExifDirectory::Set(std::uint16_t tag, ExifTag value) {
    const auto place = std::ranges::lower_bound(m_entries, tag, {}, &ExifEntry::Tag);
    if (place != m_entries.end() && place->Tag == tag) {
        place->Value = std::move(value);
        return;
    }
    if (m_entries.size() >= MaxTagCount) {
        throw UnexpectedException("Number of EXIF tags exceeds limit of 65535 tags");
    }
    m_entries.insert(place, ExifEntry{tag, std::move(value)});
}

bool ExifDirectory::Remove(std::uint16_t tag) noexcept {
    const auto place = std::ranges::lower_bound(m_entries, tag, {}, &ExifEntry::Tag);
    const bool isThere = place != m_entries.end() && place->Tag == tag;
    if (isThere) {
        m_entries.erase(place);
    }
    return isThere;
}

} // namespace ImagingFramework
