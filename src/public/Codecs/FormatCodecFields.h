#pragma once

#include "StreamWrapper.h"
#include "metadata/MetaData.h"

#include <Corvane/Rasterloom/Codecs/FormatCodec.h>

#include <atomic>
#include <cstdint>
#include <memory>

namespace Corvane::Rasterloom::Codecs {

/// The fields of a `FormatCodec`.
struct FormatCodecFields {
    std::atomic<std::int64_t> m_intMediaFormat;
    /// Null in a codec of a host.
    std::unique_ptr<ImagingFramework::MetaData> m_pMetaData;
    /// The stream of the host, or what stands in for it; both are null for a file.
    std::shared_ptr<Host::Stream> m_pStream{};
    std::shared_ptr<StreamWrapper> m_pStreamWrapper{};
    /// Set from the first step of an opening on; `m_bOpened` when it is complete.
    bool m_bAttached = false;
    std::atomic<bool> m_bOpened{false};
};

} // namespace Corvane::Rasterloom::Codecs
