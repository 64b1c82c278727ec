#pragma once

#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// Packs lines of indices into run-length codes and appends them to a buffer. Bytes that differ from their neighbour
/// gather in a chain; from the second equal one on they are counted as a run. A chain or run goes out when it ends,
/// when it reaches the largest count that a code can hold, and at the end of the line.
class BmpRleChain {
public:
    /// `bitCount` is 8, or 4: then a byte is two pixels and is compared as a whole.
    BmpRleChain(std::uint32_t bitCount, std::vector<std::uint8_t>& output)
        : m_uintBitCount(bitCount), m_output(output) {}

    /// Appends the codes of a line of `width` pixels, without an end-of-line code.
    void CodeLine(const std::uint8_t* pLine, std::uint32_t width);

private:
    void Begin(std::uint8_t byte, std::uint32_t pixels);
    void Add(std::uint8_t byte, std::uint32_t pixels);
    void Flush();
    void SaveNotRepeatingChain(std::uint32_t byteCount, std::uint32_t pixelCount);
    void SaveRLE8NotRepeatingChain(std::uint32_t count);
    void SaveRLE4NotRepeatingChain(std::uint32_t byteCount, std::uint32_t pixelCount);
    void Put(std::uint32_t first, std::uint32_t second) {
        m_output.push_back(static_cast<std::uint8_t>(first));
        m_output.push_back(static_cast<std::uint8_t>(second));
    }

    std::uint32_t m_uintBitCount;
    std::vector<std::uint8_t>& m_output;
    std::vector<std::uint8_t> m_chain; ///< a run keeps its one byte here
    std::uint32_t m_uintPixelCount = 0;
    bool m_bRun = false;
};

} // namespace ImagingFramework
