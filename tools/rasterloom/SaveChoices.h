#pragma once

#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>

#include <cstdint>
#include <memory>
#include <optional>

namespace Tool {

/// How files are written. What a format has no setting for is left out.
struct SaveChoices {
    std::optional<std::int32_t> Quality;
    bool Progressive = false;
    bool ChromaSubsampling = true;
    bool Interlaced = false;
    std::optional<std::int32_t> CompressionLevel;

    /// Options for a writer of the format.
    std::unique_ptr<Corvane::Rasterloom::Codecs::EncoderOptions> For(std::int64_t format) const;
};

} // namespace Tool
