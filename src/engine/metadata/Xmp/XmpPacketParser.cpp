#include "metadata/Xmp/XmpPacketParser.h"

#include "Common/Utf8.h"
#include "ErrorHandling/Exceptions.h"
#include "metadata/Xmp/RdfVocabulary.h"
#include "metadata/Xmp/XMPData.h"
#include "metadata/Xmp/XMPNamespace.h"
#include "metadata/Xmp/XmpText.h"

#include <algorithm>
#include <expat.h>
#include <fmt/format.h>

namespace ImagingFramework {

namespace {

constexpr char Separator = '\n';             // no URI has one, and the XML parser sees to it
constexpr std::size_t MaxElements = 1000000; // with attributes
constexpr std::size_t PieceSize = std::size_t{1} << 26;
constexpr std::string_view WhiteSpace = " \t\r\n";

bool IsWhiteSpace(std::string_view text) {
    return text.find_first_not_of(WhiteSpace) == text.npos;
}

/// Packets in files are followed, and in files of some writers preceded, by white space and zeros.
std::string_view Trimmed(std::string_view packet) {
    constexpr std::string_view padding(" \t\r\n\0", 5);
    const std::size_t first = packet.find_first_not_of(padding);
    if (first == packet.npos) {
        return {};
    }
    return packet.substr(first, packet.find_last_not_of(padding) - first + 1);
}

bool IsXmlNamespace(const XMPNamespace* ns) {
    return ns == &XMPNamespace::Xml();
}
bool IsRdfNamespace(const XMPNamespace* ns) {
    return ns == &XMPNamespace::Rdf();
}

std::shared_ptr<XMPNode> MakeNode(XMPNodeType type, const XMPNamespace* ns, std::string_view name,
                                  std::string_view value, const XmpNodeList& qualifiers = {}) {
    auto node = std::make_shared<XMPNode>(type, ns, name, value);
    for (const auto& qualifier : qualifiers) {
        node->AddQualifierNoSync(qualifier);
    }
    return node;
}

/// A simple node with another place in the tree.
std::shared_ptr<XMPNode> MakeAgain(const XMPNode& node, XMPNodeType type) {
    return MakeNode(type, node.GetNamespaceOrNull(), node.GetName(), node.GetValue(), node.GetQualifiersRef());
}

/// Alternatives that all have a language are a localized text.
bool AreLocalizedTexts(const std::vector<std::shared_ptr<XMPNode>>& items) {
    return !items.empty() &&
           std::ranges::all_of(items, [](const auto& item) { return item->GetLanguage() != nullptr; });
}

} // namespace

/// What the XML parser calls. No failure crosses it: the first one is kept, and the parser stopped.
struct XmpPacketParser::Handlers {
    template <class Body>
    static void Run(void* pUserData, Body body) noexcept {
        auto& self = *static_cast<XmpPacketParser*>(pUserData);
        if (self.m_failure) {
            return;
        }
        try {
            body(self);
        } catch (...) {
            self.m_failure = std::current_exception();
            XML_StopParser(self.m_pParser, XML_FALSE);
        }
    }
    static void XMLCALL StartElement(void* pUserData, const char* name, const char** attributes) noexcept {
        Run(pUserData, [&](XmpPacketParser& self) { self.StartElement(name, attributes); });
    }
    static void XMLCALL EndElement(void* pUserData, const char*) noexcept {
        Run(pUserData, [](XmpPacketParser& self) { self.EndElement(); });
    }
    static void XMLCALL Text(void* pUserData, const char* text, int size) noexcept {
        Run(pUserData, [&](XmpPacketParser& self) { self.Text({text, static_cast<std::size_t>(size)}); });
    }
    static void XMLCALL StartNamespace(void* pUserData, const char* prefix, const char* uri) noexcept {
        Run(pUserData, [&](XmpPacketParser& self) { self.StartNamespace(prefix, uri); });
    }
    static void XMLCALL StartDocumentType(void* pUserData, const char*, const char*, const char*, int) noexcept {
        Run(pUserData, [](XmpPacketParser& self) { self.Fail("a document type is not allowed"); });
    }
};

void XmpPacketParser::Parse(std::string_view packet) {
    packet = Trimmed(packet);
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreateNS("UTF-8", Separator),
                                                                              XML_ParserFree);
    if (!parser) {
        throw MemoryException();
    }
    m_pParser = parser.get();
    XML_SetUserData(m_pParser, this);
    XML_SetReturnNSTriplet(m_pParser, XML_TRUE);
    XML_SetElementHandler(m_pParser, Handlers::StartElement, Handlers::EndElement);
    XML_SetCharacterDataHandler(m_pParser, Handlers::Text);
    XML_SetStartNamespaceDeclHandler(m_pParser, Handlers::StartNamespace);
    XML_SetStartDoctypeDeclHandler(m_pParser, Handlers::StartDocumentType);
    while (!packet.empty()) {
        const std::string_view piece = packet.substr(0, PieceSize);
        packet.remove_prefix(piece.size());
        if (XML_Parse(m_pParser, piece.data(), static_cast<int>(piece.size()), packet.empty()) == XML_STATUS_ERROR) {
            if (m_failure) {
                std::rethrow_exception(m_failure);
            }
            if (!IsUtf8(piece)) {
                throw UnexpectedException("Experienced problems while converting text to UTF8");
            }
            Fail(XML_ErrorString(XML_GetErrorCode(m_pParser)));
        }
    }
    KeepInstanceId();
}

void XmpPacketParser::Fail(std::string_view text) const {
    throw Exception(fmt::format("The XMP packet is not valid: {} (line {}, column {}).", text,
                                XML_GetCurrentLineNumber(m_pParser), XML_GetCurrentColumnNumber(m_pParser) + 1));
}

// --- Names

const XMPNamespace* XmpPacketParser::FindNamespace(std::string_view uri, std::string_view prefix) {
    if (const auto known = m_namespaces.find(uri); known != m_namespaces.end()) {
        return known->second;
    }
    const XMPNamespace& ns = XMPNamespace::Register(CurrentUri(uri), prefix);
    m_data.AddNamespace(ns);
    m_namespaces.emplace(uri, &ns);
    return &ns;
}

void XmpPacketParser::StartNamespace(const char* prefix, const char* uri) {
    if (uri != nullptr) {
        FindNamespace(uri, prefix != nullptr ? prefix : "");
    }
}

XmpPacketParser::Name XmpPacketParser::ParseName(std::string_view triplet) {
    const std::size_t endOfUri = triplet.find(Separator);
    if (endOfUri == triplet.npos) {
        return {nullptr, triplet};
    }
    const std::string_view rest = triplet.substr(endOfUri + 1);
    const std::size_t endOfLocal = std::min(rest.find(Separator), rest.size());
    const std::string_view prefix = rest.substr(std::min(endOfLocal + 1, rest.size()));
    return {FindNamespace(triplet.substr(0, endOfUri), prefix), rest.substr(0, endOfLocal)};
}

/// Without those of XML that say nothing about a property.
std::vector<XmpPacketParser::Attribute> XmpPacketParser::ParseAttributes(const char** attributes) {
    std::vector<Attribute> parsed;
    for (; *attributes != nullptr; attributes += 2) {
        ++m_uintElements;
        Attribute attribute{ParseName(attributes[0]), attributes[1]};
        if (attribute.Of.Namespace == nullptr) {
            Require(IsOldAttribute(attribute.Of.Local), "an attribute needs a namespace");
            attribute.Of.Namespace = &XMPNamespace::Rdf();
        }
        if (!IsXmlNamespace(attribute.Of.Namespace) || attribute.Of.Local == "lang") {
            parsed.push_back(attribute);
        }
    }
    return parsed;
}

// --- Elements

void XmpPacketParser::StartElement(const char* triplet, const char** attributes) {
    Require(m_frames.size() < MaxDepth, "it is nested too deeply");
    Require(++m_uintElements <= MaxElements, "it has too many elements");
    const Name name = ParseName(triplet);
    const Element parent = m_frames.empty() ? Element::Outer : m_frames.back().Kind;
    if (parent == Element::Outer) {
        const bool isRdf = !m_bHasRdf && IsRdfNamespace(name.Namespace) && name.Local == "RDF";
        m_bHasRdf = m_bHasRdf || isRdf;
        m_frames.push_back({.Kind = isRdf ? Element::Rdf : Element::Outer});
        return;
    }
    Require(name.Namespace != nullptr && !IsXmlNamespace(name.Namespace), "an element needs a namespace");
    const std::vector<Attribute> parsed = ParseAttributes(attributes);
    switch (parent) {
    case Element::Rdf:
        Require(IsRdfNamespace(name.Namespace) && name.Local == "Description",
                "only rdf:Description may stand on the top level");
        StartDescription(parsed);
        break;
    case Element::Property:
        StartValue(name, parsed);
        break;
    default:
        StartProperty(name, parsed);
        break;
    }
}

bool XmpPacketParser::IsOnTopLevel() const {
    return m_frames.back().Kind == Element::Description && m_frames[m_frames.size() - 2].Kind == Element::Rdf;
}

void XmpPacketParser::CheckAbout(std::string_view about) {
    Require(about.empty() || m_strAbout.empty() || m_strAbout == about, "it describes more than one resource");
    if (!about.empty()) {
        m_strAbout = about;
    }
}

/// Packets of old writers identify the image by what they describe; written packets describe nothing in particular.
void XmpPacketParser::KeepInstanceId() {
    const XMPNamespace& ns = XMPNamespace::Register("http://ns.adobe.com/xap/1.0/mm/", "xmpMM");
    if (m_strAbout.starts_with("uuid:") && m_data.GetNodeRef(ns, "InstanceID") == nullptr) {
        m_data.AddNode(XMPNodeType::SimpleProperty, ns, "InstanceID", m_strAbout);
    }
}

void XmpPacketParser::StartDescription(const std::vector<Attribute>& attributes) {
    m_frames.push_back({.Kind = Element::Description});
    for (const auto& [name, value] : attributes) {
        if (IsXmlNamespace(name.Namespace)) {
            continue;
        }
        if (IsRdfNamespace(name.Namespace) && !IsRdfProperty(name.Local)) {
            Require(name.Local == "about" || name.Local == "ID" || name.Local == "nodeID",
                    "an attribute of RDF is out of place");
            if (name.Local == "about" && IsOnTopLevel()) {
                CheckAbout(value);
            }
            continue;
        }
        PutNode(MakeNode(XMPNodeType::SimpleProperty, name.Namespace, name.Local, value));
    }
}

/// An element in a property: the container or the description that is its value.
void XmpPacketParser::StartValue(Name name, const std::vector<Attribute>& attributes) {
    Frame& property = m_frames.back();
    Require(!property.IsClosed && IsWhiteSpace(property.Value), "a property has more than one value");
    property.IsClosed = true;
    property.Value.clear();
    property.Type = XMPNodeType::Structure;
    if (!IsRdfNamespace(name.Namespace)) {
        // The element is named after the type of the structure.
        property.Qualifiers.push_back(MakeNode(XMPNodeType::Qualifier, &XMPNamespace::Rdf(), "type",
                                               name.Namespace->GetURI() + std::string(name.Local)));
    } else if (const auto container = ContainerType(name.Local)) {
        property.Type = *container;
        m_frames.push_back({.Kind = Element::Container});
        return;
    } else {
        Require(name.Local == "Description", "an element of RDF is out of place");
    }
    StartDescription(attributes);
}

void XmpPacketParser::StartProperty(Name name, const std::vector<Attribute>& attributes) {
    Frame property{.Kind = Element::Property};
    if (m_frames.back().Kind == Element::Container) {
        Require(IsRdfNamespace(name.Namespace) && IsItemName(name.Local), "an array has other elements than items");
    } else {
        Require(!IsRdfNamespace(name.Namespace) || IsRdfProperty(name.Local), "an element of RDF is out of place");
        property.Namespace = name.Namespace;
        property.LocalName = name.Local;
    }
    ReadPropertyAttributes(property, attributes);
    m_frames.push_back(std::move(property));
}

void XmpPacketParser::ReadPropertyAttributes(Frame& property, const std::vector<Attribute>& attributes) const {
    std::vector<Attribute> content;
    bool isResource = false;
    for (const Attribute& attribute : attributes) {
        const auto& [name, value] = attribute;
        if (IsXmlNamespace(name.Namespace)) {
            property.Qualifiers.push_back(
                MakeNode(XMPNodeType::Qualifier, name.Namespace, name.Local, NormalizeLanguage(value)));
        } else if (!IsRdfNamespace(name.Namespace) || IsRdfProperty(name.Local) || name.Local == "resource") {
            content.push_back(attribute);
        } else if (name.Local == "parseType") {
            Require(value == "Resource", "only the parse type Resource is allowed");
            isResource = true;
        } else {
            Require(name.Local == "ID" || name.Local == "nodeID" || name.Local == "datatype",
                    "an attribute of RDF is out of place");
        }
    }
    Require(!isResource || content.empty(), "a resource has attributes");
    if (isResource) {
        property.Kind = Element::Resource;
        property.Type = XMPNodeType::Structure;
    } else if (!content.empty()) {
        ReadAttributesAsContent(property, content);
    }
}

/// An element that has no content but its attributes: a value with qualifiers, or the fields of a structure.
void XmpPacketParser::ReadAttributesAsContent(Frame& property, const std::vector<Attribute>& attributes) const {
    const auto isValue = [](const Attribute& attribute) {
        return IsRdfNamespace(attribute.Of.Namespace) && attribute.Of.Local != "type";
    };
    const auto values = std::ranges::count_if(attributes, isValue);
    Require(values <= 1, "a property has more than one value");
    property.IsClosed = true;
    property.Type = values == 1 ? XMPNodeType::SimpleProperty : XMPNodeType::Structure;
    for (const Attribute& attribute : attributes) {
        const auto& [name, value] = attribute;
        if (isValue(attribute)) {
            property.Value = value;
        } else if (values == 1) {
            property.Qualifiers.push_back(MakeNode(XMPNodeType::Qualifier, name.Namespace, name.Local, value));
        } else {
            property.Children.push_back(MakeNode(XMPNodeType::SimpleProperty, name.Namespace, name.Local, value));
        }
    }
}

void XmpPacketParser::Text(std::string_view text) {
    if (m_frames.empty() || m_frames.back().Kind == Element::Outer) {
        return;
    }
    Frame& frame = m_frames.back();
    if (frame.Kind == Element::Property && !frame.IsClosed) {
        frame.Value += text;
        return;
    }
    Require(IsWhiteSpace(text), "a text is out of place");
}

void XmpPacketParser::EndElement() {
    Frame frame = std::move(m_frames.back());
    m_frames.pop_back();
    if (frame.Kind == Element::Property || frame.Kind == Element::Resource) {
        EndProperty(std::move(frame));
    }
}

// --- Nodes

/// A field rdf:value makes a structure a value, and the other fields qualifiers of it. Only simple values can have
/// qualifiers, and those are simple themselves; others are dropped.
void XmpPacketParser::ApplyValueElement(Frame& property) const {
    const auto isValue = [](const auto& node) {
        return IsRdfNamespace(node->GetNamespaceOrNull()) && node->GetName() == "value";
    };
    const auto found = std::ranges::find_if(property.Children, isValue);
    if (found == property.Children.end()) {
        return;
    }
    Require(std::ranges::count_if(property.Children, isValue) == 1, "a property has more than one value");
    const std::shared_ptr<XMPNode> value = *found;
    property.Children.erase(found);
    for (const auto& field : property.Children) {
        if (field->IsSimple()) {
            property.Qualifiers.push_back(MakeAgain(*field, XMPNodeType::Qualifier));
        }
    }
    property.Type = value->GetNodeType();
    property.Children.assign(value->GetChildrenRef().begin(), value->GetChildrenRef().end());
    if (value->IsSimple()) {
        property.Value = value->GetValue();
        property.Qualifiers.insert(property.Qualifiers.end(), value->GetQualifiersRef().begin(),
                                   value->GetQualifiersRef().end());
    }
}

void XmpPacketParser::EndProperty(Frame property) {
    if (property.Type == XMPNodeType::Structure) {
        ApplyValueElement(property);
    }
    if (property.Type == XMPNodeType::AlternativeArray && AreLocalizedTexts(property.Children)) {
        property.Type = XMPNodeType::LocalizedText;
        for (auto& item : property.Children) {
            item = MakeAgain(*item, XMPNodeType::LocalizedTextItem);
        }
    }
    auto node = MakeNode(property.Type, property.Namespace, property.LocalName, property.Value);
    const bool isStructure = property.Type == XMPNodeType::Structure;
    for (auto& child : property.Children) {
        isStructure ? node->AddStructFieldNoSync(std::move(child)) : node->AddArrayItemNoSync(std::move(child));
    }
    for (auto& qualifier : property.Qualifiers) {
        if (node->IsSimple()) {
            node->AddQualifierNoSync(std::move(qualifier));
        }
    }
    PutNode(std::move(node));
}

/// Into the description or the container that has begun last.
void XmpPacketParser::PutNode(std::shared_ptr<XMPNode> node) {
    if (IsOnTopLevel()) {
        Require(!IsRdfNamespace(node->GetNamespaceOrNull()) || node->GetName() != "value", "rdf:value is out of place");
        m_data.AddNodeNoSync(std::move(node));
        return;
    }
    const bool isOwnDescription = m_frames.back().Kind == Element::Resource;
    m_frames[m_frames.size() - (isOwnDescription ? 1 : 2)].Children.push_back(std::move(node));
}

} // namespace ImagingFramework
