#include <Corvane/Rasterloom/Codecs/XmpNodeDictionary.h>

#include "ObjectGuard.h"
#include "XmpCycleDetector.h"
#include "XmpNodeTable.h"

#include <Corvane/Rasterloom/Host/Errors.h>

#include <algorithm>

namespace Corvane::Rasterloom::Codecs {

namespace {

const std::shared_ptr<XmpNode>& NotNull(const std::shared_ptr<XmpNode>& node, const char* name) {
    if (!node) {
        throw Host::ArgumentNullException(name);
    }
    return node;
}

} // namespace

XmpNodeDictionary::XmpNodeDictionary(LockableObject& object, const XmpNode* node, const char* className)
    : m_object(object), m_pNode(node), m_pClassName(className) {}

XmpNodeDictionary::~XmpNodeDictionary() {
    _ReleaseNodes();
}

template <class Body>
auto XmpNodeDictionary::Locked(Body body) {
    const ObjectGuard guard(m_object);
    if (m_object.get__IsDisposed()) {
        throw Host::ObjectDisposedException(m_pClassName);
    }
    return body();
}

// --- Bodies

XmpNodeTable& XmpNodeDictionary::Table() {
    if (!m_pContents) {
        m_pContents = std::make_unique<XmpNodeTable>();
    }
    return *m_pContents;
}

std::vector<std::shared_ptr<XmpNode>> XmpNodeDictionary::_GetValues() const {
    if (!m_pContents) {
        return {};
    }
    return {m_pContents->GetNodes().begin(), m_pContents->GetNodes().end()};
}

bool XmpNodeDictionary::_AddNoCycle(std::shared_ptr<XmpNode> node) {
    return Table().Add(std::move(node));
}

void XmpNodeDictionary::CheckCycle(const XmpNode& node) const {
    if (m_pNode != nullptr && XmpCycleDetector::DetectCycle(m_pNode, &node)) {
        throw Host::ArgumentException("Adding the node would create a cycle in the node graph.", "value");
    }
}

void XmpNodeDictionary::CheckEntry(std::string_view key, const XmpNode& node) const {
    if (node.get_Name() != key) {
        throw Host::ArgumentException("Value of 'node.Name' differs from 'name'.", "name, node");
    }
    CheckNode(node);
}

void XmpNodeDictionary::_SetItemNoCycle(std::string_view key, std::shared_ptr<XmpNode> value) {
    CheckEntry(key, *value);
    if (auto replaced = Table().Set(std::move(value))) {
        XmpNode::_Release(std::move(replaced));
    }
}

void XmpNodeDictionary::_SetItem(std::string_view key, std::shared_ptr<XmpNode> value) {
    CheckCycle(*value);
    _SetItemNoCycle(key, std::move(value));
}

void XmpNodeDictionary::_Add(std::string_view key, std::shared_ptr<XmpNode> value) {
    CheckCycle(*value);
    CheckEntry(key, *value);
    if (!_AddNoCycle(std::move(value))) {
        throw Host::ArgumentException("An element with the same key already exists in the dictionary.");
    }
}

void XmpNodeDictionary::_TakeValues(std::vector<std::shared_ptr<XmpNode>>& nodes) {
    if (m_pContents) {
        nodes.insert(nodes.end(), m_pContents->GetNodes().begin(), m_pContents->GetNodes().end());
        m_pContents.reset();
    }
}

void XmpNodeDictionary::_ReleaseNodes() noexcept {
    std::vector<std::shared_ptr<XmpNode>> nodes;
    try {
        _TakeValues(nodes);
    } catch (const std::bad_alloc&) {
        m_pContents.reset();
    }
    XmpNode::_Release(std::move(nodes));
}

// --- Members

std::shared_ptr<XmpNode> XmpNodeDictionary::get_Item(std::string_view key) {
    return Locked([&] { return m_pContents ? m_pContents->Find(key) : nullptr; });
}

void XmpNodeDictionary::set_Item(std::string_view key, std::shared_ptr<XmpNode> value) {
    NotNull(value, "value");
    Locked([&] { _SetItem(key, std::move(value)); });
}

void XmpNodeDictionary::Add(std::string_view key, std::shared_ptr<XmpNode> value) {
    NotNull(value, "value");
    Locked([&] { _Add(key, std::move(value)); });
}

void XmpNodeDictionary::AddNode(std::shared_ptr<XmpNode> node) {
    const std::string name = NotNull(node, "node")->get_Name();
    Locked([&] { _Add(name, std::move(node)); });
}

void XmpNodeDictionary::SetNode(std::shared_ptr<XmpNode> node) {
    const std::string name = NotNull(node, "node")->get_Name();
    Locked([&] { _SetItem(name, std::move(node)); });
}

std::vector<std::string> XmpNodeDictionary::get_Keys() {
    return Locked([&] {
        std::vector<std::string> keys;
        for (const auto& node : _GetValues()) {
            keys.push_back(node->get_Name());
        }
        return keys;
    });
}

std::vector<std::shared_ptr<XmpNode>> XmpNodeDictionary::get_Values() {
    return Locked([&] { return _GetValues(); });
}

std::int32_t XmpNodeDictionary::get_Count() {
    return Locked([&] { return m_pContents ? static_cast<std::int32_t>(m_pContents->GetNodes().size()) : 0; });
}

std::vector<const XmpNamespace*> XmpNodeDictionary::get_Namespaces() {
    return Locked([&] {
        std::vector<const XmpNamespace*> namespaces;
        for (const auto& node : _GetValues()) {
            const XmpNamespace* const ns = node->get_Namespace();
            if (ns != nullptr && std::ranges::find(namespaces, ns) == namespaces.end()) {
                namespaces.push_back(ns);
            }
        }
        return namespaces;
    });
}

std::vector<std::string> XmpNodeDictionary::FindKeysByNamespace(const XmpNamespace* ns) {
    if (ns == nullptr) {
        throw Host::ArgumentNullException("ns");
    }
    return Locked([&] {
        std::vector<std::string> keys;
        for (const auto& node : _GetValues()) {
            if (node->get_Namespace() == ns) {
                keys.push_back(node->get_Name());
            }
        }
        return keys;
    });
}

void XmpNodeDictionary::Clear() {
    Locked([&] { _ReleaseNodes(); });
}

bool XmpNodeDictionary::Contains(std::string_view key) {
    return Locked([&] { return m_pContents && m_pContents->Contains(key); });
}

void XmpNodeDictionary::Remove(std::string_view key) {
    Locked([&] {
        if (m_pContents) {
            if (auto removed = m_pContents->Remove(key)) {
                XmpNode::_Release(std::move(removed));
            }
        }
    });
}

void XmpNodeDictionary::CopyTo(std::span<Entry> array, std::int32_t index) {
    if (index < 0) {
        throw Host::ArgumentOutOfRangeException("index", "The index should be non-negative.");
    }
    Locked([&] {
        const auto nodes = _GetValues();
        const auto begin = static_cast<std::size_t>(index);
        if (begin > array.size() || nodes.size() > array.size() - begin) {
            throw Host::ArgumentException("The array is too small.", "array");
        }
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            array[begin + i] = {nodes[i]->get_Name(), nodes[i]};
        }
    });
}

XmpNodeEnumerator XmpNodeDictionary::GetEnumerator() {
    return XmpNodeEnumerator(get_Values());
}

} // namespace Corvane::Rasterloom::Codecs
