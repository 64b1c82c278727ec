#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ImagingFramework {
class XMPNamespace;
class XMPNode;
} // namespace ImagingFramework

namespace Corvane::Rasterloom::Codecs {

class XmpNode;

/// Makes the engine's tree of public nodes, and the packet of that.
class XmpTreeWriter {
public:
    /// The packet of these top-level nodes.
    static std::string Write(const std::vector<std::shared_ptr<XmpNode>>& nodes);

private:
    /// A name as the engine takes it.
    struct IFWName {
        const ImagingFramework::XMPNamespace& Namespace;
        std::string_view Local;
    };

    static IFWName GetIFWQualifiedName(const XmpNode& node);
    /// The children of `source` become children of `target`, which lies `level` elements deep in the packet.
    static void BuildIFWSubtree(ImagingFramework::XMPNode& target, const XmpNode& source, std::size_t level);
    static void BuildIFWLocalizedTextSubtree(ImagingFramework::XMPNode& target, const XmpNode& source);
    static ImagingFramework::XMPNode& CreateChild(ImagingFramework::XMPNode& target, const XmpNode& child);
};

} // namespace Corvane::Rasterloom::Codecs
