#pragma once

#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/PngFilter.h>

#include <cstdint>
#include <memory>
#include <optional>

namespace Tool {

/// How files are written. What a format has no setting for is left out.
struct SaveChoices {
    std::optional<std::int32_t> Quality;
    bool Progressive = false;
    bool ChromaSubsampling = true;
    std::optional<std::int32_t> RestartInterval;
    bool Interlaced = false;
    std::optional<std::int32_t> CompressionLevel;
    std::optional<Corvane::Rasterloom::Codecs::PngFilter> Filter;
    bool RunLengths = false;

    /// Options for a writer of the format.
    std::unique_ptr<Corvane::Rasterloom::Codecs::EncoderOptions> For(std::int64_t format) const;
};

} // namespace Tool
