#include "XmpTreeWriter.h"

#include "CallEngine.h"
#include "metadata/Xmp/XMPData.h"
#include "metadata/Xmp/XMPNamespace.h"
#include "metadata/Xmp/XmpPacketParser.h"

#include <Corvane/Rasterloom/Codecs/XmpLocalizedTextItemNode.h>
#include <Corvane/Rasterloom/Codecs/XmpValueNode.h>

#include <algorithm>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

namespace {

constexpr std::string_view DefaultLanguage = "x-default";
constexpr std::size_t TopLevel = 4; // behind x:xmpmeta, rdf:RDF and rdf:Description

engine::XMPNodeType TypeOf(const XmpNode& node) {
    return static_cast<engine::XMPNodeType>(node.get_NodeType());
}

bool IsArray(const XmpNode& node) {
    return node.get_NodeType() == XmpNodeType::OrderedArray || node.get_NodeType() == XmpNodeType::UnorderedArray ||
           node.get_NodeType() == XmpNodeType::AlternativeArray;
}

void CheckNotDisposed(const XmpNode& node) {
    if (node.get__IsDisposed()) {
        throw Host::ObjectDisposedException("XmpNode");
    }
}

std::string_view ValueOf(const XmpNode& node) {
    const auto* const value = dynamic_cast<const XmpValueNode*>(&node);
    return value != nullptr ? std::string_view(value->get__Value()) : std::string_view();
}

} // namespace

std::string XmpTreeWriter::Write(const std::vector<std::shared_ptr<XmpNode>>& nodes) {
    return CallEngine([&] {
        engine::XMPData data;
        for (const auto& node : nodes) {
            CheckNotDisposed(*node);
            const IFWName name = GetIFWQualifiedName(*node);
            BuildIFWSubtree(data.AddNode(TypeOf(*node), name.Namespace, name.Local, ValueOf(*node)), *node, TopLevel);
        }
        return data.SaveToBuffer();
    });
}

XmpTreeWriter::IFWName XmpTreeWriter::GetIFWQualifiedName(const XmpNode& node) {
    if (node.get_Namespace() == nullptr) {
        throw Host::ArgumentException("Node does not have a valid namespace.", "pNode");
    }
    const std::string_view name = node.get_Name();
    const std::size_t colon = name.find(':');
    if (colon == name.npos) {
        throw UnexpectedException("Qualified node name does non contain a colon symbol.");
    }
    if (colon == 0 || colon + 1 == name.size()) {
        throw UnexpectedException("Node name is not valid");
    }
    return {node.get_Namespace()->get__InternalNamespace(), name.substr(colon + 1)};
}

engine::XMPNode& XmpTreeWriter::CreateChild(engine::XMPNode& target, const XmpNode& child) {
    if (target.IsArray()) {
        return target.CreateArrayItem(TypeOf(child), ValueOf(child));
    }
    const IFWName name = GetIFWQualifiedName(child);
    if (target.GetNodeType() == engine::XMPNodeType::Structure) {
        return target.CreateStructField(name.Namespace, name.Local, TypeOf(child), ValueOf(child));
    }
    return target.CreateQualifier(name.Namespace, name.Local, ValueOf(child));
}

void XmpTreeWriter::BuildIFWSubtree(engine::XMPNode& target, const XmpNode& source, std::size_t level) {
    if (source.get_NodeType() == XmpNodeType::LocalizedText) {
        BuildIFWLocalizedTextSubtree(target, source);
        return;
    }
    const std::size_t childLevel = level + (IsArray(source) ? 2 : 1);
    for (const auto& child : source._GetNodes()) {
        CheckNotDisposed(*child);
        if (childLevel + 2 > engine::XmpPacketParser::MaxDepth) { // a localized text takes two more
            throw UnexpectedException("The nodes are nested too deeply.");
        }
        BuildIFWSubtree(CreateChild(target, *child), *child, childLevel);
    }
}

void XmpTreeWriter::BuildIFWLocalizedTextSubtree(engine::XMPNode& target, const XmpNode& source) {
    auto items = source._GetNodes();
    std::ranges::stable_partition(items, [](const auto& item) { return item->get_Name() == DefaultLanguage; });
    for (const auto& item : items) {
        CheckNotDisposed(*item);
        const auto* const text = dynamic_cast<const XmpLocalizedTextItemNode*>(item.get());
        if (text == nullptr) {
            throw UnexpectedException("Item in an alt-text array has no xml:lang qualifier.");
        }
        target.CreateLocalizedText(text->get_Name(), text->get__Value());
    }
}

} // namespace Corvane::Rasterloom::Codecs
