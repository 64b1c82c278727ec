#pragma once

#include "ErrorHandling/Exceptions.h"
#include "metadata/Exif/IThumbnailCodec.h"

#include <cstdint>
#include <span>
#include <vector>

/// Stands in for a codec while it lives. A "file" of it is two bytes of any value, width, height, and 24-bit pixels.
/// Keeps the last file it was given.
class TestThumbnailCodec : public ImagingFramework::IThumbnailCodec {
public:
    explicit TestThumbnailCodec(ImagingFramework::FileFormat format)
        : m_format(format), m_pBefore(Register(format, this)) {}
    ~TestThumbnailCodec() override { Register(m_format, m_pBefore); }

    void Decode(std::span<const std::uint8_t> file, ImagingFramework::BitmapData& raster) const override {
        LastFile.assign(file.begin(), file.end());
        if (m_format == ImagingFramework::FileFormat::Tiff) {
            raster.Create(1, 1, ImagingFramework::PixelFormat::Format24bppRgb);
            return;
        }
        if (file.size() < 4 || file.size() - 4 < std::size_t{file[2]} * file[3] * 3) {
            throw ImagingFramework::MediaCorruptedException();
        }
        raster.Create(file[2], file[3], ImagingFramework::PixelFormat::Format24bppRgb);
        for (std::uint32_t y = 0; y < file[3]; ++y) {
            for (std::uint32_t i = 0; i < 3U * file[2]; ++i) {
                raster.GetScanlineRef(y)[i] = file[4 + y * 3 * file[2] + i];
            }
        }
    }
    std::vector<std::uint8_t> Encode(const ImagingFramework::BitmapData& raster) const override {
        std::vector<std::uint8_t> file = {0xFF, 0xD8, static_cast<std::uint8_t>(raster.GetWidth()),
                                          static_cast<std::uint8_t>(raster.GetHeight())};
        for (std::uint32_t y = 0; y < raster.GetHeight(); ++y) {
            const std::uint8_t* const pRow = raster.GetScanlineRef(y);
            file.insert(file.end(), pRow, pRow + 3 * raster.GetWidth());
        }
        return file;
    }

    mutable std::vector<std::uint8_t> LastFile;

private:
    ImagingFramework::FileFormat m_format;
    const ImagingFramework::IThumbnailCodec* m_pBefore;
};
