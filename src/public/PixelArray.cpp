#include <Corvane/Rasterloom/PixelArray.h>

#include <Corvane/Rasterloom/Host/Errors.h>

#include <limits>

namespace Corvane::Rasterloom {

namespace {

std::size_t CountOf(const std::vector<std::int32_t>& lengths) {
    std::size_t count = 1;
    for (const std::int32_t length : lengths) {
        if (length < 0 || __builtin_mul_overflow(count, static_cast<std::size_t>(length), &count) ||
            count > static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max()) / sizeof(std::int32_t)) {
            throw Host::ArgumentOutOfRangeException("lengths");
        }
    }
    return lengths.empty() ? 0 : count;
}

} // namespace

PixelArray::PixelArray(std::vector<std::int32_t> lengths) : m_lengths(std::move(lengths)), m_values(CountOf(m_lengths)) {}

PixelArray::PixelArray(std::int32_t width, std::int32_t height, std::int32_t channels)
    : PixelArray(std::vector<std::int32_t>{width, height, channels}) {}

std::int32_t PixelArray::GetLength(std::int32_t dimension) const {
    if (dimension < 0 || dimension >= get_Rank()) {
        throw Host::ArgumentOutOfRangeException("dimension");
    }
    return m_lengths[static_cast<std::size_t>(dimension)];
}

std::size_t PixelArray::Index(std::int32_t x, std::int32_t y, std::int32_t channel) const {
    const auto check = [this](std::int32_t index, std::size_t dimension, const char* name) {
        if (m_lengths.size() != 3 || index < 0 || index >= m_lengths[dimension]) {
            throw Host::ArgumentOutOfRangeException(name);
        }
        return static_cast<std::size_t>(index);
    };
    const std::size_t column = check(x, 0, "x");
    const std::size_t row = check(y, 1, "y");
    const std::size_t sample = check(channel, 2, "channel");
    return (column * static_cast<std::size_t>(m_lengths[1]) + row) * static_cast<std::size_t>(m_lengths[2]) + sample;
}

} // namespace Corvane::Rasterloom
