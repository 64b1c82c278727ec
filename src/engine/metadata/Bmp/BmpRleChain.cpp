#include "metadata/Bmp/BmpRleChain.h"

namespace ImagingFramework {

void BmpRleChain::CodeLine(const std::uint8_t* pLine, std::uint32_t width) {
    const std::uint32_t pixelsPerByte = 8 / m_uintBitCount;
    // The largest count of a code in whole bytes.
    const std::uint32_t maximumCount = 255 - 255 % pixelsPerByte;
    for (std::uint32_t x = 0; x < width; x += pixelsPerByte) {
        const std::uint32_t pixels = width - x < pixelsPerByte ? width - x : pixelsPerByte;
        const std::uint8_t byte = pLine[x / pixelsPerByte];
        if (m_chain.empty()) {
            Begin(byte, pixels);
        } else {
            Add(byte, pixels);
        }
        if (m_uintPixelCount >= maximumCount) {
            Flush();
        }
    }
    Flush();
}

void BmpRleChain::Begin(std::uint8_t byte, std::uint32_t pixels) {
    m_chain.assign(1, byte);
    m_uintPixelCount = pixels;
    m_bRun = false;
}

void BmpRleChain::Add(std::uint8_t byte, std::uint32_t pixels) {
    const bool equal = byte == m_chain.back();
    if (m_bRun && !equal) {
        Flush();
        Begin(byte, pixels);
        return;
    }
    if (!m_bRun && equal) {
        // The last byte of the chain is the first one of the run.
        const std::uint32_t bytePixels = 8 / m_uintBitCount;
        SaveNotRepeatingChain(static_cast<std::uint32_t>(m_chain.size()) - 1, m_uintPixelCount - bytePixels);
        Begin(byte, bytePixels);
        m_bRun = true;
    } else if (!m_bRun) {
        m_chain.push_back(byte);
    }
    m_uintPixelCount += pixels;
}

void BmpRleChain::Flush() {
    if (m_chain.empty()) {
        return;
    }
    if (m_bRun) {
        Put(m_uintPixelCount, m_chain.front());
    } else {
        SaveNotRepeatingChain(static_cast<std::uint32_t>(m_chain.size()), m_uintPixelCount);
    }
    m_chain.clear();
    m_uintPixelCount = 0;
    m_bRun = false;
}

void BmpRleChain::SaveNotRepeatingChain(std::uint32_t byteCount, std::uint32_t pixelCount) {
    if (m_uintBitCount == 8) {
        SaveRLE8NotRepeatingChain(byteCount);
    } else {
        SaveRLE4NotRepeatingChain(byteCount, pixelCount);
    }
}

void BmpRleChain::SaveRLE8NotRepeatingChain(std::uint32_t count) {
    // An absolute code needs at least 3 pixels: smaller counts are other codes.
    if (count < 3) {
        for (std::uint32_t i = 0; i < count; ++i) {
            Put(1, m_chain[i]);
        }
        return;
    }
    Put(0, count);
    m_output.insert(m_output.end(), m_chain.begin(), m_chain.begin() + count);
    if (count % 2 != 0) {
        m_output.push_back(0);
    }
}

void BmpRleChain::SaveRLE4NotRepeatingChain(std::uint32_t byteCount, std::uint32_t pixelCount) {
    if (pixelCount < 3) {
        if (pixelCount == 1) {
            Put(1, m_chain[0]);
        } else if (pixelCount == 2) {
            Put(1, m_chain[0] & 0xF0);
            Put(1, (m_chain[0] & 0x0FU) << 4);
        }
        return;
    }
    Put(0, pixelCount);
    m_output.insert(m_output.end(), m_chain.begin(), m_chain.begin() + byteCount);
    if (byteCount % 2 != 0) {
        m_output.push_back(0xFF);
    }
}

} // namespace ImagingFramework
