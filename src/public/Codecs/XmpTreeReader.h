#pragma once

#include <memory>
#include <string_view>
#include <vector>

namespace ImagingFramework {
class XMPNode;
} // namespace ImagingFramework

namespace Corvane::Rasterloom::Codecs {

class XmpNode;

/// Makes public nodes of the engine's tree of a packet.
class XmpTreeReader {
public:
    /// The top-level nodes.
    static std::vector<std::shared_ptr<XmpNode>> Read(std::string_view packet);

private:
    static std::shared_ptr<XmpNode> CreateNode(const ImagingFramework::XMPNode& source);
    static std::shared_ptr<XmpNode> CreateValue(const ImagingFramework::XMPNode& source);
    static std::shared_ptr<XmpNode> CreateArray(const ImagingFramework::XMPNode& source);
    static std::shared_ptr<XmpNode> CreateStructure(const ImagingFramework::XMPNode& source);
    static std::shared_ptr<XmpNode> CreateLocalizedText(const ImagingFramework::XMPNode& source);
};

} // namespace Corvane::Rasterloom::Codecs
