#pragma once

#include <Corvane/Rasterloom/Codecs/FormatReader.h>
#include <Corvane/Rasterloom/Codecs/Formats.h>

namespace Corvane::Rasterloom::Codecs {

/// What the readers of all formats of the library have in common; `Format` is one of the names in `Formats`.
///
/// The constructors that open a file do so before the members of a derived class exist: a class that has a step of its own
/// in opening or closing opens in its own constructors.
template <class Format>
class RASTERLOOM_API FormatReaderOf : public FormatReader {
public:
    /// Closed, or opened as `Open` does.
    FormatReaderOf();
    explicit FormatReaderOf(const std::shared_ptr<Host::Stream>& stream);
    explicit FormatReaderOf(const std::filesystem::path& fileName);
    ~FormatReaderOf() override;

    std::unique_ptr<IFormatReader> Clone() override;

protected:
    std::unique_ptr<Frame> OnFrameLoad(std::int32_t index) override;
    /// Asks the probe of the format alone.
    bool OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream) override;
};

} // namespace Corvane::Rasterloom::Codecs
