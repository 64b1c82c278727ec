#include "PixelAccess.h"

#include "CallEngine.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/Errors.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace Corvane::Rasterloom {

namespace engine = ImagingFramework;

namespace {

ColorSpace SpaceOf(const engine::BitmapData& raster) {
    return static_cast<ColorSpace>(engine::PixelFormatColorSpace(raster.GetPixelFormat()));
}

/// Spreads the first of `count` elements over the others, in copies of doubling length.
void QuickFill(std::uint8_t* pBuffer, std::size_t elementSize, std::size_t count) {
    for (std::size_t filled = 1; filled < count;) {
        const std::size_t step = std::min(filled, count - filled);
        std::memcpy(pBuffer + filled * elementSize, pBuffer, step * elementSize);
        filled += step;
    }
}

} // namespace

Color MakeColor(ColorSpace space, const std::array<std::int32_t, 5>& c) {
    switch (space) {
    case ColorSpace::Rgb:
        return Color::FromArgb32(c[3], c[2], c[1], c[0]);
    case ColorSpace::Cmyk:
        return Color::FromAcmyk32(c[4], c[3], c[2], c[1], c[0]);
    case ColorSpace::GrayScale:
        return Color::FromAGrayScale32(c[1], c[0]);
    default:
        throw UnexpectedException();
    }
}

void PixelAccess::CheckPosition(std::int32_t x, std::int32_t y) const {
    if (x < 0 || std::cmp_greater_equal(x, m_raster.GetWidth())) {
        throw Host::ArgumentOutOfRangeException("x", "X value of pixel position is out of range.");
    }
    if (y < 0 || std::cmp_greater_equal(y, m_raster.GetHeight())) {
        throw Host::ArgumentOutOfRangeException("y", "Y value of pixel position is out of range.");
    }
}

void PixelAccess::CheckManipulable() const {
    if (engine::PixelFormatIsPacked16(m_raster.GetPixelFormat())) {
        throw UnsupportedPixelFormatException("The pixel format doesn't support pixels manipulations.");
    }
}

engine::ColorMap& PixelAccess::Palette() const {
    engine::ColorMap* const map = m_raster.GetColorMapRef();
    if (map == nullptr || map->IsEmpty()) {
        throw Host::ArgumentException("Bitmap has no palette.", "bitmap");
    }
    return *map;
}

PixelAccess::Walker PixelAccess::WalkerAt(std::int32_t x, std::int32_t y) const {
    const engine::RegionRect pixel{x, y, x, y};
    return {m_raster, &pixel, true};
}

Color PixelAccess::GetPixel(std::int32_t x, std::int32_t y) {
    CheckPosition(x, y);
    CheckManipulable();
    return CallEngine([&] {
        const engine::PixelFormat format = m_raster.GetPixelFormat();
        if (engine::PixelFormatIsIndexed(format)) {
            const std::uint32_t bits = engine::PixelFormatSize(format);
            const std::uint64_t position = std::uint64_t{static_cast<std::uint32_t>(x)} * bits;
            const std::uint8_t byte = m_raster.GetScanlineRef(static_cast<std::uint32_t>(y))[position / 8];
            const std::uint32_t index = (byte >> (8 - bits - position % 8)) & ((1U << bits) - 1U);
            std::uint8_t entry[4];
            Palette().GetEntryArgb(index, entry);
            return Color::FromArgb(entry[3], entry[2], entry[1], entry[0]);
        }
        Walker walker = WalkerAt(x, y);
        // The colour's last channel is alpha: opaque unless the format has one.
        std::array<std::int32_t, 5> channels;
        channels.fill(65535);
        const int shift = engine::PixelFormatIsExtended(format) ? 0 : 8;
        for (std::uint32_t i = 0; i < walker.GetChannelCount(); ++i) {
            channels[i] = walker.GetChannel() << shift;
            walker.NextChannel();
        }
        return MakeColor(SpaceOf(m_raster), channels);
    });
}

std::uint32_t PixelAccess::NearestIndex(const Color& color) const {
    const RgbColor rgb(color);
    return Palette().FindNearestEntryIndex(rgb.get_R(), rgb.get_G(), rgb.get_B());
}

void PixelAccess::WriteIndex(std::uint8_t* pRow, std::uint32_t x, std::uint32_t index) const {
    const std::uint32_t bits = engine::PixelFormatSize(m_raster.GetPixelFormat());
    const std::uint64_t position = std::uint64_t{x} * bits;
    const std::uint32_t mask = (1U << bits) - 1U;
    const auto shift = static_cast<std::uint32_t>(8 - bits - position % 8);
    std::uint8_t& byte = pRow[position / 8];
    byte = static_cast<std::uint8_t>((byte & ~(mask << shift)) | ((index & mask) << shift));
}

void PixelAccess::WriteColor(Walker& walker, const Color& color) const {
    const std::vector<std::int32_t> channels = color.ToArray32();
    if (walker.GetChannelCount() + (walker.HasAlpha() ? 0U : 1U) != channels.size()) {
        throw UnexpectedException();
    }
    const int shift = engine::PixelFormatIsExtended(m_raster.GetPixelFormat()) ? 0 : 8;
    for (std::uint32_t i = 0; i < walker.GetChannelCount(); ++i) {
        walker.SetChannelInt(channels[i] >> shift);
        walker.NextChannel();
    }
}

void PixelAccess::SetPixel(std::int32_t x, std::int32_t y, const Color& color) {
    CheckPosition(x, y);
    CheckManipulable();
    if (color.IsNull()) {
        throw Host::ArgumentNullException("color");
    }
    const Color converted = color.ConvertColorSpace(SpaceOf(m_raster));
    CallEngine([&] {
        if (engine::PixelFormatIsIndexed(m_raster.GetPixelFormat())) {
            const std::uint32_t index = NearestIndex(converted);
            WriteIndex(m_raster.GetScanlineRef(static_cast<std::uint32_t>(y)), static_cast<std::uint32_t>(x), index);
            return;
        }
        Walker walker = WalkerAt(x, y);
        WriteColor(walker, converted);
    });
}

void PixelAccess::Clear(const Color& color) {
    CheckManipulable();
    const Color converted = color.ConvertColorSpace(SpaceOf(m_raster));
    CallEngine([&] {
        std::uint8_t* const row = m_raster.GetScanlineRef(0);
        if (engine::PixelFormatIsIndexed(m_raster.GetPixelFormat())) {
            const std::uint32_t index = NearestIndex(converted);
            for (std::uint32_t x = 0; x < m_raster.GetWidth(); ++x) {
                WriteIndex(row, x, index);
            }
        } else {
            Walker walker = WalkerAt(0, 0);
            WriteColor(walker, converted);
            QuickFill(row, engine::PixelFormatSize(m_raster.GetPixelFormat()) / 8, m_raster.GetWidth());
        }
        QuickFill(row, m_raster.GetStride(), m_raster.GetHeight());
    });
}

bool PixelAccess::HasWholeSamples(engine::PixelFormat format) {
    return engine::PixelFormatSize(format) > 16 || format == engine::PixelFormat::Format8bppGrayScale ||
           format == engine::PixelFormat::Format16bppGrayScale ||
           format == engine::PixelFormat::Format16bppAGrayScale || format == engine::PixelFormat::Format8bppIndexed;
}

void PixelAccess::CheckArrayFormat() const {
    if (!HasWholeSamples(m_raster.GetPixelFormat())) {
        throw UnsupportedPixelFormatException("The pixel format doesn't support channels manipulations.");
    }
}

/// Calls `visit(x, y, channel, walker)` on every sample, rows from the top.
template <class Visit> void PixelAccess::VisitSamples(Visit visit, Bitmap& bitmap) const {
    const auto width = static_cast<std::int32_t>(m_raster.GetWidth());
    const auto height = static_cast<std::int32_t>(m_raster.GetHeight());
    Walker walker(m_raster, nullptr, true);
    const auto channels = static_cast<std::int32_t>(walker.GetChannelCount());
    bitmap._ResetProgress(height);
    for (std::int32_t y = 0; y < height; ++y) {
        for (std::int32_t x = 0; x < width; ++x) {
            for (std::int32_t channel = 0; channel < channels; ++channel) {
                visit(x, y, channel, walker);
                walker.NextChannel();
            }
            walker.NextPixel();
        }
        bitmap._OnProgress(1);
    }
}

PixelArray PixelAccess::Export(Bitmap& bitmap) {
    CheckArrayFormat();
    return CallEngine([&] {
        const auto channels = static_cast<std::int32_t>(engine::PixelFormatChannelCount(m_raster.GetPixelFormat()));
        PixelArray array(static_cast<std::int32_t>(m_raster.GetWidth()), static_cast<std::int32_t>(m_raster.GetHeight()),
                         channels);
        VisitSamples(
            [&](std::int32_t x, std::int32_t y, std::int32_t channel, const Walker& walker) {
                array(x, y, channel) = walker.GetChannel();
            },
            bitmap);
        return array;
    });
}

void PixelAccess::Import(const PixelArray& array, Bitmap& bitmap) {
    if (array.get_IsNull()) {
        throw Host::ArgumentNullException("array");
    }
    CheckArrayFormat();
    if (array.get_Rank() != 3) {
        throw Host::ArgumentException("Number of dimensions should be 3.", "array");
    }
    CallEngine([&] {
        const std::uint32_t channels = engine::PixelFormatChannelCount(m_raster.GetPixelFormat());
        if (std::cmp_not_equal(array.GetLength(0), m_raster.GetWidth()) ||
            std::cmp_not_equal(array.GetLength(1), m_raster.GetHeight()) ||
            std::cmp_not_equal(array.GetLength(2), channels)) {
            throw Host::ArgumentException("Dimensions of array don't correspond to pixel format.", "array");
        }
        VisitSamples(
            [&](std::int32_t x, std::int32_t y, std::int32_t channel, Walker& walker) {
                walker.SetChannelInt(array(x, y, channel));
            },
            bitmap);
    });
}

} // namespace Corvane::Rasterloom
