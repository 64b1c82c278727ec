#pragma once

#include "metadata/Xmp/XMPNodeType.h"

#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

struct XML_ParserStruct;

namespace ImagingFramework {

class XMPData;
class XMPNamespace;
class XMPNode;

/// Reads the RDF of a packet into a tree, as the XML comes: elements that describe a resource and elements that are a
/// property take turns, and a node is made when the element of its property ends.
class XmpPacketParser {
public:
    /// Of elements within elements.
    static constexpr std::size_t MaxDepth = 256;

    /// `data` must outlive the parser.
    explicit XmpPacketParser(XMPData& data) noexcept : m_data(data) {}

    /// Fails with `Exception` when the packet is no well-formed XMP, is nested too deeply or has too many elements.
    void Parse(std::string_view packet);

private:
    /// The name of an element or attribute; no namespace for a plain one.
    struct Name {
        const XMPNamespace* Namespace;
        std::string_view Local;
    };
    struct Attribute {
        Name Of;
        std::string_view Value;
    };
    enum class Element {
        Outer,       ///< around the RDF, or behind it
        Rdf,         ///< rdf:RDF itself
        Description, ///< describes a resource: its children are properties
        Container,   ///< rdf:Bag, rdf:Seq or rdf:Alt: its children are items
        Property,    ///< has a text or one description or container
        Resource,    ///< a property that is its own description
    };
    /// An element that has begun. What becomes of a property is known when it ends.
    struct Frame {
        Element Kind = Element::Outer;
        const XMPNamespace* Namespace = nullptr;
        std::string LocalName{};
        XMPNodeType Type = XMPNodeType::SimpleProperty;
        std::string Value{};
        bool IsClosed = false; ///< nothing more may stand in it
        std::vector<std::shared_ptr<XMPNode>> Children{};
        std::vector<std::shared_ptr<XMPNode>> Qualifiers{};
    };
    struct Handlers;
    struct UriHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view uri) const noexcept { return std::hash<std::string_view>()(uri); }
    };

    void StartNamespace(const char* prefix, const char* uri);
    void StartElement(const char* triplet, const char** attributes);
    void EndElement();
    void Text(std::string_view text);

    [[noreturn]] void Fail(std::string_view text) const;
    void Require(bool condition, std::string_view text) const {
        if (!condition) {
            Fail(text);
        }
    }
    Name ParseName(std::string_view triplet);
    std::vector<Attribute> ParseAttributes(const char** attributes);
    const XMPNamespace* FindNamespace(std::string_view uri, std::string_view prefix);

    void StartDescription(const std::vector<Attribute>& attributes);
    void StartValue(Name name, const std::vector<Attribute>& attributes);
    void StartProperty(Name name, const std::vector<Attribute>& attributes);
    void ReadPropertyAttributes(Frame& property, const std::vector<Attribute>& attributes) const;
    void ReadAttributesAsContent(Frame& property, const std::vector<Attribute>& attributes) const;
    void CheckAbout(std::string_view about);
    void KeepInstanceId();
    bool IsOnTopLevel() const;
    void EndProperty(Frame property);
    void ApplyValueElement(Frame& property) const;
    void PutNode(std::shared_ptr<XMPNode> node);

    XMPData& m_data;
    XML_ParserStruct* m_pParser = nullptr;
    std::exception_ptr m_failure;
    std::vector<Frame> m_frames;
    /// By URI as it stands in the packet.
    std::unordered_map<std::string, const XMPNamespace*, UriHash, std::equal_to<>> m_namespaces;
    std::string m_strAbout;
    std::size_t m_uintElements = 0;
    bool m_bHasRdf = false;
};

} // namespace ImagingFramework
