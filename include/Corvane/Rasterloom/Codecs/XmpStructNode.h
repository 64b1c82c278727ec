#pragma once

#include <Corvane/Rasterloom/Codecs/XmpDictionaryNode.h>

namespace Corvane::Rasterloom::Codecs {

/// A structure; its children are its fields.
class RASTERLOOM_API XmpStructNode final : public XmpDictionaryNode {
public:
    /// An item of an array.
    XmpStructNode();
    /// Named by a qualified name, which fails as `CheckName` tells.
    explicit XmpStructNode(std::string_view name);
    /// Named as `GetQualifiedName` tells.
    XmpStructNode(const XmpNamespace* ns, std::string_view name);
    ~XmpStructNode() override;

protected:
    void CheckNode(const XmpNode& node) const override;
};

} // namespace Corvane::Rasterloom::Codecs
