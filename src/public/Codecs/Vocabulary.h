#pragma once

#include "CallEngine.h"
#include "metadata/MimeTypes.h"

#include <cstdint>
#include <string>

namespace Corvane::Rasterloom::Codecs {

/// A word of the engine's table of media formats; `lookup` is one of the members of `MimeTypes`.
inline std::string ReadVocabulary(std::int64_t mediaFormat,
                                  const std::string& (*lookup)(ImagingFramework::FileFormat)) {
    return CallEngine([&]() -> std::string { return lookup(static_cast<ImagingFramework::FileFormat>(mediaFormat)); });
}

} // namespace Corvane::Rasterloom::Codecs
