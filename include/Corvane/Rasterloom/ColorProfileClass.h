#pragma once

#include <cstdint>

namespace Corvane::Rasterloom {

/// The kinds of ICC profiles, by the four characters in their headers.
enum class ColorProfileClass : std::uint32_t {
    Unknown = 0,
    Input = 0x73636E72,      ///< "scnr"
    Display = 0x6D6E7472,    ///< "mntr"
    Output = 0x70727472,     ///< "prtr"
    Link = 0x6C696E6B,       ///< "link"
    ColorSpace = 0x73706163, ///< "spac"
    Abstract = 0x61627374,   ///< "abst"
    NamedColor = 0x6E6D636C, ///< "nmcl"
};

} // namespace Corvane::Rasterloom
