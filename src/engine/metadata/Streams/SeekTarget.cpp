#include "metadata/Streams/SeekTarget.h"

#include "ErrorHandling/Exceptions.h"

namespace ImagingFramework {

std::uint64_t ComputeSeekTarget(std::int64_t offset, SeekOrigin origin, bool inBits, std::uint64_t position,
                                std::uint64_t size) {
    if (origin != SeekOrigin::Current && offset < 0) {
        throw ArgumentException("nOffset", "the value cannot be < 0");
    }
    std::int64_t bits = offset;
    if (!inBits && __builtin_mul_overflow(offset, std::int64_t{8}, &bits)) {
        throw OutOfRangeException("nOffset");
    }
    std::int64_t target = bits;
    switch (origin) {
    case SeekOrigin::Begin:
        break;
    case SeekOrigin::Current:
        if (__builtin_add_overflow(static_cast<std::int64_t>(position), bits, &target)) {
            throw OutOfRangeException("nOffset");
        }
        break;
    case SeekOrigin::End:
        target = static_cast<std::int64_t>(size) - bits;
        break;
    default:
        throw ArgumentException("nOrigin");
    }
    if (target < 0) {
        throw ArgumentException("nOffset", "the value cannot be < 0");
    }
    return static_cast<std::uint64_t>(target);
}

} // namespace ImagingFramework
