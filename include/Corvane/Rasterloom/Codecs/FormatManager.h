#pragma once

#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/IFormatReader.h>
#include <Corvane/Rasterloom/Codecs/IFormatWriter.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Corvane::Rasterloom::Codecs {

/// The lists of readers and writers: finds the one for a file, and takes those of the host.
///
/// The lists hold one object of each codec and hand out clones. All members may be called from any thread. When no
/// codec fits, members fail with `MediaUnsupportedException`.
class RASTERLOOM_API FormatManager {
public:
    FormatManager() = delete;

    /// @name Media formats; a host takes other numbers for formats of its own
    /// @{
    /// What a codec says whose format is known only when a file is open.
    static constexpr std::int64_t UnknownBeforeOpenFormat = -1;
    /// No format.
    static constexpr std::int64_t UnknownFormat = 0;
    /// The number of a format of that name; not each of them has a codec.
    static constexpr std::int64_t JpegFormat = 1;
    static constexpr std::int64_t BmpFormat = 2;
    static constexpr std::int64_t PngFormat = 3;
    static constexpr std::int64_t TiffFormat = 4;
    static constexpr std::int64_t PcxFormat = 5;
    static constexpr std::int64_t WbmpFormat = 6;
    static constexpr std::int64_t GifFormat = 7;
    static constexpr std::int64_t PsdFormat = 8;
    static constexpr std::int64_t PdfFormat = 9;
    static constexpr std::int64_t SwfFormat = 10;
    static constexpr std::int64_t Jpeg2kFormat = 11;
    static constexpr std::int64_t AviFormat = 12;
    static constexpr std::int64_t QuickTimeFormat = 13;
    static constexpr std::int64_t AsfFormat = 14;
    static constexpr std::int64_t Mp3Format = 15;
    static constexpr std::int64_t MpegFormat = 16;
    /// @}

    /// Makes a closed codec; called when it is registered.
    using ReaderFactory = std::function<std::unique_ptr<IFormatReader>()>;
    /// The same for a writer.
    using WriterFactory = std::function<std::unique_ptr<IFormatWriter>()>;

    /// Adds the codec that `reader` makes. One of the same media format is replaced when its `CodecPriority` is lower,
    /// else the old one stays. A codec of the media format 0 or -1 is not added. An empty function fails with
    /// `Host::ArgumentNullException` ("reader", "writer"), one that gives null with `Host::ArgumentException`.
    static void RegisterFormatReader(const ReaderFactory& reader);
    /// The same for a writer.
    static void RegisterFormatWriter(const WriterFactory& writer);

    /// The first reader that knows the content, opened. Null and empty arguments fail with
    /// `Host::ArgumentNullException` ("stream", "fileName").
    static std::unique_ptr<IFormatReader> CreateFormatReader(const std::shared_ptr<Host::Stream>& stream);
    static std::unique_ptr<IFormatReader> CreateFormatReader(const std::filesystem::path& fileName);
    /// Closed.
    static std::unique_ptr<IFormatReader> CreateFormatReader(std::int64_t mediaFormat);
    /// The first writer that has the file's extension in its filter, in any case, opened on the file.
    static std::unique_ptr<IFormatWriter> CreateFormatWriter(const std::filesystem::path& fileName);
    /// Closed.
    static std::unique_ptr<IFormatWriter> CreateFormatWriter(std::int64_t mediaFormat);
    /// The settings that the writer of the format begins with.
    static std::unique_ptr<EncoderOptions> CreateEncoderOptions(std::int64_t mediaFormat);

    /// "All Images (...)|...|" and an entry for each reader, as file dialogs take it, "All Files" at the end.
    static std::string FilterStringForLoad();
    /// The same for the writers, without "All Files".
    static std::string FilterStringForSave();
    /// By content, then by the extension's writer; `UnknownFormat` on any failure.
    static std::int64_t GetMediaFormat(const std::filesystem::path& fileName);
    static std::int64_t GetMediaFormat(const std::shared_ptr<Host::Stream>& stream);
    /// In the order of the lists.
    static std::vector<std::int64_t> SupportedMediaFormatsForLoad();
    /// The same for the writers.
    static std::vector<std::int64_t> SupportedMediaFormatsForSave();

    /// These five tell the vocabulary of a format that has a reader or a writer. The extension with "*." in front.
    static std::string GetDefaultExtension(std::int64_t mediaFormat);
    /// A short name, as "BMP".
    static std::string GetFormatName(std::int64_t mediaFormat);
    /// A name for people.
    static std::string GetFormatDescription(std::int64_t mediaFormat);
    /// All patterns of file names, separated by ";".
    static std::string GetFilterString(std::int64_t mediaFormat);
    /// As "image/bmp".
    static std::string GetMimeType(std::int64_t mediaFormat);
    /// One entry of a file dialog for several formats; repeated ones count once.
    static std::string GetFilterString(const std::vector<std::int64_t>& mediaFormats,
                                       const std::string& title = "Formats");

    /// Holds the lists still for several calls of one thread, which may take the lock more than once.
    static void Lock();
    /// Gives the lock back, once for each `Lock`.
    static void Unlock();
};

} // namespace Corvane::Rasterloom::Codecs
