#pragma once

#include <Corvane/Rasterloom/Codecs/XmpNode.h>

namespace Corvane::Rasterloom::Codecs {

/// A text in one language, which is its name.
class RASTERLOOM_API XmpLocalizedTextItemNode final : public XmpNode {
public:
    /// An empty language fails with `Host::ArgumentException` ("language").
    XmpLocalizedTextItemNode(std::string language, std::string value);
    ~XmpLocalizedTextItemNode() override;

    /// The text, UTF-8.
    std::string get_Value();
    /// UTF-8. Control characters are saved as spaces.
    void set_Value(std::string value);
    const std::string& get__Value() const noexcept { return m_strValue; }
    /// 0: it holds no nodes.
    std::int32_t get_Count() override;

    std::vector<std::shared_ptr<XmpNode>> _GetNodes() const override { return {}; }
    void _TakeNodes(std::vector<std::shared_ptr<XmpNode>>&) override {}

private:
    std::string m_strValue;
};

} // namespace Corvane::Rasterloom::Codecs
