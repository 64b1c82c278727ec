#pragma once

#include <Corvane/Rasterloom/Codecs/FormatReaderOf.h>

namespace Corvane::Rasterloom::Codecs {

/// Reads PCX files of 1, 2, 4, 8 and 24 bits, in planes or not. The frames are `PcxFrame`s. Pixels of 2 bits become
/// indices of 4 bits, those of several planes of 1 bit indices of 8 bits.
class RASTERLOOM_API PcxReader : public FormatReaderOf<Formats::Pcx> {
public:
    using FormatReaderOf::FormatReaderOf;
    ~PcxReader() override;
};

} // namespace Corvane::Rasterloom::Codecs
