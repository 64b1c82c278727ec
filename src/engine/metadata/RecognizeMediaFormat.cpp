#include "metadata/RecognizeMediaFormat.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Wbmp/WbmpInteger.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>

namespace ImagingFramework {

namespace {

using namespace std::string_view_literals;

/// Reads forward and goes back over all it read when it dies.
class Probe {
public:
    explicit Probe(IStream* piStream) : m_piStream(piStream) {
        if (piStream == nullptr) {
            throw ArgumentNullPointerException("piStream");
        }
    }
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;
    ~Probe() {
        if (m_uintRead != 0) {
            m_piStream->Seek(-static_cast<std::int64_t>(m_uintRead), SeekOrigin::Current, nullptr);
        }
    }

    /// False when fewer than `size` bytes are left.
    bool Read(void* pBuffer, std::uint64_t size) {
        std::uint64_t count = 0;
        const bool succeeded = m_piStream->Read(pBuffer, size, &count);
        m_uintRead += count;
        return succeeded && count == size;
    }

    /// A side of a wireless bitmap; false when it is no integer or 0.
    bool ReadWbmpSide() {
        WbmpInteger integer;
        WbmpInteger::State state = WbmpInteger::State::Incomplete;
        while (state == WbmpInteger::State::Incomplete) {
            std::uint8_t byte = 0;
            if (!Read(&byte, 1)) {
                return false;
            }
            state = integer.AddByte(byte);
        }
        return state == WbmpInteger::State::Complete && integer.GetValue() != 0;
    }

private:
    IStream* m_piStream;
    std::uint64_t m_uintRead = 0;
};

bool StartsWith(IStream* piStream, std::string_view magic) {
    Probe probe(piStream);
    std::array<char, 16> buffer{};
    return probe.Read(buffer.data(), magic.size()) && std::memcmp(buffer.data(), magic.data(), magic.size()) == 0;
}

struct FormatProbe {
    FileFormat Format;
    bool (*Try)(IStream*);
};

/// The order decides: weak tests stand behind strong ones.
constexpr auto Probes = std::to_array<FormatProbe>({
    {FileFormat::Jpeg, TryJpegFormat}, {FileFormat::Bmp, TryBmpFormat}, {FileFormat::Png, TryPngFormat},
    {FileFormat::Tiff, TryTiffFormat}, {FileFormat::Pcx, TryPcxFormat}, {FileFormat::Wbmp, TryWbmpFormat},
    {FileFormat::Gif, TryGifFormat},   {FileFormat::Psd, TryPsdFormat}, {FileFormat::Jpeg2k, TryJpeg2kFormat},
    {FileFormat::Avi, TryAviFormat},   {FileFormat::Asf, TryAsfFormat},
});

struct ExtensionFormat {
    std::string_view Extension;
    FileFormat Format;
};

constexpr ExtensionFormat Extensions[] = {
    {"jpg", FileFormat::Jpeg},   {"jpeg", FileFormat::Jpeg}, {"jpe", FileFormat::Jpeg},  {"bmp", FileFormat::Bmp},
    {"dib", FileFormat::Bmp},    {"png", FileFormat::Png},   {"tiff", FileFormat::Tiff}, {"tif", FileFormat::Tiff},
    {"pcx", FileFormat::Pcx},    {"wbmp", FileFormat::Wbmp}, {"gif", FileFormat::Gif},   {"psd", FileFormat::Psd},
    {"jp2", FileFormat::Jpeg2k}, {"avi", FileFormat::Avi},   {"asf", FileFormat::Asf},   {"wmv", FileFormat::Asf},
    {"wma", FileFormat::Asf},
};

/// The format that the name of a file promises, `Unknown` without one. Upper-case extensions promise nothing.
FileFormat FormatByName(IStream* piStream) {
    const auto* const pFile = dynamic_cast<const IFileStream*>(piStream);
    if (pFile == nullptr) {
        return FileFormat::Unknown;
    }
    const std::string name = pFile->GetFileName().string();
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos) {
        return FileFormat::Unknown;
    }
    const std::string_view extension = std::string_view(name).substr(dot + 1);
    for (const ExtensionFormat& entry : Extensions) {
        if (entry.Extension == extension) {
            return entry.Format;
        }
    }
    return FileFormat::Unknown;
}

} // namespace

bool TryJpegFormat(IStream* piStream) {
    return StartsWith(piStream, "\xFF\xD8\xFF"sv);
}

bool TryBmpFormat(IStream* piStream) {
    return StartsWith(piStream, "BM"sv);
}

bool TryPngFormat(IStream* piStream) {
    return StartsWith(piStream, "\x89PNG"sv);
}

bool TryTiffFormat(IStream* piStream) {
    return StartsWith(piStream, "II"sv) || StartsWith(piStream, "MM"sv);
}

bool TryPcxFormat(IStream* piStream) {
    Probe probe(piStream);
    std::array<std::uint8_t, 3> head{};
    return probe.Read(head.data(), head.size()) && head[0] == 0x0A && head[2] == 1;
}

bool TryWbmpFormat(IStream* piStream) {
    Probe probe(piStream);
    std::array<std::uint8_t, 2> head{};
    std::uint8_t next = 0;
    return probe.Read(head.data(), head.size()) && head[0] == 0 && head[1] == 0 && probe.ReadWbmpSide() &&
           probe.ReadWbmpSide() && probe.Read(&next, 1);
}

bool TryGifFormat(IStream* piStream) {
    return StartsWith(piStream, "GIF"sv);
}

bool TryPsdFormat(IStream* piStream) {
    return StartsWith(piStream, "8BPS"sv);
}

bool TryJpeg2kFormat(IStream* piStream) {
    return StartsWith(piStream, "\0\0\0\x0CjP  \r\n\x87\n"sv);
}

bool TryAviFormat(IStream* piStream) {
    return StartsWith(piStream, "RIFF"sv);
}

bool TryAsfFormat(IStream* piStream) {
    return StartsWith(piStream, "\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"sv);
}

bool TryMediaFormat(FileFormat format, IStream* piStream) {
    const auto* const found = std::ranges::find(Probes, format, &FormatProbe::Format);
    return found != Probes.end() && found->Try(piStream);
}

FileFormat RecognizeMediaFormat(IStream* piStream) {
    if (piStream == nullptr) {
        throw ArgumentNullPointerException("piStream");
    }
    auto probes = Probes;
    const auto promised = std::ranges::find(probes, FormatByName(piStream), &FormatProbe::Format);
    if (promised != probes.end()) {
        std::rotate(probes.begin(), promised, promised + 1); // it comes first, the others keep their order
    }
    const auto found = std::ranges::find_if(probes, [&](const FormatProbe& probe) { return probe.Try(piStream); });
    return found != probes.end() ? found->Format : FileFormat::Unknown;
}

} // namespace ImagingFramework
