#pragma once

#include <cstdint>

namespace Corvane::Rasterloom {

/// Who converts colours between profiles. Adobe's module exists on no platform that this library runs on: a conversion
/// that needs it fails with `CMAdobeModuleLoadException`.
enum class ColorManagementEngine : std::uint32_t { None = 0, LittleCms = 1, AdobeCmm = 2 };

} // namespace Corvane::Rasterloom
