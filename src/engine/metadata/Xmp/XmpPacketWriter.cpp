#include "metadata/Xmp/XmpPacketWriter.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Xmp/XMPData.h"
#include "metadata/Xmp/XMPNamespace.h"

#include <algorithm>
#include <fmt/format.h>

namespace ImagingFramework {

namespace {

constexpr std::string_view Header = "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
                                    "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\" x:xmptk=\"Rasterloom\">\n"
                                    " <rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
                                    "  <rdf:Description rdf:about=\"\"";
constexpr std::string_view Footer = " </rdf:RDF>\n</x:xmpmeta>\n";
constexpr std::string_view Trailer = "<?xpacket end=\"w\"?>";
constexpr std::size_t DescriptionLevel = 2;
constexpr std::size_t PaddingLines = 20;
constexpr std::size_t PaddingLineLength = 100;

std::string_view ContainerName(XMPNodeType type) {
    switch (type) {
    case XMPNodeType::UnorderedArray:
        return "rdf:Bag";
    case XMPNodeType::OrderedArray:
        return "rdf:Seq";
    case XMPNodeType::AlternativeArray:
    case XMPNodeType::LocalizedText:
        return "rdf:Alt";
    default:
        throw UnexpectedException("Unknown node type");
    }
}

std::string QualifiedName(const XMPNode& node) {
    return XMPData::GetQualifiedName(node.GetNamespace(), node.GetName());
}

bool IsLanguage(const XMPNode& qualifier) {
    return &qualifier.GetNamespace() == &XMPNamespace::Xml();
}

/// Whether it has qualifiers that are elements of their own.
bool IsQualified(const XMPNode& node) {
    return std::ranges::any_of(node.GetQualifiersRef(), [](const auto& qualifier) { return !IsLanguage(*qualifier); });
}

std::string_view Entity(char c) {
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\r':
        return "&#xD;";
    case '\n':
        return "&#xA;";
    default:
        return "&#x9;";
    }
}

} // namespace

XmpPacketWriter::XmpPacketWriter(const XMPData& data)
    : m_data(data), m_known{nullptr, &XMPNamespace::Xml(), &XMPNamespace::Rdf()} {}

std::string XmpPacketWriter::Write() {
    m_strPacket = Header;
    WriteDescription();
    m_strPacket += Footer;
    for (std::size_t line = 0; line < PaddingLines; ++line) {
        m_strPacket.append(PaddingLineLength, ' ').push_back('\n');
    }
    m_strPacket += Trailer;
    return std::move(m_strPacket);
}

void XmpPacketWriter::CollectNamespaces(const XmpNodeList& nodes) {
    for (const auto& node : nodes) {
        if (m_known.insert(node->GetNamespaceOrNull()).second) {
            m_namespaces.push_back(node->GetNamespaceOrNull());
        }
        CollectNamespaces(node->GetChildrenRef());
        CollectNamespaces(node->GetQualifiersRef());
    }
}

void XmpPacketWriter::WriteDescription() {
    CollectNamespaces(m_data.GetNodesRef());
    for (const XMPNamespace* const ns : m_namespaces) {
        m_strPacket += fmt::format("\n    xmlns:{}=\"", ns->GetPrefix());
        Escape(ns->GetURI(), true);
        m_strPacket += '"';
    }
    if (m_data.GetNodeCount() == 0) {
        m_strPacket += "/>\n";
        return;
    }
    WriteFields(m_data.GetNodesRef(), "rdf:Description", DescriptionLevel);
}

void XmpPacketWriter::WriteProperty(const XMPNode& node, std::string_view elementName, std::size_t level) {
    Indent(level);
    m_strPacket.append("<").append(elementName);
    if (const std::string* const language = node.GetLanguage()) {
        m_strPacket += " xml:lang=\"";
        Escape(*language, true);
        m_strPacket += '"';
    }
    WriteContent(node, elementName, level);
}

void XmpPacketWriter::WriteContent(const XMPNode& node, std::string_view elementName, std::size_t level) {
    if (node.GetNodeType() == XMPNodeType::Structure) {
        m_strPacket += " rdf:parseType=\"Resource\"";
        WriteFields(node.GetChildrenRef(), elementName, level);
    } else if (!node.IsSimple()) {
        WriteItems(node, elementName, level);
    } else if (IsQualified(node)) {
        WriteQualifiedText(node, elementName, level);
    } else {
        WriteText(node, elementName);
    }
}

void XmpPacketWriter::WriteText(const XMPNode& node, std::string_view elementName) {
    if (node.GetValue().empty()) {
        m_strPacket += "/>\n";
        return;
    }
    m_strPacket += '>';
    Escape(node.GetValue(), false);
    End(elementName);
}

void XmpPacketWriter::WriteQualifiedText(const XMPNode& node, std::string_view elementName, std::size_t level) {
    m_strPacket += " rdf:parseType=\"Resource\">\n";
    Indent(level + 1);
    m_strPacket += "<rdf:value";
    WriteText(node, "rdf:value");
    for (const auto& qualifier : node.GetQualifiersRef()) {
        if (!IsLanguage(*qualifier)) {
            WriteProperty(*qualifier, QualifiedName(*qualifier), level + 1);
        }
    }
    Indent(level);
    End(elementName);
}

void XmpPacketWriter::WriteFields(const XmpNodeList& fields, std::string_view elementName, std::size_t level) {
    if (fields.GetCount() == 0) {
        m_strPacket += "/>\n";
        return;
    }
    m_strPacket += ">\n";
    for (const auto& field : fields) {
        WriteProperty(*field, QualifiedName(*field), level + 1);
    }
    Indent(level);
    End(elementName);
}

void XmpPacketWriter::WriteItems(const XMPNode& node, std::string_view elementName, std::size_t level) {
    const std::string_view container = ContainerName(node.GetNodeType());
    m_strPacket += ">\n";
    Indent(level + 1);
    m_strPacket.append("<").append(container);
    if (node.GetChildrenRef().GetCount() == 0) {
        m_strPacket += "/>\n";
    } else {
        m_strPacket += ">\n";
        for (const auto& item : node.GetChildrenRef()) {
            WriteProperty(*item, "rdf:li", level + 2);
        }
        Indent(level + 1);
        End(container);
    }
    Indent(level);
    End(elementName);
}

void XmpPacketWriter::End(std::string_view elementName) {
    m_strPacket.append("</").append(elementName).append(">\n");
}

void XmpPacketWriter::Escape(std::string_view text, bool inAttribute) {
    const std::string_view special = inAttribute ? "&<>\"\r\n\t" : "&<>\r";
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find_first_of(special), text.size());
        m_strPacket.append(text, 0, plain);
        text.remove_prefix(plain);
        if (!text.empty()) {
            m_strPacket += Entity(text.front());
            text.remove_prefix(1);
        }
    }
}

} // namespace ImagingFramework
