#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Codecs {

/// What a custom reader is asked for.
enum class LoadingMode : std::uint32_t { Bitmap = 0, Thumbnail = 1 };

} // namespace Corvane::Rasterloom::Codecs
