#include <Corvane/Rasterloom/Codecs/XmpDictionaryNode.h>

namespace Corvane::Rasterloom::Codecs {

namespace {

constexpr const char* ClassName = "XmpNode";

} // namespace

XmpDictionaryNode::XmpDictionaryNode(XmpNodeType nodeType)
    : XmpNode(nodeType), XmpNodeDictionary(*this, this, ClassName) {}

XmpDictionaryNode::XmpDictionaryNode(XmpNodeType nodeType, std::string_view name)
    : XmpNode(nodeType, name), XmpNodeDictionary(*this, this, ClassName) {}

XmpDictionaryNode::XmpDictionaryNode(XmpNodeType nodeType, const XmpNamespace* ns, std::string_view name)
    : XmpNode(nodeType, ns, name), XmpNodeDictionary(*this, this, ClassName) {}

XmpDictionaryNode::~XmpDictionaryNode() {
    DisposeFinally();
}

void XmpDictionaryNode::Dispose(bool disposing) {
    _ReleaseNodes();
    XmpNode::Dispose(disposing);
}

} // namespace Corvane::Rasterloom::Codecs
