#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Codecs {

/// What becomes of a frame before the next one of an animation is shown; the numbers are those of the GIF89a graphic
/// control extension.
enum class DisposalMethod : std::uint32_t { None = 0, Leave = 1, Background = 2, Previous = 3 };

} // namespace Corvane::Rasterloom::Codecs
