#include "MetadataReport.h"

#include "ResourceNames.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/AdobeResourceDictionary.h>
#include <Corvane/Rasterloom/Codecs/ExifDictionary.h>
#include <Corvane/Rasterloom/Codecs/IptcDictionary.h>
#include <Corvane/Rasterloom/Codecs/MetadataEnumerator.h>
#include <Corvane/Rasterloom/Codecs/XmpArrayNode.h>
#include <Corvane/Rasterloom/Codecs/XmpData.h>
#include <Corvane/Rasterloom/Codecs/XmpDictionaryNode.h>
#include <Corvane/Rasterloom/Codecs/XmpLocalizedTextItemNode.h>
#include <Corvane/Rasterloom/Codecs/XmpValueNode.h>

#include <algorithm>
#include <cstdio>
#include <exception>

namespace Tool {

using namespace Corvane::Rasterloom;
using namespace Corvane::Rasterloom::Codecs;

namespace {

/// Longer data is shown by its size and its first bytes.
constexpr std::size_t ShownBytes = 64;
/// Longer texts are cut in lines, and whole in JSON.
constexpr std::size_t ShownText = 400;
constexpr std::size_t ShownValues = 16;

std::string Hexadecimal(std::uint32_t value, int digits) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%0*X", digits, value);
    return text;
}

Json DescribeBytes(const std::vector<std::uint8_t>& bytes) {
    std::string digits;
    for (std::size_t i = 0; i < std::min(bytes.size(), ShownBytes); ++i) {
        char byte[4];
        std::snprintf(byte, sizeof byte, "%02X", bytes[i]);
        digits += byte;
    }
    return {{"size", bytes.size()}, {bytes.size() <= ShownBytes ? "hex" : "begin", digits}};
}

/// A JSON value for one of a dictionary.
struct ValueDescriber {
    Json operator()(std::monostate) const { return nullptr; }
    Json operator()(std::int32_t value) const { return value; }
    Json operator()(std::int64_t value) const { return value; }
    Json operator()(std::uint32_t value) const { return value; }
    Json operator()(const Rational& value) const { return value.ToString(); }
    Json operator()(const UnsignedRational& value) const { return value.ToString(); }
    Json operator()(const std::string& value) const { return value; }
    Json operator()(const std::vector<std::uint8_t>& value) const { return DescribeBytes(value); }
    Json operator()(const std::shared_ptr<Bitmap>& value) const {
        return value ? Json{{"width", value->get_Width()}, {"height", value->get_Height()}} : Json();
    }
    Json operator()(const AdobeResourceBlock& value) const {
        Json block = DescribeBytes(value.get_Data());
        if (!value.get_Name().empty()) {
            block["name"] = value.get_Name();
        }
        return block;
    }
};

/// All values of a key; a single one stands for itself.
Json DescribeValues(MetadataDictionary& dictionary, std::uint32_t key) {
    Json values = Json::array();
    for (const MetadataValue& value : dictionary.GetItemArray(key)) {
        values.push_back(std::visit(ValueDescriber(), value));
    }
    return values.size() == 1 ? values.front() : values;
}

const char* DirectoryOf(std::uint32_t key) {
    constexpr const char* names[] = {"image", "thumbnail", "camera", "position", "interoperability"};
    const std::uint32_t number = (key >> 16) & 0xFFFU;
    return key == ExifKeys::Thumbnail ? "thumbnail" : number < std::size(names) ? names[number] : "";
}

Json DescribeExif(ExifDictionary& exif) {
    Json entries = Json::array();
    for (const std::uint32_t key : exif.get_Keys()) {
        std::string name = exif.GetKeyDescription(key);
        if (name.empty()) {
            name = key == ExifKeys::Thumbnail ? "Thumbnail" : "Tag " + Hexadecimal(key & 0xFFFFU, 4);
        }
        Json entry = {
            {"directory", DirectoryOf(key)}, {"key", key}, {"name", name}, {"value", DescribeValues(exif, key)}};
        if (const std::string text = exif.GetItemString(key); !text.empty()) {
            entry["text"] = text;
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

Json DescribeIptc(IptcDictionary& iptc) {
    Json entries = Json::array();
    for (const std::uint32_t key : iptc.get_Keys()) {
        std::string name = iptc.GetKeyDescription(key);
        if (name.empty()) {
            name = "Data set " + std::to_string(key >> 8) + ":" + std::to_string(key & 0xFFU);
        }
        entries.push_back({{"key", key}, {"name", name}, {"value", DescribeValues(iptc, key)}});
    }
    return entries;
}

Json DescribeResources(AdobeResourceDictionary& resources) {
    Json entries = Json::array();
    std::vector<std::uint32_t> keys = resources.get_Keys();
    // A number that several blocks have is listed once, with its first block.
    for (auto key = keys.begin(); key != keys.end(); ++key) {
        if (std::find(keys.begin(), key, *key) == key) {
            entries.push_back(
                {{"key", *key}, {"name", ResourceName(*key)}, {"value", DescribeValues(resources, *key)}});
        }
    }
    return entries;
}

Json DescribeNode(XmpNode& node) {
    if (const auto* const item = dynamic_cast<XmpLocalizedTextItemNode*>(&node)) {
        return item->get__Value();
    }
    if (auto* const value = dynamic_cast<XmpValueNode*>(&node); value != nullptr && value->get_Count() == 0) {
        return value->get_Value();
    }
    Json children = dynamic_cast<XmpArrayNode*>(&node) != nullptr ? Json::array() : Json::object();
    if (auto* const value = dynamic_cast<XmpValueNode*>(&node)) {
        children["value"] = value->get_Value(); // beside its qualifiers
    }
    for (XmpNodeEnumerator cursor = node.GetEnumerator(); cursor.MoveNext();) {
        XmpNode& child = *cursor.get_Current();
        if (children.is_array()) {
            children.push_back(DescribeNode(child));
        } else {
            children[child.get_Name()] = DescribeNode(child);
        }
    }
    return children;
}

Json DescribeXmp(const std::string& packet) {
    XmpData xmp(packet);
    Json tree = Json::object();
    for (XmpNodeEnumerator cursor = xmp.GetEnumerator(); cursor.MoveNext();) {
        XmpNode& node = *cursor.get_Current();
        tree[node.get_Name()] = DescribeNode(node);
    }
    return tree;
}

std::string TextOf(const Json& value) {
    if (value.is_string()) {
        const std::string text = value.get<std::string>();
        return text.size() <= ShownText ? text : text.substr(0, ShownText) + "...";
    }
    if (value.is_object() && value.contains("width")) {
        return value["width"].dump() + " x " + value["height"].dump();
    }
    if (value.is_object() && value.contains("size")) {
        const bool whole = value.contains("hex");
        const std::string bytes = value[whole ? "hex" : "begin"].get<std::string>();
        const std::string name = value.contains("name") ? ", \"" + value["name"].get<std::string>() + "\"" : "";
        return value["size"].dump() + " bytes" + name + (bytes.empty() ? "" : ": " + bytes) + (whole ? "" : "...");
    }
    if (value.is_array()) {
        std::string text;
        for (std::size_t i = 0; i < std::min(value.size(), ShownValues); ++i) {
            text += (i == 0 ? "" : ", ") + TextOf(value[i]);
        }
        return text + (value.size() > ShownValues ? ", ..." : "");
    }
    return value.is_null() ? "" : value.dump();
}

using Lines = std::vector<std::pair<std::string, std::string>>;

/// A line for each text of a tree, named by the way to it: "dc:subject[2]", "dc:title[x-default]", "a/b".
void ListTree(const std::string& path, const Json& value, bool isLanguages, Lines& lines) {
    if (value.is_string()) {
        lines.emplace_back(path, TextOf(value));
        return;
    }
    std::size_t number = 0;
    for (const auto& item : value.items()) {
        const bool bracket = value.is_array() || isLanguages;
        const std::string key = value.is_array() ? std::to_string(++number) : item.key();
        const std::string name = bracket ? path + "[" + key + "]" : path.empty() ? key : path + "/" + key;
        // Only languages are names without a namespace.
        const bool languages = item.value().is_object() && !item.value().empty() && !item.value().contains("value") &&
                               item.value().begin().key().find(':') == std::string::npos;
        ListTree(name, item.value(), languages, lines);
    }
}

Lines ListEntries(const Json& entries, bool withDirectory) {
    Lines lines;
    for (const Json& entry : entries) {
        const bool thumbnail = withDirectory && entry["directory"] == "thumbnail" && entry["name"] != "Thumbnail";
        lines.emplace_back((thumbnail ? "Thumbnail: " : "") + entry["name"].get<std::string>(),
                           TextOf(entry.contains("text") ? entry["text"] : entry["value"]));
    }
    return lines;
}

} // namespace

Json DescribeMetadata(const Metadata& metadata, const std::function<void(const std::string&)>& note) {
    Json all = Json::object();
    const auto add = [&](const char* name, bool exists, const auto& describe) {
        try {
            if (exists) {
                all[name] = describe();
            }
        } catch (const std::exception& exception) {
            note(std::string(name) + ": " + exception.what());
        }
    };
    add("exif", metadata.Exif != nullptr, [&] { return DescribeExif(*metadata.Exif); });
    add("iptc", metadata.Iptc != nullptr, [&] { return DescribeIptc(*metadata.Iptc); });
    add("xmp", !metadata.Xmp.empty(), [&] { return DescribeXmp(metadata.Xmp); });
    add("resources", metadata.AdobeResources != nullptr, [&] { return DescribeResources(*metadata.AdobeResources); });
    return all;
}

std::vector<MetadataSection> ListMetadata(const Json& metadata) {
    std::vector<MetadataSection> sections;
    if (metadata.contains("exif")) {
        sections.push_back({"EXIF", ListEntries(metadata["exif"], true)});
    }
    if (metadata.contains("iptc")) {
        sections.push_back({"IPTC", ListEntries(metadata["iptc"], false)});
    }
    if (metadata.contains("xmp")) {
        Lines lines;
        ListTree("", metadata["xmp"], false, lines);
        sections.push_back({"XMP", std::move(lines)});
    }
    if (metadata.contains("resources")) {
        sections.push_back({"image resources", ListEntries(metadata["resources"], false)});
    }
    return sections;
}

} // namespace Tool
