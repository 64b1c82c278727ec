#include "XmpTreeReader.h"

#include "CallEngine.h"
#include "metadata/Xmp/XMPData.h"

#include <Corvane/Rasterloom/Codecs/XmpArrayNode.h>
#include <Corvane/Rasterloom/Codecs/XmpLocalizedTextItemNode.h>
#include <Corvane/Rasterloom/Codecs/XmpLocalizedTextNode.h>
#include <Corvane/Rasterloom/Codecs/XmpStructNode.h>
#include <Corvane/Rasterloom/Codecs/XmpValueNode.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

namespace {

XmpNodeType TypeOf(const engine::XMPNode& source) {
    return static_cast<XmpNodeType>(source.GetNodeType());
}

/// A node of the class with the name of the source, or without one for an item.
template <class Node, class... Arguments>
std::shared_ptr<Node> MakeNode(const engine::XMPNode& source, Arguments&&... arguments) {
    if (source.GetNamespaceOrNull() == nullptr) {
        return std::make_shared<Node>(std::forward<Arguments>(arguments)...);
    }
    const XmpNamespace* const ns = XmpNamespace::_FromEngine(source.GetNamespaceOrNull());
    return std::make_shared<Node>(std::forward<Arguments>(arguments)..., ns, source.GetName());
}

} // namespace

std::vector<std::shared_ptr<XmpNode>> XmpTreeReader::Read(std::string_view packet) {
    return CallEngine([&] {
        const engine::XMPData data(packet);
        std::vector<std::shared_ptr<XmpNode>> nodes;
        for (const auto& source : data.GetNodesRef()) {
            nodes.push_back(CreateNode(*source));
        }
        return nodes;
    });
}

std::shared_ptr<XmpNode> XmpTreeReader::CreateNode(const engine::XMPNode& source) {
    switch (source.GetNodeType()) {
    case engine::XMPNodeType::SimpleProperty:
    case engine::XMPNodeType::Qualifier:
        return CreateValue(source);
    case engine::XMPNodeType::UnorderedArray:
    case engine::XMPNodeType::OrderedArray:
    case engine::XMPNodeType::AlternativeArray:
        return CreateArray(source);
    case engine::XMPNodeType::Structure:
        return CreateStructure(source);
    case engine::XMPNodeType::LocalizedText:
        return CreateLocalizedText(source);
    default:
        throw UnexpectedException();
    }
}

std::shared_ptr<XmpNode> XmpTreeReader::CreateValue(const engine::XMPNode& source) {
    auto node = MakeNode<XmpValueNode>(source, TypeOf(source), source.GetValue());
    for (const auto& qualifier : source.GetQualifiersRef()) {
        node->_AddNoCycle(CreateNode(*qualifier));
    }
    return node;
}

std::shared_ptr<XmpNode> XmpTreeReader::CreateArray(const engine::XMPNode& source) {
    auto node = MakeNode<XmpArrayNode>(source, TypeOf(source));
    for (const auto& item : source.GetChildrenRef()) {
        node->_AddNoCycle(CreateNode(*item));
    }
    return node;
}

std::shared_ptr<XmpNode> XmpTreeReader::CreateStructure(const engine::XMPNode& source) {
    auto node = MakeNode<XmpStructNode>(source);
    for (const auto& field : source.GetChildrenRef()) {
        node->_AddNoCycle(CreateNode(*field));
    }
    return node;
}

std::shared_ptr<XmpNode> XmpTreeReader::CreateLocalizedText(const engine::XMPNode& source) {
    auto node = MakeNode<XmpLocalizedTextNode>(source);
    for (const auto& item : source.GetChildrenRef()) {
        const std::string* const language = item->GetLanguage();
        if (language == nullptr) {
            throw UnexpectedException("Element of alt-text array has no xml:lang attribute.");
        }
        // Of two texts of one language the first stands.
        node->_AddNoCycle(std::make_shared<XmpLocalizedTextItemNode>(*language, item->GetValue()));
    }
    return node;
}

} // namespace Corvane::Rasterloom::Codecs
