#pragma once

#include <Corvane/Rasterloom/Codecs/XmpNodeDictionary.h>

namespace Corvane::Rasterloom::Codecs {

/// A node whose children have names.
class RASTERLOOM_API XmpDictionaryNode : public XmpNode, public XmpNodeDictionary {
public:
    ~XmpDictionaryNode() override;

    std::int32_t get_Count() override { return XmpNodeDictionary::get_Count(); }
    using XmpNode::Dispose;
    using XmpNode::GetEnumerator;

    std::vector<std::shared_ptr<XmpNode>> _GetNodes() const override { return _GetValues(); }
    void _TakeNodes(std::vector<std::shared_ptr<XmpNode>>& nodes) override { _TakeValues(nodes); }

protected:
    /// As the constructors of `XmpNode`.
    explicit XmpDictionaryNode(XmpNodeType nodeType);
    XmpDictionaryNode(XmpNodeType nodeType, std::string_view name);
    XmpDictionaryNode(XmpNodeType nodeType, const XmpNamespace* ns, std::string_view name);

    void Dispose(bool disposing) override;
};

} // namespace Corvane::Rasterloom::Codecs
