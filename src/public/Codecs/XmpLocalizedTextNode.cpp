#include <Corvane/Rasterloom/Codecs/XmpLocalizedTextNode.h>

#include <Corvane/Rasterloom/Host/Errors.h>

namespace Corvane::Rasterloom::Codecs {

XmpLocalizedTextNode::XmpLocalizedTextNode() : XmpDictionaryNode(XmpNodeType::LocalizedText) {}

XmpLocalizedTextNode::XmpLocalizedTextNode(std::string_view name)
    : XmpDictionaryNode(XmpNodeType::LocalizedText, name) {}

XmpLocalizedTextNode::XmpLocalizedTextNode(const XmpNamespace* ns, std::string_view name)
    : XmpDictionaryNode(XmpNodeType::LocalizedText, ns, name) {}

XmpLocalizedTextNode::~XmpLocalizedTextNode() = default;

void XmpLocalizedTextNode::CheckNode(const XmpNode& node) const {
    if (node.get_NodeType() != XmpNodeType::LocalizedTextItem) {
        throw Host::ArgumentException("The type of this node should be XmpNodeType.LocalizedTextItem.", "node");
    }
}

} // namespace Corvane::Rasterloom::Codecs
