#include <Corvane/Rasterloom/Codecs/XmpData.h>

#include "ObjectGuard.h"
#include "XmpTreeReader.h"
#include "XmpTreeWriter.h"

#include <Corvane/Rasterloom/Exceptions.h>

namespace Corvane::Rasterloom::Codecs {

namespace {

constexpr const char* ClassName = "XmpData";

std::string_view NotNull(const char* xmp) {
    if (xmp == nullptr) {
        throw Host::ArgumentNullException("xmp");
    }
    return xmp;
}

} // namespace

XmpData::XmpData() : XmpNodeDictionary(*this, nullptr, ClassName) {}

XmpData::XmpData(std::string_view xmp) : XmpData() {
    Load(xmp);
}

XmpData::XmpData(const char* xmp) : XmpData() {
    Load(xmp);
}

XmpData::~XmpData() {
    DisposeFinally();
}

void XmpData::Dispose(bool disposing) {
    _ReleaseNodes();
    LockableObject::Dispose(disposing);
}

void XmpData::CheckNode(const XmpNode& node) const {
    if (node.get_NodeType() == XmpNodeType::Qualifier) {
        throw Host::ArgumentException("Node is not allowed to be a qualifier.", "node");
    }
    if (node.get_Namespace() == nullptr) {
        throw Host::ArgumentException("All top-level nodes should belong to some namespace.", "node");
    }
    if (node.get_Name().empty()) {
        throw Host::ArgumentException("All top-level nodes should have a name.", "node");
    }
}

void XmpData::Load(const char* xmp) {
    Load(NotNull(xmp));
}

void XmpData::Load(std::string_view xmp) {
    const ObjectGuard guard(*this);
    if (get__IsDisposed()) {
        throw Host::ObjectDisposedException(ClassName);
    }
    auto nodes = XmpTreeReader::Read(xmp);
    _ReleaseNodes();
    for (auto& node : nodes) {
        _AddNoCycle(std::move(node));
    }
}

std::string XmpData::Save() {
    return XmpTreeWriter::Write(get_Values());
}

} // namespace Corvane::Rasterloom::Codecs
