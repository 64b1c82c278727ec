#pragma once

#include "MemoryManagement/MemPtr.h"
#include "colorconversion/ColorSpaceManager.h"

namespace ImagingFramework {

/// Brings rows of an image to `Format32bppArgb`.
class RowToArgb {
public:
    static constexpr std::uint32_t PixelSize = 4;

    RowToArgb(std::uint32_t width, PixelFormat format, const ColorMap* pColorMap);

    /// The converted row: `pRow` itself when it has the format already, else valid until the next call.
    const std::uint8_t* Convert(const std::uint8_t* pRow);
    /// Into `pDestination`.
    void Convert(const std::uint8_t* pRow, std::uint8_t* pDestination);

private:
    bool IsPlain() const noexcept { return m_format == PixelFormat::Format32bppArgb; }

    std::uint32_t m_uintWidth;
    PixelFormat m_format;
    ColorSpaceManager m_manager;
    MemPtr<std::uint8_t> m_row;
};

} // namespace ImagingFramework
