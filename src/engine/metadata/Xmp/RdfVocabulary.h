#pragma once

#include "metadata/Xmp/XMPNodeType.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

// The names of RDF as XMP uses them.

namespace ImagingFramework {

/// URIs of earlier times, and what they became.
inline constexpr std::pair<std::string_view, std::string_view> OldUris[] = {
    {"http://purl.org/dc/1.1/", "http://purl.org/dc/elements/1.1/"},
};

/// What a namespace is called today.
inline std::string_view CurrentUri(std::string_view uri) {
    const auto* const found = std::ranges::find(OldUris, uri, [](const auto& pair) { return pair.first; });
    return found != std::end(OldUris) ? found->second : uri;
}

/// The kind of array that an element is; nothing for another element.
inline std::optional<XMPNodeType> ContainerType(std::string_view name) {
    if (name == "Bag") {
        return XMPNodeType::UnorderedArray;
    }
    if (name == "Seq") {
        return XMPNodeType::OrderedArray;
    }
    return name == "Alt" ? std::optional(XMPNodeType::AlternativeArray) : std::nullopt;
}

/// Whether a name in the namespace of RDF is that of a property.
inline bool IsRdfProperty(std::string_view name) {
    return name == "value" || name == "type";
}

/// Whether a name in the namespace of RDF is that of an item in a container.
inline bool IsItemName(std::string_view name) {
    constexpr std::string_view digits = "0123456789";
    return name == "li" || (name.size() > 1 && name[0] == '_' && name.find_first_not_of(digits, 1) == name.npos);
}

/// Attributes of RDF that old packets write without its namespace.
inline bool IsOldAttribute(std::string_view name) {
    return name == "about" || name == "ID" || name == "resource" || name == "parseType";
}

} // namespace ImagingFramework
