#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Codecs {

/// What a reader's worker is doing.
enum class ActionType : std::uint32_t { None = 0, BitmapLoading = 1, ThumbnailLoading = 2 };

} // namespace Corvane::Rasterloom::Codecs
