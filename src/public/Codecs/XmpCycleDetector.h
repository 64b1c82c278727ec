#pragma once

#include <unordered_set>

namespace Corvane::Rasterloom::Codecs {

class XmpNode;

/// Searches a tree of nodes, which may be a graph because nodes are shared, for a node.
class XmpCycleDetector {
public:
    /// Whether `receiver` is `node` or lies in it, so that putting `node` into `receiver` would make a cycle.
    static bool DetectCycle(const XmpNode* receiver, const XmpNode* node);

private:
    bool Meets(const XmpNode* receiver, const XmpNode* node);

    std::unordered_set<const XmpNode*> m_pVisitedNodes;
};

} // namespace Corvane::Rasterloom::Codecs
