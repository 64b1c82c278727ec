#include <Corvane/Rasterloom/Codecs/XmpStructNode.h>

#include <Corvane/Rasterloom/Host/Errors.h>

namespace Corvane::Rasterloom::Codecs {

XmpStructNode::XmpStructNode() : XmpDictionaryNode(XmpNodeType::Structure) {}

XmpStructNode::XmpStructNode(std::string_view name) : XmpDictionaryNode(XmpNodeType::Structure, name) {}

XmpStructNode::XmpStructNode(const XmpNamespace* ns, std::string_view name)
    : XmpDictionaryNode(XmpNodeType::Structure, ns, name) {}

XmpStructNode::~XmpStructNode() = default;

void XmpStructNode::CheckNode(const XmpNode& node) const {
    if (node.get_NodeType() == XmpNodeType::Qualifier) {
        throw Host::ArgumentException("Node is not allowed to be a qualifier.", "node");
    }
    if (node.get_Namespace() == nullptr) {
        throw Host::ArgumentException("Invalid qualified name.", "name");
    }
}

} // namespace Corvane::Rasterloom::Codecs
