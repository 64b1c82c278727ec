#pragma once

#include <Corvane/Rasterloom/Codecs/XmpDictionaryNode.h>

namespace Corvane::Rasterloom::Codecs {

/// A text: a simple property or a qualifier. Its children are qualifiers, which say something about the value.
class RASTERLOOM_API XmpValueNode final : public XmpDictionaryNode {
public:
    /// An item of an array. The type is `SimpleProperty` or `Qualifier`; others fail with `Host::ArgumentException`
    /// ("nodeType").
    XmpValueNode(XmpNodeType nodeType, std::string value);
    /// Named by a qualified name, which fails as `CheckName` tells.
    XmpValueNode(XmpNodeType nodeType, std::string value, std::string_view name);
    /// Named as `GetQualifiedName` tells.
    XmpValueNode(XmpNodeType nodeType, std::string value, const XmpNamespace* ns, std::string_view name);
    ~XmpValueNode() override;

    /// The text, UTF-8.
    std::string get_Value();
    /// UTF-8. Control characters are saved as spaces.
    void set_Value(std::string value);
    const std::string& get__Value() const noexcept { return m_strValue; }

protected:
    void CheckNode(const XmpNode& node) const override;

private:
    std::string m_strValue;
};

} // namespace Corvane::Rasterloom::Codecs
