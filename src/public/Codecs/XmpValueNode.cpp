#include <Corvane/Rasterloom/Codecs/XmpValueNode.h>

#include "ObjectGuard.h"
#include "Validator.h"

namespace Corvane::Rasterloom::Codecs {

namespace {

XmpNodeType Checked(XmpNodeType nodeType) {
    Validator::ValidateEnum("nodeType", nodeType);
    if (nodeType != XmpNodeType::SimpleProperty && nodeType != XmpNodeType::Qualifier) {
        throw Host::ArgumentException("The allowed values are SimpleProperty and Qualifier.", "nodeType");
    }
    return nodeType;
}

} // namespace

XmpValueNode::XmpValueNode(XmpNodeType nodeType, std::string value)
    : XmpDictionaryNode(Checked(nodeType)), m_strValue(std::move(value)) {}

XmpValueNode::XmpValueNode(XmpNodeType nodeType, std::string value, std::string_view name)
    : XmpDictionaryNode(Checked(nodeType), name), m_strValue(std::move(value)) {}

XmpValueNode::XmpValueNode(XmpNodeType nodeType, std::string value, const XmpNamespace* ns, std::string_view name)
    : XmpDictionaryNode(Checked(nodeType), ns, name), m_strValue(std::move(value)) {}

XmpValueNode::~XmpValueNode() = default;

std::string XmpValueNode::get_Value() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return m_strValue;
}

void XmpValueNode::set_Value(std::string value) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    m_strValue = std::move(value);
}

void XmpValueNode::CheckNode(const XmpNode& node) const {
    if (node.get_NodeType() != XmpNodeType::Qualifier) {
        throw Host::ArgumentException("The type of this node should be XmpNodeType.Qualifier.", "node");
    }
    if (node.get_Namespace() == nullptr) {
        throw Host::ArgumentException("Invalid qualified name.", "name");
    }
}

} // namespace Corvane::Rasterloom::Codecs
