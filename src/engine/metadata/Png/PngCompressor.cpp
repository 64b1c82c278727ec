#include "metadata/Png/PngCompressor.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Png/PngMemory.h"

#include <array>
#include <bit>
#include <cstring>

namespace ImagingFramework {

namespace {

struct PngType {
    int ColorType;
    int BitDepth;
};

PngType TypeOf(PixelFormat format) {
    switch (format) {
    case PixelFormat::Format1bppIndexed:
        return {PNG_COLOR_TYPE_PALETTE, 1};
    case PixelFormat::Format4bppIndexed:
        return {PNG_COLOR_TYPE_PALETTE, 4};
    case PixelFormat::Format8bppIndexed:
        return {PNG_COLOR_TYPE_PALETTE, 8};
    case PixelFormat::Format8bppGrayScale:
        return {PNG_COLOR_TYPE_GRAY, 8};
    case PixelFormat::Format16bppGrayScale:
        return {PNG_COLOR_TYPE_GRAY, 16};
    case PixelFormat::Format16bppAGrayScale:
        return {PNG_COLOR_TYPE_GRAY_ALPHA, 8};
    case PixelFormat::Format32bppAGrayScale:
        return {PNG_COLOR_TYPE_GRAY_ALPHA, 16};
    case PixelFormat::Format24bppRgb:
    case PixelFormat::Format32bppRgb:
        return {PNG_COLOR_TYPE_RGB, 8};
    case PixelFormat::Format48bppRgb:
        return {PNG_COLOR_TYPE_RGB, 16};
    case PixelFormat::Format32bppArgb:
        return {PNG_COLOR_TYPE_RGB_ALPHA, 8};
    case PixelFormat::Format64bppArgb:
        return {PNG_COLOR_TYPE_RGB_ALPHA, 16};
    default:
        throw UnsupportedPixelFormatException();
    }
}

int FilterMask(PngFilter filter) {
    switch (filter) {
    case PngFilter::None:
        return PNG_FILTER_NONE;
    case PngFilter::Sub:
        return PNG_FILTER_SUB;
    case PngFilter::Up:
        return PNG_FILTER_UP;
    case PngFilter::Average:
        return PNG_FILTER_AVG;
    case PngFilter::Paeth:
        return PNG_FILTER_PAETH;
    default:
        return PNG_ALL_FILTERS;
    }
}

/// Whether the profile says that it is for gray or, respectively, for red, green and blue.
bool IsProfileFor(std::span<const std::uint8_t> profile, bool gray) {
    constexpr std::size_t headerSize = 128;
    constexpr std::size_t spaceOffset = 16;
    return profile.size() >= headerSize && std::memcmp(profile.data() + spaceOffset, gray ? "GRAY" : "RGB ", 4) == 0;
}

} // namespace

PngCompressor::PngCompressor(AbstractWriter& writer) : m_writer(writer) {
    m_guard.Call([this] {
        m_library.pPng = png_create_write_struct_2(PNG_LIBPNG_VER_STRING, this, PngLibError, PngLibWarning, &m_guard,
                                                   PngMemory::Allocate, PngMemory::Free);
        m_library.pInfo = m_library.pPng == nullptr ? nullptr : png_create_info_struct(m_library.pPng);
    });
    if (m_library.pInfo == nullptr) {
        throw MemoryException();
    }
}

void PngCompressor::PngLibError(png_structp pPng, png_const_charp) noexcept {
    auto& self = *static_cast<PngCompressor*>(png_get_error_ptr(pPng));
    self.m_guard.Leave([] { throw UnexpectedException(); });
}

void PngCompressor::PngLibWriteData(png_structp pPng, png_bytep pData, std::size_t count) noexcept {
    auto& self = *static_cast<PngCompressor*>(png_get_io_ptr(pPng));
    self.m_guard.TryOrJump([&] { self.m_writer.WriteBytes(pData, count); });
}

void PngCompressor::Configure(PixelFormat format, std::uint32_t width, std::uint32_t height, const PngSettings& settings) {
    const PngType type = TypeOf(format);
    m_format = format;
    m_guard.Call([&] {
        const png_structp pPng = m_library.pPng;
        png_set_write_fn(pPng, this, PngLibWriteData, PngLibFlush);
        png_set_benign_errors(pPng, 1);
        png_set_user_limits(pPng, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_set_IHDR(pPng, m_library.pInfo, width, height, type.BitDepth, type.ColorType,
                     settings.Interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                     PNG_FILTER_TYPE_DEFAULT);
        if (settings.CompressionLevel != PngSettings::DefaultLevel) {
            png_set_compression_level(pPng, settings.CompressionLevel);
        }
        if (settings.Filter != PngFilter::Default) {
            png_set_filter(pPng, PNG_FILTER_TYPE_BASE, FilterMask(settings.Filter));
        }
    });
}

void PngCompressor::SetResolution(std::uint32_t horizontal, std::uint32_t vertical) {
    m_guard.Call([&] { png_set_pHYs(m_library.pPng, m_library.pInfo, horizontal, vertical, PNG_RESOLUTION_METER); });
}

void PngCompressor::SetPalette(const ColorMap& map, std::uint32_t count) {
    std::array<png_color, ColorMap::MaximumEntryCount> colors{};
    std::array<png_byte, ColorMap::MaximumEntryCount> alphas{};
    bool hasAlpha = false;
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint8_t entry[4];
        map.GetEntryArgb(i, entry);
        colors[i] = {entry[2], entry[1], entry[0]};
        alphas[i] = entry[3];
        hasAlpha = hasAlpha || entry[3] != 255;
    }
    m_guard.Call([&] {
        png_set_PLTE(m_library.pPng, m_library.pInfo, colors.data(), static_cast<int>(count));
        if (hasAlpha) {
            png_set_tRNS(m_library.pPng, m_library.pInfo, alphas.data(), static_cast<int>(count), nullptr);
        }
    });
}

void PngCompressor::SetProfile(std::span<const std::uint8_t> profile) {
    const bool gray = (TypeOf(m_format).ColorType & PNG_COLOR_MASK_COLOR) == 0;
    if (!IsProfileFor(profile, gray)) {
        return;
    }
    m_guard.Call([&] {
        png_set_iCCP(m_library.pPng, m_library.pInfo, "ICC Profile", PNG_COMPRESSION_TYPE_BASE, profile.data(),
                     static_cast<png_uint_32>(profile.size()));
    });
}

std::uint32_t PngCompressor::Start() {
    int passes = 1;
    m_guard.Call([&] {
        const png_structp pPng = m_library.pPng;
        png_write_info(pPng, m_library.pInfo);
        png_set_bgr(pPng);
        if constexpr (std::endian::native == std::endian::little) {
            png_set_swap(pPng);
        }
        if (m_format == PixelFormat::Format32bppRgb) {
            png_set_filler(pPng, 0, PNG_FILLER_AFTER);
        }
        passes = png_set_interlace_handling(pPng);
    });
    return static_cast<std::uint32_t>(passes);
}

void PngCompressor::WriteLine(const std::uint8_t* pLine) {
    m_guard.Call([&] { png_write_row(m_library.pPng, pLine); });
}

void PngCompressor::Finish() {
    m_guard.Call([this] { png_write_end(m_library.pPng, m_library.pInfo); });
}

} // namespace ImagingFramework
