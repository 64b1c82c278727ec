#pragma once

#include <Corvane/Rasterloom/Host/Errors.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace Corvane::Rasterloom::Codecs {

using Bytes = std::vector<std::uint8_t>;

/// A BMP file of 54 bytes of headers, the palette and the pixel bytes as they stand in the file, bottom line first.
inline Bytes BmpFile(std::uint32_t width, std::uint32_t height, std::uint16_t bits, std::uint32_t compression,
                     const Bytes& palette, const Bytes& pixels, std::uint32_t pixelsPerMetre = 0) {
    Bytes file = {'B', 'M'};
    const auto put = [&](std::uint32_t value, int count) {
        for (int i = 0; i < count; ++i) {
            file.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    };
    const auto offset = static_cast<std::uint32_t>(54 + palette.size());
    put(static_cast<std::uint32_t>(offset + pixels.size()), 4);
    put(0, 4);
    put(offset, 4);
    put(40, 4);
    put(width, 4);
    put(height, 4);
    put(1, 2);
    put(bits, 2);
    put(compression, 4);
    put(0, 4);
    put(pixelsPerMetre, 4);
    put(pixelsPerMetre, 4);
    put(static_cast<std::uint32_t>(palette.size() / 4), 4);
    put(0, 4);
    file.insert(file.end(), palette.begin(), palette.end());
    file.insert(file.end(), pixels.begin(), pixels.end());
    return file;
}

/// 2 x 2 pixels: red and green above, blue and white below; 100 dots per inch, nearly.
inline Bytes FourColors() {
    return BmpFile(2, 2, 24, 0, {}, {255, 0, 0, 255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0}, 3937);
}

/// A large file of black pixels, so that its work takes many steps.
inline Bytes BlackFile(std::uint32_t width, std::uint32_t height) {
    return BmpFile(width, height, 24, 0, {}, Bytes((width * 3 + 3) / 4 * 4 * height));
}

inline std::shared_ptr<Host::MemoryStream> StreamOf(Bytes bytes) {
    return std::make_shared<Host::MemoryStream>(std::move(bytes));
}

/// A stream that gives its bytes once.
class OneWayStream : public Host::MemoryStream {
public:
    using Host::MemoryStream::MemoryStream;
    bool get_CanSeek() const override { return false; }
    std::int64_t get_Length() override { throw Host::NotSupportedException(); }
    std::int64_t get_Position() override { throw Host::NotSupportedException(); }
    std::int64_t Seek(std::int64_t, Host::SeekOrigin) override { throw Host::NotSupportedException(); }
};

/// A folder of its own for each test, gone afterwards.
class FilesTest : public testing::Test {
protected:
    FilesTest() {
        const auto* const info = testing::UnitTest::GetInstance()->current_test_info();
        m_folder = std::filesystem::temp_directory_path() /
                   (std::string("rasterloom_") + info->test_suite_name() + "_" + info->name());
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
    }
    ~FilesTest() override { std::filesystem::remove_all(m_folder); }

    std::filesystem::path File(const std::string& name) const { return m_folder / name; }
    std::filesystem::path Write(const std::string& name, const Bytes& bytes) const {
        std::ofstream(File(name), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return File(name);
    }
    Bytes Read(const std::string& name) const {
        std::ifstream file(File(name), std::ios::binary);
        return Bytes(std::istreambuf_iterator<char>(file), {});
    }
    /// How many files there are, temporary ones included.
    std::ptrdiff_t CountFiles() const {
        return std::distance(std::filesystem::directory_iterator(m_folder), std::filesystem::directory_iterator());
    }

private:
    std::filesystem::path m_folder;
};

} // namespace Corvane::Rasterloom::Codecs
