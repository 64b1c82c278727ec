#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace ImagingFramework {

/// The first XMP packet in some bytes, from its begin to its end instruction, as UTF-8; empty when there is none. Packets of
/// 8-bit and of 16-bit units in either byte order are found.
std::string FindXmpPacket(std::span<const std::uint8_t> data);

} // namespace ImagingFramework
