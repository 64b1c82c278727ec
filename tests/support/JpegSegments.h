#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

inline std::vector<std::uint8_t> ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Gives `check` the name and the bytes of every file below these folders of the optional test corpus. It tells whether
/// the file had what it looks for; more than `least` files must.
template <class Check>
void ForEachCorpusFile(std::initializer_list<const char*> folders, int least, Check check) {
    const char* const corpus = std::getenv("RASTERLOOM_CORPUS");
    if (corpus == nullptr || *corpus == 0) {
        GTEST_SKIP() << "RASTERLOOM_CORPUS is not set";
    }
    int count = 0;
    for (const char* const folder : folders) {
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(std::filesystem::path(corpus) / folder)) {
            if (entry.is_regular_file()) {
                SCOPED_TRACE(entry.path().string());
                count += check(entry.path().filename().string(), ReadFile(entry.path())) ? 1 : 0;
            }
        }
    }
    EXPECT_GT(count, least);
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

inline std::vector<std::uint8_t> ResourcesOfJpeg(const std::vector<std::uint8_t>& file) {
    return JoinSegments(file, 0xED, std::string_view("Photoshop 3.0\0", 14));
}
