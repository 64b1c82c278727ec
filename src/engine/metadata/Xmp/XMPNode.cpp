#include "metadata/Xmp/XMPNode.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Xmp/XMPNamespace.h"
#include "metadata/Xmp/XmpText.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

constexpr std::string_view DefaultLanguage = "x-default";

void Require(bool condition, std::string_view text, SourceLocation where = SourceLocation::current()) {
    if (!condition) {
        throw UnexpectedException(text, where);
    }
}

bool IsKnown(XMPNodeType type) {
    return type >= XMPNodeType::SimpleProperty && type <= XMPNodeType::LocalizedTextItem;
}

} // namespace

XMPNode::XMPNode(XMPNodeType type, const XMPNamespace* pNamespace, std::string_view name, std::string_view value)
    : m_type(type), m_pNamespace(pNamespace), m_strName(name), m_strValue(ToXmlText(value)) {
    Require(IsKnown(type), "Invalid node type");
    Require(IsSimple() || m_strValue.empty(), "Node cannot have a value");
}

bool XMPNode::IsArray() const noexcept {
    return m_type == XMPNodeType::UnorderedArray || m_type == XMPNodeType::OrderedArray ||
           m_type == XMPNodeType::AlternativeArray;
}

bool XMPNode::IsSimple() const noexcept {
    return m_type == XMPNodeType::SimpleProperty || m_type == XMPNodeType::Qualifier ||
           m_type == XMPNodeType::LocalizedTextItem;
}

// --- Reading

const XMPNamespace& XMPNode::GetNamespace() const {
    Require(m_pNamespace != nullptr, "Array items don't have namespaces");
    return *m_pNamespace;
}

const std::string& XMPNode::GetValue() const {
    Require(IsSimple(), "Only applicable to simple properties or qualifiers");
    return m_strValue;
}

const XmpNodeList& XMPNode::Qualifiers() const {
    Require(IsSimple(), "Only applicable to simple properties or qualifiers");
    return m_qualifiers;
}

const XmpNodeList& XMPNode::Items() const {
    Require(IsArray() || m_type == XMPNodeType::LocalizedText, "wrong node type");
    return m_children;
}

const XmpNodeList& XMPNode::Fields() const {
    Require(m_type == XMPNodeType::Structure, "current node is not a structure");
    return m_children;
}

const std::string* XMPNode::GetLanguage() const {
    const XMPNode* const language = m_qualifiers.Find(&XMPNamespace::Xml(), "lang");
    return language != nullptr ? &language->m_strValue : nullptr;
}

// --- Making children

void XMPNode::RequireWritableName(const XMPNamespace& ns, std::string_view name, XMPNodeType type) {
    const bool isLanguage = &ns == &XMPNamespace::Xml() && name == "lang" && type == XMPNodeType::Qualifier;
    const bool isType = &ns == &XMPNamespace::Rdf() && name == "type";
    const bool isOrdinary = &ns != &XMPNamespace::Xml() && &ns != &XMPNamespace::Rdf();
    Require(isLanguage || isType || (isOrdinary && IsXmlName(name)), "Node name is not valid");
}

XMPNode& XMPNode::CreateArrayItem(XMPNodeType type, std::string_view value) {
    Require(m_type != XMPNodeType::LocalizedText, "should use CreateLocalizedText()");
    Require(IsArray(), "wrong node type");
    return AddArrayItemNoSync(std::make_shared<XMPNode>(type, nullptr, std::string_view(), value));
}

XMPNode& XMPNode::CreateStructField(const XMPNamespace& ns, std::string_view name, XMPNodeType type,
                                    std::string_view value) {
    Require(m_type == XMPNodeType::Structure, "current node is not a structure");
    RequireWritableName(ns, name, type);
    Require(m_children.Find(&ns, name) == nullptr, "Field Already Exists");
    return AddStructFieldNoSync(std::make_shared<XMPNode>(type, &ns, name, value));
}

XMPNode& XMPNode::CreateQualifier(const XMPNamespace& ns, std::string_view name, std::string_view value) {
    Require(IsSimple(), "Qualifiers can be assigned only to simple properties or qualifiers");
    RequireWritableName(ns, name, XMPNodeType::Qualifier);
    Require(m_qualifiers.Find(&ns, name) == nullptr, "Qualifier already exists");
    const bool isLanguage = &ns == &XMPNamespace::Xml();
    const std::string text = isLanguage ? NormalizeLanguage(value) : std::string(value);
    return AddQualifierNoSync(std::make_shared<XMPNode>(XMPNodeType::Qualifier, &ns, name, text));
}

XMPNode& XMPNode::CreateLocalizedText(std::string_view language, std::string_view value) {
    Require(m_type == XMPNodeType::LocalizedText, "Node is not a localized text array");
    const std::string normalized = NormalizeLanguage(language);
    if (XMPNode* const known = m_children.Find(&XMPNamespace::Xml(), normalized)) {
        known->m_strValue = ToXmlText(value);
        return *known;
    }
    auto item = std::make_shared<XMPNode>(XMPNodeType::LocalizedTextItem, nullptr, std::string_view(), value);
    item->CreateQualifier(XMPNamespace::Xml(), "lang", normalized);
    return AddArrayItemNoSync(std::move(item));
}

void XMPNode::DeleteArrayItem(std::uint32_t uintIndex) {
    Require(IsArray() || m_type == XMPNodeType::LocalizedText, "wrong node type");
    m_children.RemoveAt(uintIndex);
}

void XMPNode::UpdateLocalizedText(XMPNode& item, std::string_view value) {
    Require(m_type == XMPNodeType::LocalizedText, "Node is not a localized text array");
    Require(item.GetLanguage() != nullptr, "NO language qualifier");
    const bool isOurs = std::ranges::any_of(m_children, [&](const auto& each) { return each.get() == &item; });
    Require(isOurs, "Did not find the node");
    item.m_strValue = ToXmlText(value);
}

// --- Taking ready nodes

XMPNode& XMPNode::AddArrayItemNoSync(std::shared_ptr<XMPNode> item) {
    const bool isText = m_type == XMPNodeType::LocalizedText;
    Require(IsArray() || isText, "method beeing called for a node of invalid type");
    Require(item->m_type != XMPNodeType::Qualifier && item->m_pNamespace == nullptr &&
                isText == (item->m_type == XMPNodeType::LocalizedTextItem),
            "Invalid child node");
    const auto isDefault = [](const XMPNode& node) {
        return node.GetLanguage() != nullptr && *node.GetLanguage() == DefaultLanguage;
    };
    if (isText && isDefault(*item) && m_children.GetCount() != 0 && !isDefault(m_children.At(0))) {
        return m_children.AddFirst(std::move(item));
    }
    return m_children.Add(std::move(item));
}

XMPNode& XMPNode::AddStructFieldNoSync(std::shared_ptr<XMPNode> field) {
    Require(m_type == XMPNodeType::Structure, "method beeing called for a node of invalid type");
    Require(field->m_type != XMPNodeType::Qualifier && field->m_type != XMPNodeType::LocalizedTextItem &&
                field->m_pNamespace != nullptr,
            "Invalid child node");
    Require(m_children.Find(field->m_pNamespace, field->m_strName) == nullptr, "field already exists");
    return m_children.Add(std::move(field));
}

XMPNode& XMPNode::AddQualifierNoSync(std::shared_ptr<XMPNode> qualifier) {
    Require(IsSimple(), "Node cannot have qualifiers");
    Require(qualifier->m_type == XMPNodeType::Qualifier, "child should be a qualifier");
    Require(m_qualifiers.Find(qualifier->m_pNamespace, qualifier->m_strName) == nullptr, "Qualifier Already exists");
    const bool isLanguage = qualifier->m_pNamespace == &XMPNamespace::Xml(); // which stands first
    return isLanguage ? m_qualifiers.AddFirst(std::move(qualifier)) : m_qualifiers.Add(std::move(qualifier));
}

} // namespace ImagingFramework
