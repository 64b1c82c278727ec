#pragma once

#include <Corvane/Rasterloom/Api.h>

namespace Corvane::Rasterloom::Codecs {

/// Names of the formats that the library brings along. The classes of a format are made from its name: see
/// `FormatReaderOf`, `FormatWriterOf`, `FrameOf` and `EncoderOptionsOf`.
namespace Formats {
struct RASTERLOOM_API Bmp;
struct RASTERLOOM_API Jpeg;
struct RASTERLOOM_API Pcx;
struct RASTERLOOM_API Png;
struct RASTERLOOM_API Wbmp;
} // namespace Formats

} // namespace Corvane::Rasterloom::Codecs
