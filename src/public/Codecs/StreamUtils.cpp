#include <Corvane/Rasterloom/Codecs/StreamUtils.h>

#include <Corvane/Rasterloom/Host/Errors.h>

#include <algorithm>
#include <vector>

namespace Corvane::Rasterloom::Codecs {

namespace {

constexpr std::uint64_t BlockSize = 1U << 16;

Host::Stream& Source(const std::shared_ptr<Host::Stream>& pSrcStream) {
    if (pSrcStream == nullptr) {
        throw Host::ArgumentNullException("pSrcStream");
    }
    if (!pSrcStream->get_CanRead()) {
        throw Host::NotSupportedException("Stream should support reading.");
    }
    return *pSrcStream;
}

Host::Stream& Destination(const std::shared_ptr<Host::Stream>& pDestStream) {
    if (pDestStream == nullptr) {
        throw Host::ArgumentNullException("pDestStream");
    }
    if (!pDestStream->get_CanWrite()) {
        throw Host::NotSupportedException("Stream should support writing.");
    }
    return *pDestStream;
}

} // namespace

std::uint64_t StreamUtils::Copy(const std::shared_ptr<Host::Stream>& pSrcStream,
                                const std::shared_ptr<Host::Stream>& pDestStream, std::uint64_t count) {
    if (count == 0) {
        return 0;
    }
    Host::Stream& source = Source(pSrcStream);
    Host::Stream& destination = Destination(pDestStream);
    std::vector<char> block(std::min(count, BlockSize));
    std::uint64_t copied = 0;
    while (copied < count) {
        const std::uint64_t wanted = std::min(count - copied, BlockSize);
        const std::size_t read = source.Read(block.data(), wanted);
        if (read == 0) {
            break;
        }
        if (read > wanted) {
            throw Host::IOException("The stream has read more than was asked for.");
        }
        destination.Write(block.data(), read);
        copied += read;
    }
    return copied;
}

std::uint64_t StreamUtils::Copy(const std::shared_ptr<Host::Stream>& pSrcStream,
                                const std::shared_ptr<Host::Stream>& pDestStream) {
    return Copy(pSrcStream, pDestStream, static_cast<std::uint64_t>(Source(pSrcStream).get_Length()));
}

std::uint64_t StreamUtils::Copy(const std::shared_ptr<Host::Stream>& pSrcStream, void* pDestBuffer,
                                std::uint64_t count) {
    if (count == 0) {
        return 0;
    }
    Host::Stream& source = Source(pSrcStream);
    if (pDestBuffer == nullptr) {
        throw Host::ArgumentNullException("pDestBuffer");
    }
    std::uint64_t copied = 0;
    while (copied < count) {
        const std::size_t read = source.Read(static_cast<char*>(pDestBuffer) + copied, count - copied);
        if (read == 0) {
            break;
        }
        copied += read;
    }
    return copied;
}

std::uint64_t StreamUtils::Copy(const void* pSrcBuffer, const std::shared_ptr<Host::Stream>& pDestStream,
                                std::uint64_t count) {
    if (count == 0) {
        return 0;
    }
    if (pSrcBuffer == nullptr) {
        throw Host::ArgumentNullException("pSrcBuffer");
    }
    Destination(pDestStream).Write(pSrcBuffer, count);
    return count;
}

} // namespace Corvane::Rasterloom::Codecs
