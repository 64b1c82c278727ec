#pragma once

#include <Corvane/Rasterloom/Codecs/XmpDictionaryNode.h>

namespace Corvane::Rasterloom::Codecs {

/// A text in several languages. Its children are of the class `XmpLocalizedTextItemNode`, and their keys are languages
/// ("en-US"); "x-default" is for readers of any other language.
class RASTERLOOM_API XmpLocalizedTextNode final : public XmpDictionaryNode {
public:
    /// An item of an array.
    XmpLocalizedTextNode();
    /// Named by a qualified name, which fails as `CheckName` tells.
    explicit XmpLocalizedTextNode(std::string_view name);
    /// Named as `GetQualifiedName` tells.
    XmpLocalizedTextNode(const XmpNamespace* ns, std::string_view name);
    ~XmpLocalizedTextNode() override;

protected:
    void CheckNode(const XmpNode& node) const override;
};

} // namespace Corvane::Rasterloom::Codecs
