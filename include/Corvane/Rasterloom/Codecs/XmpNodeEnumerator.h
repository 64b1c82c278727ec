#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace Corvane::Rasterloom::Codecs {

class XmpNode;

/// A cursor over the nodes that an object held when it was made, at first before the first of them.
class RASTERLOOM_API XmpNodeEnumerator {
public:
    /// Before the first of these nodes.
    explicit XmpNodeEnumerator(std::vector<std::shared_ptr<XmpNode>> nodes) noexcept;

    /// Goes to the next node; false behind the last one.
    bool MoveNext() noexcept;
    /// Back before the first node.
    void Reset() noexcept { m_uintNext = 0; }
    /// Fails with `Host::InvalidOperationException` while the cursor is on no node.
    std::shared_ptr<XmpNode> get_Current() const;

private:
    std::vector<std::shared_ptr<XmpNode>> m_nodes;
    std::size_t m_uintNext = 0; ///< one more than the place of the cursor
};

} // namespace Corvane::Rasterloom::Codecs
