#pragma once

#include <Corvane/Rasterloom/Codecs/FormatReader.h>

namespace Corvane::Rasterloom::Codecs {

/// Reads PCX files of 1, 2, 4, 8 and 24 bits, in planes or not. The frames are `PcxFrame`s. Pixels of 2 bits become
/// indices of 4 bits, those of several planes of 1 bit indices of 8 bits.
class RASTERLOOM_API PcxReader : public FormatReader {
public:
    /// Closed, or opened as `Open` does.
    PcxReader();
    explicit PcxReader(const std::shared_ptr<Host::Stream>& stream);
    explicit PcxReader(const std::filesystem::path& fileName);
    ~PcxReader() override;

    std::unique_ptr<IFormatReader> Clone() override;

protected:
    std::unique_ptr<Frame> OnFrameLoad(std::int32_t index) override;
    bool OnCheckForSupport(const std::shared_ptr<Host::Stream>& stream) override;
};

} // namespace Corvane::Rasterloom::Codecs
