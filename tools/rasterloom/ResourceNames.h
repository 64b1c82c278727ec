#pragma once

#include <cstdint>
#include <string>

namespace Tool {

/// What the image resource of a number is known to hold; "Resource 0x03E9" where that is not known.
std::string ResourceName(std::uint32_t number);

} // namespace Tool
