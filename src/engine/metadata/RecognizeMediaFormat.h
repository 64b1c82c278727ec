#pragma once

#include "metadata/FileFormat.h"
#include "metadata/Streams/IStream.h"

namespace ImagingFramework {

/// What the stream holds, by its content from the current position on; `FileFormat::Unknown` when nothing fits. The
/// extension of a file's name (lower case only) lets its own format be tried first and decides nothing else.
/// The position is kept. Fails with `ArgumentNullPointerException` ("piStream") on null.
FileFormat RecognizeMediaFormat(IStream* piStream);

/// Whether the stream may be of that format: its probe alone is asked, one of those below. False for a format without one.
bool TryMediaFormat(FileFormat format, IStream* piStream);

// The probe of each format. A stream that ends early or fails is no match. The position is kept.
bool TryJpegFormat(IStream* piStream);
bool TryBmpFormat(IStream* piStream);
bool TryPngFormat(IStream* piStream);
bool TryTiffFormat(IStream* piStream);
bool TryPcxFormat(IStream* piStream);
/// There is no magic number: type 0, a plain header, both sides above 0 and of at most 32 bits, and at least one
/// byte behind them.
bool TryWbmpFormat(IStream* piStream);
bool TryGifFormat(IStream* piStream);
bool TryPsdFormat(IStream* piStream);
bool TryJpeg2kFormat(IStream* piStream);
bool TryAviFormat(IStream* piStream);
bool TryAsfFormat(IStream* piStream);

} // namespace ImagingFramework
