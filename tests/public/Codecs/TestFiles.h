#pragma once

#include "BmpBuilder.h"
#include "TempFolder.h"

#include <Corvane/Rasterloom/Host/Errors.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace Corvane::Rasterloom::Codecs {

using Bytes = std::vector<std::uint8_t>;

/// A BMP file of 54 bytes of headers, the palette and the pixel bytes as they stand in the file, bottom line first.
inline Bytes BmpFile(std::int32_t width, std::int32_t height, std::uint16_t bits, std::uint32_t compression,
                     const Bytes& palette, const Bytes& pixels, std::uint32_t pixelsPerMetre = 0) {
    return BmpBuilder{.Width = width,
                      .Height = height,
                      .BitCount = bits,
                      .Compression = compression,
                      .PpmX = pixelsPerMetre,
                      .PpmY = pixelsPerMetre,
                      .ColoursUsed = static_cast<std::uint32_t>(palette.size() / 4),
                      .Palette = palette,
                      .Pixels = pixels}
        .Build();
}

/// 2 x 2 pixels: red and green above, blue and white below; 100 dots per inch, nearly.
inline Bytes FourColors() {
    return BmpFile(2, 2, 24, 0, {}, {255, 0, 0, 255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0}, 3937);
}

/// A large file of black pixels, so that its work takes many steps.
inline Bytes BlackFile(std::int32_t width, std::int32_t height) {
    return BmpFile(width, height, 24, 0, {}, Bytes(static_cast<std::size_t>((width * 3 + 3) / 4 * 4 * height)));
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

class FilesTest : public testing::Test, protected TempFolder {
protected:
    std::filesystem::path Write(const std::filesystem::path& name, const Bytes& bytes) const {
        return TempFolder::Write(name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }
    Bytes Read(const std::filesystem::path& name) const {
        const std::string bytes = TempFolder::Read(name);
        return {bytes.begin(), bytes.end()};
    }
    std::size_t CountFiles() const { return Names().size(); }
};

} // namespace Corvane::Rasterloom::Codecs
