#pragma once

#include <Corvane/Rasterloom/Host/Stream.h>

#include <cstdint>
#include <memory>

namespace Corvane::Rasterloom::Codecs {

/// Copies between streams and memory. Every form gives the number of bytes that were copied, which is smaller than
/// `count` when the source ends before. A count of 0 does nothing. Failures: `ArgumentNullException` ("pSrcStream",
/// "pDestStream", "pSrcBuffer", "pDestBuffer"), `NotSupportedException` for a stream that cannot do its part, and whatever
/// the streams raise.
class RASTERLOOM_API StreamUtils {
public:
    StreamUtils() = delete;

    /// `count` bytes from the position of the source to the position of the destination.
    static std::uint64_t Copy(const std::shared_ptr<Host::Stream>& pSrcStream,
                              const std::shared_ptr<Host::Stream>& pDestStream, std::uint64_t count);
    /// As many bytes as the source is long, from its position on.
    static std::uint64_t Copy(const std::shared_ptr<Host::Stream>& pSrcStream,
                              const std::shared_ptr<Host::Stream>& pDestStream);
    /// From the position of the source to memory, which has room for `count` bytes.
    static std::uint64_t Copy(const std::shared_ptr<Host::Stream>& pSrcStream, void* pDestBuffer, std::uint64_t count);
    /// From memory to the position of the destination.
    static std::uint64_t Copy(const void* pSrcBuffer, const std::shared_ptr<Host::Stream>& pDestStream,
                              std::uint64_t count);
};

} // namespace Corvane::Rasterloom::Codecs
