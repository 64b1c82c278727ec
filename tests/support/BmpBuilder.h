#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// A BMP file put together from its fields; everything may be wrong.
struct BmpBuilder {
    using Bytes = std::vector<std::uint8_t>;

    std::string Magic = "BM";
    std::uint32_t HeaderSize = 40;
    std::int32_t Width = 1;
    std::int32_t Height = 1;
    std::uint16_t BitCount = 24;
    std::uint32_t Compression = 0;
    std::uint32_t PpmX = 0;
    std::uint32_t PpmY = 0;
    std::uint32_t ColoursUsed = 0;
    Bytes HeaderRest{}; ///< behind the fields of the 40-byte form; cut or filled to the header size
    Bytes Palette{};    ///< everything between headers and pixels
    Bytes Pixels{};
    std::int64_t PixelOffset = -1; ///< -1: the right one

    Bytes Build() const {
        Bytes file(Magic.begin(), Magic.end());
        const std::size_t headersEnd = 14 + HeaderSize;
        Put(file, headersEnd + Palette.size() + Pixels.size(), 4);
        Put(file, 0, 4); // reserved
        Put(file, PixelOffset >= 0 ? static_cast<std::uint64_t>(PixelOffset) : headersEnd + Palette.size(), 4);
        Put(file, HeaderSize, 4);
        const int sizeBytes = HeaderSize == 12 ? 2 : 4;
        Put(file, static_cast<std::uint32_t>(Width), sizeBytes);
        Put(file, static_cast<std::uint32_t>(Height), sizeBytes);
        Put(file, 1, 2);
        Put(file, BitCount, 2);
        if (HeaderSize != 12) {
            for (const std::uint32_t field : {Compression, 0U, PpmX, PpmY, ColoursUsed, 0U}) {
                Put(file, field, 4);
            }
            file.insert(file.end(), HeaderRest.begin(), HeaderRest.end());
            file.resize(std::max<std::size_t>(file.size() - HeaderRest.size(), headersEnd));
        }
        file.insert(file.end(), Palette.begin(), Palette.end());
        file.insert(file.end(), Pixels.begin(), Pixels.end());
        return file;
    }

    static void Put(Bytes& bytes, std::uint64_t value, int count) {
        for (int i = 0; i < count; ++i) {
            bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    }
};
