#pragma once

#include <cstdint>
#include <string_view>

namespace ImagingFramework {

/// A data set that has a name and holds text.
struct IptcTag {
    std::uint16_t Key;            ///< record * 256 + data set
    std::string_view Name;        ///< as `IptcKeyword`
    std::string_view Description; ///< for people
};

/// Null for a key that is not in the table.
const IptcTag* FindIptcTag(std::uint16_t key) noexcept;
/// Names compare without regard to case; null for one that is not in the table.
const IptcTag* FindIptcTag(std::string_view name) noexcept;

} // namespace ImagingFramework
