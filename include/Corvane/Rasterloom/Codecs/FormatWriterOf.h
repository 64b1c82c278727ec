#pragma once

#include <Corvane/Rasterloom/Codecs/FormatWriter.h>
#include <Corvane/Rasterloom/Codecs/Formats.h>

namespace Corvane::Rasterloom::Codecs {

/// What the writers of all formats of the library have in common; as `FormatReaderOf`.
template <class Format>
class RASTERLOOM_API FormatWriterOf : public FormatWriter {
public:
    /// Closed, or opened as `Open` does.
    FormatWriterOf();
    explicit FormatWriterOf(const std::shared_ptr<Host::Stream>& stream);
    explicit FormatWriterOf(const std::filesystem::path& fileName);
    ~FormatWriterOf() override;

    std::unique_ptr<IFrame> GetEmptyFrame() override;
    std::unique_ptr<IFormatWriter> Clone() override;
};

} // namespace Corvane::Rasterloom::Codecs
