#pragma once

#include <Corvane/Rasterloom/Codecs/FormatWriter.h>

namespace Corvane::Rasterloom::Codecs {

/// Writes WBMP files (wireless bitmaps) of one frame. Bitmaps in other formats than `Format1bppIndexed` become black
/// and white. Of a palette only this is kept: whether the blue of its first entry is 0, which makes that entry black.
class RASTERLOOM_API WbmpWriter : public FormatWriter {
public:
    /// Closed, or opened as `Open` does.
    WbmpWriter();
    explicit WbmpWriter(const std::shared_ptr<Host::Stream>& stream);
    explicit WbmpWriter(const std::filesystem::path& fileName);
    ~WbmpWriter() override;

    std::unique_ptr<IFrame> GetEmptyFrame() override;
    std::unique_ptr<IFormatWriter> Clone() override;
};

} // namespace Corvane::Rasterloom::Codecs
