#pragma once

#include <Corvane/Rasterloom/Codecs/FormatReaderOf.h>

namespace Corvane::Rasterloom::Codecs {

/// Reads WBMP files (wireless bitmaps) of type 0, in black and white. The frames are `WbmpFrame`s.
class RASTERLOOM_API WbmpReader : public FormatReaderOf<Formats::Wbmp> {
public:
    using FormatReaderOf::FormatReaderOf;
    ~WbmpReader() override;
};

} // namespace Corvane::Rasterloom::Codecs
