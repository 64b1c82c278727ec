#pragma once

#include <Corvane/Rasterloom/Codecs/FormatWriterOf.h>

namespace Corvane::Rasterloom::Codecs {

/// Writes WBMP files (wireless bitmaps) of one frame. Bitmaps in other formats than `Format1bppIndexed` become black
/// and white. Of a palette only this is kept: whether the blue of its first entry is 0, which makes that entry black.
class RASTERLOOM_API WbmpWriter : public FormatWriterOf<Formats::Wbmp> {
public:
    using FormatWriterOf::FormatWriterOf;
    ~WbmpWriter() override;
};

} // namespace Corvane::Rasterloom::Codecs
