#pragma once

#include <Corvane/Rasterloom/Codecs/FormatReader.h>

namespace Corvane::Rasterloom::Codecs {

/// Reads WBMP files (wireless bitmaps) of type 0, in black and white. The frames are `WbmpFrame`s.
class RASTERLOOM_API WbmpReader : public FormatReader {
public:
    /// Closed, or opened as `Open` does.
    WbmpReader();
    explicit WbmpReader(const std::shared_ptr<Host::Stream>& stream);
    explicit WbmpReader(const std::filesystem::path& fileName);
    ~WbmpReader() override;

    std::unique_ptr<IFormatReader> Clone() override;

protected:
    std::unique_ptr<Frame> OnFrameLoad(std::int32_t index) override;
    bool OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream) override;
};

} // namespace Corvane::Rasterloom::Codecs
