#pragma once

#include "colorconversion/DiffusionKernel.h"

#include <array>
#include <cstdint>
#include <vector>

namespace ImagingFramework {

/// The error that pixels have been given, not yet divided by 2^Shift; channels as in the pixel: blue, green, red, alpha.
struct alignas(16) ArgbError {
    std::array<std::int32_t, 4> Channels{};
};

/// A weight of a kernel and where it goes, as seen from the current pixel.
struct DiffusionTap {
    std::uint32_t Row;
    std::int32_t Column;
    std::int32_t Weight;
};

/// Keeps the rows of errors for one record per pixel: that of the current row and those below that the kernel reaches.
/// Errors that fall beside the scanline are lost.
template <class Error> class ErrorDiffusion : public Dithering {
public:
    /// Forgets all errors.
    void Open(std::uint32_t uintScanlineWidth, std::uint32_t intensity, ColorMap* palette) override;
    /// Makes the rows on first use. Fails with `NotInitializedException` ("Dithering") before `Open`.
    void ApplyDithering(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) override;

protected:
    explicit ErrorDiffusion(DitheringType type) : Dithering(type) {}

    /// Where each row of errors has its first pixel. Some pixels on either side may be written as well.
    const std::vector<Error*>& GetRows() const { return m_rows; }
    /// Ends a scanline: the rows move up, and a row of zeros comes in below.
    void NextRow();

    std::uint32_t m_uintShift = 0;
    std::vector<DiffusionTap> m_taps; ///< the weights that are not zero, row by row from left to right

private:
    void SelectKernel();
    std::size_t RowLength() const;

    std::vector<Error> m_errors;
    std::vector<Error*> m_rows;
    std::uint32_t m_uintRowCount = 0;
};

extern template class ErrorDiffusion<ArgbError>;

} // namespace ImagingFramework
