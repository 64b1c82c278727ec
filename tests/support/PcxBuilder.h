#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

/// A PCX file put together from its fields; everything may be wrong.
struct PcxBuilder {
    using Bytes = std::vector<std::uint8_t>;

    std::uint8_t Manufacturer = 10;
    std::uint8_t Encoding = 1;
    std::uint8_t Bits = 8;
    std::uint8_t Planes = 1;
    std::uint16_t Width = 1;
    std::uint16_t Height = 1;
    std::uint16_t Left = 0;
    std::uint16_t Top = 0;
    std::uint16_t DpiX = 0;
    std::uint16_t DpiY = 0;
    std::uint16_t BytesPerLine = 1;
    Bytes Palette{}; ///< of the header: red, green, blue
    Bytes Data{};    ///< packed
    Bytes Tail{};    ///< behind the data

    Bytes Build() const {
        Bytes file = {Manufacturer, 5, Encoding, Bits};
        const auto put = [&](std::initializer_list<int> words) {
            for (const int word : words) {
                file.push_back(static_cast<std::uint8_t>(word));
                file.push_back(static_cast<std::uint8_t>(word >> 8));
            }
        };
        put({Left, Top, Left + Width - 1, Top + Height - 1, DpiX, DpiY});
        file.insert(file.end(), Palette.begin(), Palette.end());
        file.resize(65);
        file.push_back(Planes);
        put({BytesPerLine, 1});
        file.resize(128);
        file.insert(file.end(), Data.begin(), Data.end());
        file.insert(file.end(), Tail.begin(), Tail.end());
        return file;
    }

    /// Runs of up to 63 bytes, wherever lines end.
    static Bytes Pack(const Bytes& bytes) {
        Bytes packed;
        for (std::size_t i = 0; i < bytes.size();) {
            std::size_t count = 1;
            while (count < 63 && i + count < bytes.size() && bytes[i + count] == bytes[i]) {
                ++count;
            }
            if (count > 1 || bytes[i] >= 0xC0) {
                packed.push_back(static_cast<std::uint8_t>(0xC0 | count));
            }
            packed.push_back(bytes[i]);
            i += count;
        }
        return packed;
    }

    /// Marker and entries: red i, green 255 - i, blue i xor 85.
    static Bytes FilePalette() {
        Bytes palette = {0x0C};
        for (int i = 0; i < 256; ++i) {
            palette.push_back(static_cast<std::uint8_t>(i));
            palette.push_back(static_cast<std::uint8_t>(255 - i));
            palette.push_back(static_cast<std::uint8_t>(i ^ 85));
        }
        return palette;
    }
};
