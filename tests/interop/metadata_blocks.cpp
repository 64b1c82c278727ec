// Writes metadata blocks of what it is told on standard input, a line for each value with tabs between the fields.
// Usage: metadata_blocks iptc|resources|xmp|tables

#include "ErrorHandling/Exceptions.h"
#include "metadata/AdobeResources/AdobeResources.h"
#include "metadata/Iptc/IptcDataStorage.h"
#include "metadata/Xmp/XMPData.h"
#include "metadata/Xmp/XMPNamespace.h"

#include <functional>
#include <iostream>
#include <map>
#include <sstream>

using namespace ImagingFramework;

namespace {

using Fields = std::vector<std::string>;

std::vector<Fields> ReadLines() {
    std::vector<Fields> lines;
    for (std::string line; std::getline(std::cin, line);) {
        std::istringstream parts(line);
        Fields fields;
        for (std::string field; std::getline(parts, field, '\t');) {
            fields.push_back(field);
        }
        fields.resize(4);
        lines.push_back(fields);
    }
    return lines;
}

void Write(const std::vector<std::uint8_t>& bytes) {
    std::cout.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

std::uint32_t Number(const std::string& hex) {
    return static_cast<std::uint32_t>(std::stoul(hex, nullptr, 16));
}

/// key, text
void WriteIptc() {
    IptcDataStorage storage;
    for (Fields& fields : ReadLines()) {
        storage.AddDataset(Number(fields[0]), DataItem(&fields[1]));
    }
    std::vector<std::uint8_t> bytes;
    storage.GetIptcAsBinary(bytes);
    Write(bytes);
}

/// number, name, data in hexadecimal digits
void WriteResources() {
    AdobeResources resources;
    for (const Fields& fields : ReadLines()) {
        std::vector<std::uint8_t> data;
        for (std::size_t at = 0; at < fields[2].size(); at += 2) {
            data.push_back(static_cast<std::uint8_t>(Number(fields[2].substr(at, 2))));
        }
        resources.SetItem(Number(fields[0]), DataItem(new AdobeResourceBlock(0, fields[1], data)));
    }
    std::vector<std::uint8_t> bytes;
    resources.Save(bytes);
    Write(bytes);
}

/// A qualified name in parts.
struct Name {
    explicit Name(const std::string& qualified)
        : Namespace(*XMPNamespace::FindByPrefix(qualified.substr(0, qualified.find(':')))),
          Local(qualified.substr(qualified.find(':') + 1)) {}

    const XMPNamespace& Namespace;
    std::string Local;
};

/// kind, name, value, and for some a language or the name of a field or qualifier
void WriteXmp() {
    XMPData data;
    const auto node = [&](const Name& name, XMPNodeType type, const std::string& value = {}) -> XMPNode& {
        XMPNode* const known = data.GetNodeRef(name.Namespace, name.Local);
        return known != nullptr ? *known : data.AddNode(type, name.Namespace, name.Local, value);
    };
    using Type = XMPNodeType;
    const std::map<std::string, std::function<void(const Fields&)>> kinds = {
        {"value", [&](const Fields& f) { node(Name(f[1]), Type::SimpleProperty, f[2]); }},
        {"bag",
         [&](const Fields& f) { node(Name(f[1]), Type::UnorderedArray).CreateArrayItem(Type::SimpleProperty, f[2]); }},
        {"seq",
         [&](const Fields& f) { node(Name(f[1]), Type::OrderedArray).CreateArrayItem(Type::SimpleProperty, f[2]); }},
        {"lang", [&](const Fields& f) { node(Name(f[1]), Type::LocalizedText).CreateLocalizedText(f[3], f[2]); }},
        {"field",
         [&](const Fields& f) {
             const Name field(f[3]);
             node(Name(f[1]), Type::Structure)
                 .CreateStructField(field.Namespace, field.Local, Type::SimpleProperty, f[2]);
         }},
        {"qualifier",
         [&](const Fields& f) {
             const Name qualifier(f[3]);
             node(Name(f[1]), Type::SimpleProperty).CreateQualifier(qualifier.Namespace, qualifier.Local, f[2]);
         }},
    };
    for (const Fields& fields : ReadLines()) {
        kinds.at(fields[0])(fields);
    }
    std::cout << data.SaveToBuffer();
}

void WriteTables() {
    const IptcDataStorage iptc;
    for (std::uint32_t key = 0; key <= 0xFFFF; ++key) {
        std::string name;
        std::string text;
        std::uint32_t back = 0;
        if (iptc.KeyToName(key, name) && iptc.GetKeyDescription(key, text) && iptc.NameToKey(name, back) &&
            back == key) {
            std::cout << "iptc\t" << key << '\t' << name << '\t' << text << '\n';
        }
    }
    for (const XMPNamespace* const ns : XMPNamespace::GetRegistered()) {
        std::cout << "namespace\t" << ns->GetPrefix() << '\t' << ns->GetURI() << '\n';
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::map<std::string, void (*)()> commands = {
        {"iptc", WriteIptc}, {"resources", WriteResources}, {"xmp", WriteXmp}, {"tables", WriteTables}};
    const auto command = commands.find(argc == 2 ? argv[1] : "");
    if (command == commands.end()) {
        std::cerr << "usage: metadata_blocks iptc|resources|xmp|tables\n";
        return 2;
    }
    try {
        command->second();
    } catch (const std::exception& exception) {
        std::cerr << exception.what() << '\n';
        return 1;
    }
    return 0;
}
