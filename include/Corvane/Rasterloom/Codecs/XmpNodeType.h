#pragma once

#include <cstdint>

namespace Corvane::Rasterloom::Codecs {

/// What a node of an XMP tree is.
enum class XmpNodeType : std::int32_t {
    SimpleProperty = 0,
    UnorderedArray = 1,
    OrderedArray = 2,
    AlternativeArray = 3,
    LocalizedText = 4, ///< alternatives that are told apart by their language
    Structure = 5,
    Qualifier = 6,
    LocalizedTextItem = 7,
};

} // namespace Corvane::Rasterloom::Codecs
