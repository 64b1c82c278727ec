#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Codecs {

/// What a `NonSeekableStreamProxy` stands on.
enum class ProxyMode : std::uint32_t {
    OriginalStream = 0, ///< the stream that it was given
    CopiedStream = 1,   ///< a temporary copy of it
};

} // namespace Corvane::Rasterloom::Codecs
