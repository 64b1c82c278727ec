#include <Corvane/Rasterloom/Codecs/PreLoadedFrame.h>

#include "FrameImpl.h"

#include <Corvane/Rasterloom/Exceptions.h>

#include <utility>

namespace Corvane::Rasterloom::Codecs {

PreLoadedFrame::PreLoadedFrame(std::unique_ptr<ImagingFramework::BitmapData> pBitmap, std::int32_t index,
                               std::string name) {
    if (!pBitmap) {
        throw Host::ArgumentNullException("pBitmap");
    }
    if (pBitmap->IsEmpty()) {
        throw BitmapEmptyException("pBitmap");
    }
    Impl& fields = get__Impl();
    fields.m_intIndex = index;
    fields.m_cells.Name.Set(std::move(name));
    fields.SetImageProperties(*pBitmap);
    fields.m_pBitmap = std::make_shared<Bitmap>(std::move(pBitmap));
}

PreLoadedFrame::~PreLoadedFrame() = default;

void PreLoadedFrame::_SetBitmap(Bitmap&) {}
void PreLoadedFrame::_SetLeft(std::int32_t) {}
void PreLoadedFrame::_SetTop(std::int32_t) {}

} // namespace Corvane::Rasterloom::Codecs
