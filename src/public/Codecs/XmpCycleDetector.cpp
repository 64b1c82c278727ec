#include "XmpCycleDetector.h"

#include <Corvane/Rasterloom/Codecs/XmpNode.h>

namespace Corvane::Rasterloom::Codecs {

bool XmpCycleDetector::DetectCycle(const XmpNode* receiver, const XmpNode* node) {
    return XmpCycleDetector().Meets(receiver, node);
}

bool XmpCycleDetector::Meets(const XmpNode* receiver, const XmpNode* node) {
    std::vector<const XmpNode*> waiting{node};
    while (!waiting.empty()) {
        const XmpNode* const next = waiting.back();
        waiting.pop_back();
        if (next == receiver) {
            return true;
        }
        // A localized text has nothing below its items.
        if (next->get_NodeType() == XmpNodeType::LocalizedText || !m_pVisitedNodes.insert(next).second) {
            continue;
        }
        for (const auto& child : next->_GetNodes()) {
            waiting.push_back(child.get());
        }
    }
    return false;
}

} // namespace Corvane::Rasterloom::Codecs
