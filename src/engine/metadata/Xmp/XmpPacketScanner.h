#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace ImagingFramework {

/// Finds XMP packets by their wrapper, wherever they stand: in UTF-8 and in UTF-16 of both byte orders.
class XmpPacketScanner {
public:
    /// The first packet with a sound wrapper, from the header to the end of the trailer, as UTF-8; none when there is
    /// none. What stands between them is not looked at.
    static std::optional<std::string> FindPacket(std::span<const std::uint8_t> bytes);
};

} // namespace ImagingFramework
