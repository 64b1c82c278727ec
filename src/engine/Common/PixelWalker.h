#pragma once

#include "Common/BitmapData.h"
#include "Common/IPixelParser.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace ImagingFramework {

/// Steps a parser over a rectangle of pixels: the slow, obviously right way to touch samples whatever their format. `Sample`
/// is the type in which samples are read; `Index` that of coordinates.
///
/// Failures of construction: `ArgumentNullPointerException` on a null buffer, `NotInitializedException` on an empty raster,
/// `ArgumentOutOfRangeException` on a zero size, `UnsupportedPixelFormatException` for a pixel that is not of whole bytes or
/// whose channels are not (the packed 16-bit formats).
template <class Sample, class Index> class PixelWalker {
public:
    /// A null region means the whole raster; its corners are inclusive and must lie inside.
    PixelWalker(const BitmapData& raster, const RegionRect* pRegion, bool includeAlpha) {
        if (raster.IsEmpty()) {
            throw NotInitializedException("BitmapData");
        }
        std::uint8_t* pixels = raster.GetPixelsRef();
        std::int64_t width = raster.GetWidth();
        std::int64_t height = raster.GetHeight();
        if (pRegion != nullptr) {
            if (pRegion->Left < 0 || pRegion->Top < 0 || pRegion->Right >= width || pRegion->Bottom >= height) {
                throw ArgumentOutOfRangeException("region");
            }
            width = std::int64_t{pRegion->Right} - pRegion->Left + 1;
            height = std::int64_t{pRegion->Bottom} - pRegion->Top + 1;
            pixels += std::size_t{raster.GetStride()} * static_cast<std::size_t>(pRegion->Top) +
                      std::size_t{PixelFormatSize(raster.GetPixelFormat()) / 8} * static_cast<std::size_t>(pRegion->Left);
        }
        Initialize(pixels, raster.GetPixelFormat(), width, height, raster.GetStride(), includeAlpha);
    }

    PixelWalker(void* pBuffer, PixelFormat format, std::uint32_t width, std::uint32_t height, std::uint32_t stride,
                bool includeAlpha) {
        Initialize(static_cast<std::uint8_t*>(pBuffer), format, width, height, stride, includeAlpha);
    }

    static bool IsPixelFormatSupported(PixelFormat format) {
        return PixelFormatSize(format) % 8 == 0 && PixelFormatSize(format) != 0 && !PixelFormatIsPacked16(format);
    }

    /// One pixel on, then one row; false at the end.
    bool NextPixel() {
        if (m_columnsLeft > 0) {
            --m_columnsLeft;
            m_pPixel += m_pixelSize;
        } else if (m_rowsLeft > 0) {
            --m_rowsLeft;
            m_columnsLeft = m_lastColumn;
            m_pRow += m_stride;
            m_pPixel = m_pRow;
        } else {
            return false;
        }
        m_pParser->SetPixel(m_pPixel);
        return true;
    }

    void ResetToFirstPixel() {
        m_columnsLeft = m_lastColumn;
        m_rowsLeft = m_lastRow;
        m_pRow = m_pPixel = m_pStart;
        m_pParser->SetPixel(m_pPixel);
    }

    /// Builds the tables that `MoveTo` needs.
    void InitRandomAccess() {
        m_rows.resize(static_cast<std::size_t>(m_lastRow) + 1);
        for (std::size_t y = 0; y < m_rows.size(); ++y) {
            m_rows[y] = m_pStart + y * m_stride;
        }
        m_columns.resize(static_cast<std::size_t>(m_lastColumn) + 1);
        for (std::size_t x = 0; x < m_columns.size(); ++x) {
            m_columns[x] = x * m_pixelSize;
        }
    }

    /// Added to the coordinates of `MoveTo`.
    void SetOffset(std::int64_t x, std::int64_t y) {
        m_offsetX = x;
        m_offsetY = y;
    }

    /// False outside the rectangle, and before `InitRandomAccess`.
    bool MoveTo(Index x, Index y) {
        const std::int64_t column = static_cast<std::int64_t>(x) + m_offsetX;
        const std::int64_t row = static_cast<std::int64_t>(y) + m_offsetY;
        if (column < 0 || row < 0 || column >= static_cast<std::int64_t>(m_columns.size()) ||
            row >= static_cast<std::int64_t>(m_rows.size())) {
            return false;
        }
        m_pRow = m_rows[static_cast<std::size_t>(row)];
        m_pPixel = m_pRow + m_columns[static_cast<std::size_t>(column)];
        m_columnsLeft = m_lastColumn - column;
        m_rowsLeft = m_lastRow - row;
        m_pParser->SetPixel(m_pPixel);
        return true;
    }

    /// Walks one channel alone from now on.
    void ChooseChannels(std::uint32_t channelIndex) {
        if (channelIndex >= m_walkedChannels) {
            throw ArgumentOutOfRangeException("channelIndex", "The value should above above zero.");
        }
        bool flags[IPixelParserImpl::MaximumChannels] = {};
        flags[channelIndex] = true;
        ReplaceParser(flags);
    }

    void ChooseChannels(const bool* pFlags, std::uint32_t count) {
        if (pFlags == nullptr) {
            throw ArgumentNullPointerException("pFlags");
        }
        if (count == 0) {
            throw ArgumentOutOfRangeException("count", "The value should above above zero.");
        }
        ReplaceParser({pFlags, count});
    }

    PixelFormat GetPixelFormat() const noexcept { return m_format; }
    bool HasAlpha() const noexcept { return m_hasAlpha; }
    std::uint32_t GetChannelCount() const { return m_pParser->GetChannelCount(); }
    Sample GetChannel() const { return static_cast<Sample>(m_pParser->GetChannel()); }
    Sample GetAlpha() const { return static_cast<Sample>(m_pParser->GetAlpha()); }
    bool NextChannel() { return m_pParser->NextChannel(); }
    void ResetChannels() { m_pParser->ResetChannels(); }
    void SetChannelInt(std::int32_t value) { m_pParser->SetChannelInt(value); }
    void SetChannelUInt(std::uint32_t value) { m_pParser->SetChannelUInt(value); }
    void SetAlphaInt(std::int32_t value) { m_pParser->SetAlphaInt(value); }

private:
    void Initialize(std::uint8_t* pBuffer, PixelFormat format, std::int64_t width, std::int64_t height,
                    std::uint32_t stride, bool includeAlpha) {
        if (pBuffer == nullptr) {
            throw ArgumentNullPointerException("pBuffer");
        }
        if (width <= 0 || height <= 0) {
            throw ArgumentOutOfRangeException(width <= 0 ? "width" : "height", "Value must be above zero.");
        }
        if (!IsPixelFormatSupported(format)) {
            throw UnsupportedPixelFormatException();
        }
        m_format = format;
        m_hasAlpha = PixelFormatHasAlpha(format);
        m_includeAlpha = includeAlpha;
        m_pixelSize = PixelFormatSize(format) / 8;
        m_stride = stride;
        m_lastColumn = width - 1;
        m_lastRow = height - 1;
        m_pStart = pBuffer;
        ReplaceParser({});
        m_walkedChannels = m_pParser->GetChannelCount();
    }

    void ReplaceParser(std::span<const bool> selected) {
        m_pParser = CreatePixelParser(m_format, m_includeAlpha, selected);
        ResetToFirstPixel();
    }

    PixelFormat m_format = PixelFormat::FormatUnknown;
    std::uint32_t m_stride = 0;
    std::uint32_t m_pixelSize = 0;
    std::uint32_t m_walkedChannels = 0; ///< before any choice of channels
    bool m_hasAlpha = false;
    bool m_includeAlpha = false;
    std::int64_t m_lastColumn = 0;
    std::int64_t m_lastRow = 0;
    std::uint8_t* m_pStart = nullptr;
    std::uint8_t* m_pRow = nullptr;
    std::uint8_t* m_pPixel = nullptr;
    std::int64_t m_columnsLeft = 0;
    std::int64_t m_rowsLeft = 0;
    std::int64_t m_offsetX = 0;
    std::int64_t m_offsetY = 0;
    std::vector<std::uint8_t*> m_rows;
    std::vector<std::size_t> m_columns;
    std::unique_ptr<IPixelParser> m_pParser;
};

} // namespace ImagingFramework
