#include <Corvane/Rasterloom/Codecs/XmpArrayNode.h>

#include "ObjectGuard.h"
#include "Validator.h"
#include "XmpCycleDetector.h"

#include <algorithm>

namespace Corvane::Rasterloom::Codecs {

namespace {

XmpNodeType Checked(XmpNodeType nodeType) {
    Validator::ValidateEnum("nodeType", nodeType);
    if (nodeType != XmpNodeType::OrderedArray && nodeType != XmpNodeType::UnorderedArray &&
        nodeType != XmpNodeType::AlternativeArray) {
        throw Host::ArgumentException("Must be either OrderedArray, UnorderedArray or AlternativeArray.", "nodeType");
    }
    return nodeType;
}

} // namespace

XmpArrayNode::XmpArrayNode(XmpNodeType nodeType) : XmpNode(Checked(nodeType)) {}

XmpArrayNode::XmpArrayNode(XmpNodeType nodeType, std::string_view name) : XmpNode(Checked(nodeType), name) {}

XmpArrayNode::XmpArrayNode(XmpNodeType nodeType, const XmpNamespace* ns, std::string_view name)
    : XmpNode(Checked(nodeType), ns, name) {}

XmpArrayNode::~XmpArrayNode() {
    DisposeFinally();
}

void XmpArrayNode::Dispose(bool disposing) {
    _Release(std::move(m_pContents));
    m_pContents.clear();
    XmpNode::Dispose(disposing);
}

template <class Body>
auto XmpArrayNode::Locked(Body body) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return body();
}

// --- Bodies

void XmpArrayNode::CheckItem(const XmpNode* value) const {
    if (value == nullptr) {
        throw Host::ArgumentNullException("value");
    }
    if (XmpCycleDetector::DetectCycle(this, value)) {
        throw Host::ArgumentException("Adding the node would create a cycle in the node graph.", "value");
    }
    if (value->get_NodeType() == XmpNodeType::Qualifier) {
        throw Host::ArgumentException("Node is not allowed to be a qualifier.", "value");
    }
    if (value->get_Namespace() != nullptr || !value->get_Name().empty()) {
        throw Host::ArgumentException("Array items shouldn't have any name or namespace.", "value");
    }
}

std::size_t XmpArrayNode::CheckIndex(std::int32_t index, std::size_t end) const {
    if (index < 0 || static_cast<std::size_t>(index) >= end) {
        throw Host::ArgumentOutOfRangeException("index");
    }
    return static_cast<std::size_t>(index);
}

std::int32_t XmpArrayNode::_IndexOf(const XmpNode* value) const {
    const auto found = std::ranges::find(m_pContents, value, [](const auto& node) { return node.get(); });
    return found != m_pContents.end() ? static_cast<std::int32_t>(found - m_pContents.begin()) : -1;
}

void XmpArrayNode::_TakeNodes(std::vector<std::shared_ptr<XmpNode>>& nodes) {
    nodes.insert(nodes.end(), m_pContents.begin(), m_pContents.end());
    m_pContents.clear();
}

// --- Members

std::int32_t XmpArrayNode::get_Count() {
    return Locked([&] { return static_cast<std::int32_t>(m_pContents.size()); });
}

std::shared_ptr<XmpNode> XmpArrayNode::get_Item(std::int32_t index) {
    return Locked([&] { return m_pContents[CheckIndex(index, m_pContents.size())]; });
}

void XmpArrayNode::set_Item(std::int32_t index, std::shared_ptr<XmpNode> value) {
    Locked([&] {
        const std::size_t place = CheckIndex(index, m_pContents.size());
        CheckItem(value.get());
        std::swap(m_pContents[place], value);
        _Release(std::move(value));
    });
}

std::int32_t XmpArrayNode::Add(std::shared_ptr<XmpNode> value) {
    return Locked([&] {
        CheckItem(value.get());
        m_pContents.push_back(std::move(value));
        return static_cast<std::int32_t>(m_pContents.size() - 1);
    });
}

void XmpArrayNode::Clear() {
    Locked([&] {
        _Release(std::move(m_pContents));
        m_pContents.clear();
    });
}

bool XmpArrayNode::Contains(const XmpNode* value) {
    return IndexOf(value) >= 0;
}

std::int32_t XmpArrayNode::IndexOf(const XmpNode* value) {
    return Locked([&] { return _IndexOf(value); });
}

void XmpArrayNode::Insert(std::int32_t index, std::shared_ptr<XmpNode> value) {
    Locked([&] {
        const std::size_t place = CheckIndex(index, m_pContents.size() + 1);
        CheckItem(value.get());
        m_pContents.insert(m_pContents.begin() + static_cast<std::ptrdiff_t>(place), std::move(value));
    });
}

void XmpArrayNode::Remove(const XmpNode* value) {
    Locked([&] {
        if (const std::int32_t place = _IndexOf(value); place >= 0) {
            std::shared_ptr<XmpNode> removed = std::move(m_pContents[static_cast<std::size_t>(place)]);
            m_pContents.erase(m_pContents.begin() + place);
            _Release(std::move(removed));
        }
    });
}

void XmpArrayNode::RemoveAt(std::int32_t index) {
    Locked([&] {
        std::shared_ptr<XmpNode> removed = std::move(m_pContents[CheckIndex(index, m_pContents.size())]);
        m_pContents.erase(m_pContents.begin() + index);
        _Release(std::move(removed));
    });
}

void XmpArrayNode::CopyTo(std::span<std::shared_ptr<XmpNode>> array, std::int32_t index) {
    if (index < 0) {
        throw Host::ArgumentOutOfRangeException("index", "The index should be non-negative.");
    }
    Locked([&] {
        const auto begin = static_cast<std::size_t>(index);
        if (begin > array.size() || m_pContents.size() > array.size() - begin) {
            throw Host::ArgumentException("The array is too small.", "array");
        }
        std::ranges::copy(m_pContents, array.begin() + static_cast<std::ptrdiff_t>(begin));
    });
}

} // namespace Corvane::Rasterloom::Codecs
