#include <Corvane/Rasterloom/Codecs/XmpLocalizedTextItemNode.h>

#include "ObjectGuard.h"

#include <Corvane/Rasterloom/Host/Errors.h>

namespace Corvane::Rasterloom::Codecs {

XmpLocalizedTextItemNode::XmpLocalizedTextItemNode(std::string language, std::string value)
    : XmpNode(XmpNodeType::LocalizedTextItem), m_strValue(std::move(value)) {
    if (language.empty()) {
        throw Host::ArgumentException("The language is empty.", "language");
    }
    _SetName(std::move(language));
}

XmpLocalizedTextItemNode::~XmpLocalizedTextItemNode() = default;

std::string XmpLocalizedTextItemNode::get_Value() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return m_strValue;
}

void XmpLocalizedTextItemNode::set_Value(std::string value) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    m_strValue = std::move(value);
}

std::int32_t XmpLocalizedTextItemNode::get_Count() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return 0;
}

} // namespace Corvane::Rasterloom::Codecs
