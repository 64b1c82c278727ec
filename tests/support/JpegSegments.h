#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

/// The folder of the optional test corpus; empty when there is none.
inline std::filesystem::path CorpusFolder() {
    const char* const folder = std::getenv("RASTERLOOM_CORPUS");
    return folder != nullptr ? folder : "";
}

inline std::vector<std::uint8_t> ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What stands behind `identifier` in the segments of a JPEG file that have this marker and begin with it, joined.
inline std::vector<std::uint8_t> JoinSegments(const std::vector<std::uint8_t>& file, std::uint8_t marker,
                                              std::string_view identifier) {
    std::vector<std::uint8_t> joined;
    for (std::size_t at = 2; at + 4 <= file.size() && file[at] == 0xFF && file[at + 1] != 0xDA;) {
        const std::size_t size = static_cast<std::size_t>(file[at + 2]) << 8 | file[at + 3];
        const std::size_t end = std::min(at + 2 + size, file.size());
        const std::string_view content(reinterpret_cast<const char*>(file.data()) + at + 4,
                                       end - std::min(at + 4, end));
        if (file[at + 1] == marker && content.starts_with(identifier)) {
            joined.insert(joined.end(), content.begin() + static_cast<std::ptrdiff_t>(identifier.size()),
                          content.end());
        }
        at = std::max(end, at + 4);
    }
    return joined;
}

inline std::vector<std::uint8_t> ResourcesOfJpeg(const std::filesystem::path& path) {
    return JoinSegments(ReadFile(path), 0xED, std::string_view("Photoshop 3.0\0", 14));
}

inline std::vector<std::uint8_t> XmpOfJpeg(const std::filesystem::path& path) {
    return JoinSegments(ReadFile(path), 0xE1, std::string_view("http://ns.adobe.com/xap/1.0/\0", 29));
}
