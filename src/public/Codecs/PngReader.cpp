#include <Corvane/Rasterloom/Codecs/PngReader.h>

#include "CallOverStream.h"
#include "FormatCodecFields.h"
#include "ObjectGuard.h"
#include "metadata/Png/PngMetaData.h"

#include <Corvane/Rasterloom/Codecs/PngFrame.h>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

PngReader::~PngReader() { DisposeFinally(); }

std::unique_ptr<IFormatReader> PngReader::Clone() {
    auto clone = std::make_unique<PngReader>();
    clone->set_SkipCrcCheck(get_SkipCrcCheck());
    return clone;
}

bool PngReader::get_SkipCrcCheck() {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return m_bSkipCrcCheck;
}

void PngReader::set_SkipCrcCheck(bool value) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    m_bSkipCrcCheck = value;
    CallEngine([&] {
        engine::ItemTag tag(engine::MetaDataId::SkipCrcCheck);
        tag = std::int32_t{value};
        m_pCodec->m_pMetaData->SetItem(tag);
    });
}

bool PngReader::_FrameLoadInterlaced(PngFrame& frame) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    engine::ItemTag tag(engine::MetaDataId::Interlaced);
    _GetFrameItem(frame, tag);
    return CallEngine([&] { return static_cast<std::int32_t>(tag) != 0; });
}

} // namespace Corvane::Rasterloom::Codecs
