#pragma once

#include "Metadata.h"

#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

namespace Tool {

using Json = nlohmann::ordered_json;

/// The blocks that are there, each with all its entries: EXIF and IPTC entries and image resources as arrays of
/// objects, XMP as a tree. A block that turns out broken is left out and told to `note`.
Json DescribeMetadata(const Metadata& metadata, const std::function<void(const std::string&)>& note);

/// The same as titles with lines of name and value.
struct MetadataSection {
    std::string Title;
    std::vector<std::pair<std::string, std::string>> Lines;
};
std::vector<MetadataSection> ListMetadata(const Json& metadata);

} // namespace Tool
