#include "colorconversion/ErrorDiffusion.h"

#include "ErrorHandling/Exceptions.h"

#include <algorithm>
#include <new>

namespace ImagingFramework {

namespace {

/// No kernel reaches farther to a side.
constexpr std::size_t Margin = DiffusionKernel::MaximumWidth / 2;

} // namespace

template <class Error>
void ErrorDiffusion<Error>::Open(std::uint32_t uintScanlineWidth, std::uint32_t intensity, ColorMap* palette) {
    Dithering::Open(uintScanlineWidth, intensity, palette);
    CheckType(DitheringType::Original, DitheringType::Stephenson);
    m_rows.clear();
    m_errors.clear();
    SelectKernel();
}

template <class Error> void ErrorDiffusion<Error>::SelectKernel() {
    const DiffusionKernel& kernel = *FindDiffusionKernel(m_enType);
    m_uintShift = kernel.Shift;
    m_uintRowCount = kernel.Height;
    m_taps.clear();
    for (std::uint32_t row = 0; row < kernel.Height; ++row) {
        for (std::uint32_t column = 0; column < kernel.Width; ++column) {
            const std::int32_t weight = kernel.Weights[row][column];
            if (weight != 0) {
                m_taps.push_back(
                    {row, static_cast<std::int32_t>(column) - static_cast<std::int32_t>(kernel.Width / 2), weight});
            }
        }
    }
}

template <class Error> std::size_t ErrorDiffusion<Error>::RowLength() const {
    return std::size_t{m_uintScanlineWidth} + 2 * Margin;
}

template <class Error>
void ErrorDiffusion<Error>::ApplyDithering(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) {
    Dithering::ApplyDithering(pSrcScanline, pDestScanline);
    if (m_taps.empty()) {
        throw NotInitializedException("Dithering");
    }
    if (m_rows.empty()) {
        try {
            m_errors.assign(RowLength() * m_uintRowCount, Error());
            m_rows.reserve(m_uintRowCount);
        } catch (const std::bad_alloc&) {
            throw MemoryException();
        }
        for (std::uint32_t row = 0; row < m_uintRowCount; ++row) {
            m_rows.push_back(m_errors.data() + row * RowLength() + Margin);
        }
    }
}

template <class Error> void ErrorDiffusion<Error>::NextRow() {
    std::rotate(m_rows.begin(), m_rows.begin() + 1, m_rows.end());
    std::fill_n(m_rows.back() - Margin, RowLength(), Error());
    ++m_uintRow;
}

template class ErrorDiffusion<ArgbError>;

} // namespace ImagingFramework
