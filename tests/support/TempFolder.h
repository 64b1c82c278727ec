#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>

/// A folder of its own, gone afterwards. Names are taken relative to it.
class TempFolder {
public:
    explicit TempFolder(const std::filesystem::path& place = std::filesystem::temp_directory_path()) {
        std::string name = (place / "testXXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no folder in " + place.string());
        }
        m_folder = name;
    }
    ~TempFolder() { std::filesystem::remove_all(m_folder); }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::filesystem::path File(const std::filesystem::path& name) const { return m_folder / name; }
    std::filesystem::path Write(const std::filesystem::path& name, std::string_view bytes) const {
        std::ofstream(File(name), std::ios::binary) << bytes;
        return File(name);
    }
    std::string Read(const std::filesystem::path& name) const {
        std::ifstream file(File(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// Of all files and folders in it, temporary ones included.
    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder)) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

protected:
    std::filesystem::path m_folder;
};
