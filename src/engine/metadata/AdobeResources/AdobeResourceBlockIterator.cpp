#include "metadata/AdobeResources/AdobeResourceBlockIterator.h"

#include "ErrorHandling/Exceptions.h"

#include <algorithm>

namespace ImagingFramework {

namespace {

constexpr std::uint64_t IdOffset = 4;
constexpr std::uint64_t NameOffset = 6;
constexpr std::uint64_t DataSizeLength = 4;
/// All of a block but its name field and its data.
constexpr std::uint64_t FixedSize = NameOffset + DataSizeLength;

std::uint32_t ReadBigEndian(std::span<const std::uint8_t> bytes) {
    std::uint32_t value = 0;
    for (const std::uint8_t byte : bytes) {
        value = value << 8 | byte;
    }
    return value;
}

} // namespace

AdobeResourceBlockIterator::AdobeResourceBlockIterator(const std::uint8_t* pData, std::uint64_t uintDataSize) {
    if (pData == nullptr) {
        throw ArgumentNullPointerException("pData");
    }
    if (uintDataSize < Signature.size()) {
        throw ArgumentOutOfRangeException("uintDataSize", "The value of the argument is too small. Size of the buffer "
                                                          "must be at least above signature length.");
    }
    m_buffer = {pData, uintDataSize};
    if (!std::ranges::equal(m_buffer.first(Signature.size()), Signature)) {
        throw ArgumentException("pData", "Cannot find signature in specified buffer.");
    }
    if (!ReadHeader()) {
        End();
    }
}

bool AdobeResourceBlockIterator::ReadHeader() {
    const std::uint64_t left = m_buffer.size() - m_uintOffset;
    const auto block = m_buffer.subspan(m_uintOffset);
    if (left < FixedSize + 2) {
        return false;
    }
    const std::uint64_t nameLength = block[NameOffset];
    m_uintNameFieldSize = (nameLength + 2) / 2 * 2; // with the length byte, made even
    if (left < FixedSize + m_uintNameFieldSize) {
        return false;
    }
    const std::uint64_t dataSize = ReadBigEndian(block.subspan(NameOffset + m_uintNameFieldSize, DataSizeLength));
    if (left - FixedSize - m_uintNameFieldSize < dataSize) {
        return false;
    }
    m_uintId = static_cast<std::uint16_t>(ReadBigEndian(block.subspan(IdOffset, 2)));
    m_name = block.subspan(NameOffset + 1, nameLength);
    m_data = block.subspan(FixedSize + m_uintNameFieldSize, dataSize);
    m_bOnBlock = true;
    return true;
}

bool AdobeResourceBlockIterator::End() noexcept {
    m_name = {};
    m_data = {};
    m_uintId = 0;
    m_bOnBlock = false;
    return false;
}

bool AdobeResourceBlockIterator::Next() {
    if (!m_bOnBlock) {
        return false;
    }
    // The pad byte behind odd data is skipped like anything else that is no signature.
    const auto rest = m_buffer.subspan(m_uintOffset + FixedSize + m_uintNameFieldSize + m_data.size());
    const auto found = std::search(rest.begin(), rest.end(), Signature.begin(), Signature.end());
    if (found == rest.end()) {
        return End();
    }
    m_uintOffset = static_cast<std::uint64_t>(found - m_buffer.begin());
    return ReadHeader() || End();
}

} // namespace ImagingFramework
