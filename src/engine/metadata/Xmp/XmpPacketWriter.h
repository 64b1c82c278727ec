#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace ImagingFramework {

class XMPData;
class XMPNamespace;
class XMPNode;
class XmpNodeList;

/// Writes a tree as a packet: its wrapper, the RDF, and white space in which the packet can grow in place.
class XmpPacketWriter {
public:
    /// `data` must outlive the writer.
    explicit XmpPacketWriter(const XMPData& data);

    std::string Write();

private:
    void CollectNamespaces(const XmpNodeList& nodes);
    void WriteDescription();
    void WriteProperty(const XMPNode& node, std::string_view elementName, std::size_t level);
    /// The content of an element that has begun, and its end.
    void WriteContent(const XMPNode& node, std::string_view elementName, std::size_t level);
    void WriteText(const XMPNode& node, std::string_view elementName);
    void WriteQualifiedText(const XMPNode& node, std::string_view elementName, std::size_t level);
    void WriteFields(const XmpNodeList& fields, std::string_view elementName, std::size_t level);
    void WriteItems(const XMPNode& node, std::string_view elementName, std::size_t level);
    void Escape(std::string_view text, bool inAttribute);
    void Indent(std::size_t level) { m_strPacket.append(level, ' '); }
    void End(std::string_view elementName);

    const XMPData& m_data;
    std::string m_strPacket;
    std::vector<const XMPNamespace*> m_namespaces;   ///< those that names use, in the order of their first use
    std::unordered_set<const XMPNamespace*> m_known; ///< the same, and those that need no declaration
};

} // namespace ImagingFramework
