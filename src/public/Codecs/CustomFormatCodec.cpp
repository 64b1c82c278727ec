#include <Corvane/Rasterloom/Codecs/CustomFormatCodec.h>

#include "metadata/MetaData.h"

namespace Corvane::Rasterloom::Codecs {

template <class Base>
CustomFormatCodec<Base>::CustomFormatCodec(std::int64_t mediaFormat) : Base(mediaFormat, nullptr) {}

template <class Base>
CustomFormatCodec<Base>::~CustomFormatCodec() = default;

template class CustomFormatCodec<FormatReader>;
template class CustomFormatCodec<FormatWriter>;

} // namespace Corvane::Rasterloom::Codecs
