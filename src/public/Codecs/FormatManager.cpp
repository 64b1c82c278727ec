#include <Corvane/Rasterloom/Codecs/FormatManager.h>

#include <Corvane/Rasterloom/Codecs/BmpReader.h>
#include <Corvane/Rasterloom/Codecs/BmpWriter.h>
#include <Corvane/Rasterloom/Codecs/JpegReader.h>
#include <Corvane/Rasterloom/Codecs/JpegWriter.h>
#include <Corvane/Rasterloom/Codecs/NonSeekableStreamProxy.h>
#include <Corvane/Rasterloom/Codecs/PcxReader.h>
#include <Corvane/Rasterloom/Codecs/PngReader.h>
#include <Corvane/Rasterloom/Codecs/PngWriter.h>
#include <Corvane/Rasterloom/Codecs/WbmpReader.h>
#include <Corvane/Rasterloom/Codecs/WbmpWriter.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/FileStream.h>

#include <algorithm>
#include <mutex>
#include <string_view>
#include <utility>

namespace Corvane::Rasterloom::Codecs {

namespace {

template <class Codec>
using CodecList = std::vector<std::unique_ptr<Codec>>;

/// One object of each codec, in the order in which they are asked.
class Registry {
public:
    static Registry& GetInstance() {
        static Registry instance;
        return instance;
    }

    /// Recursive: codecs of the host are called with it held, and may call `FormatManager` themselves.
    std::recursive_mutex Mutex;
    CodecList<IFormatReader> Readers;
    CodecList<IFormatWriter> Writers;

private:
    Registry() {
        Readers.push_back(std::make_unique<BmpReader>());
        Readers.push_back(std::make_unique<JpegReader>());
        Readers.push_back(std::make_unique<PngReader>());
        Readers.push_back(std::make_unique<PcxReader>());
        Readers.push_back(std::make_unique<WbmpReader>());
        Writers.push_back(std::make_unique<BmpWriter>());
        Writers.push_back(std::make_unique<JpegWriter>());
        Writers.push_back(std::make_unique<PngWriter>());
        Writers.push_back(std::make_unique<WbmpWriter>());
    }
};

template <class Codec>
CodecList<Codec>& ListOf(Registry& registry) {
    if constexpr (std::is_same_v<Codec, IFormatReader>) {
        return registry.Readers;
    } else {
        return registry.Writers;
    }
}

/// Runs `body` on the list of one kind of codec, locked.
template <class Codec, class Body>
auto WithList(Body body) {
    Registry& registry = Registry::GetInstance();
    const std::lock_guard lock(registry.Mutex);
    return body(ListOf<Codec>(registry));
}

/// A clone of the first codec that `matches`; null when none does.
template <class Codec, class Match>
std::unique_ptr<Codec> CloneFirst(Match matches) {
    return WithList<Codec>([&](CodecList<Codec>& list) {
        const auto found = std::ranges::find_if(list, [&](const auto& codec) { return matches(*codec); });
        return found != list.end() ? (*found)->Clone() : nullptr;
    });
}

template <class Codec>
std::unique_ptr<Codec> CloneOfFormat(std::int64_t mediaFormat) {
    return CloneFirst<Codec>([&](Codec& codec) { return codec.get_MediaFormat() == mediaFormat; });
}

template <class Codec>
std::unique_ptr<Codec> Require(std::unique_ptr<Codec> codec) {
    if (!codec) {
        throw MediaUnsupportedException();
    }
    return codec;
}

template <class Codec>
void Register(const std::function<std::unique_ptr<Codec>()>& factory, const char* argument) {
    if (!factory) {
        throw Host::ArgumentNullException(argument);
    }
    std::unique_ptr<Codec> codec = factory();
    if (!codec) {
        throw Host::ArgumentException(std::string("Erroneous ") + argument + " type.", argument);
    }
    const std::int64_t mediaFormat = codec->get_MediaFormat();
    if (mediaFormat == FormatManager::UnknownFormat || mediaFormat == FormatManager::UnknownBeforeOpenFormat) {
        return;
    }
    WithList<Codec>([&](CodecList<Codec>& list) {
        const auto old =
            std::ranges::find_if(list, [&](const auto& entry) { return entry->get_MediaFormat() == mediaFormat; });
        if (old == list.end()) {
            list.push_back(std::move(codec));
        } else if ((*old)->get_CodecPriority() < codec->get_CodecPriority()) {
            std::swap(*old, codec); // the old one dies with this call, outside the list
        }
    });
}

std::string ToLower(std::string text) {
    std::ranges::transform(text, text.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

/// Whether one of the elements between ";" equals `pattern`, which is in lower case.
bool FilterContains(const std::string& filter, std::string_view pattern) {
    const std::string lower = ToLower(filter);
    for (std::size_t begin = 0; begin <= lower.size();) {
        const std::size_t end = std::min(lower.find(';', begin), lower.size());
        if (std::string_view(lower).substr(begin, end - begin) == pattern) {
            return true;
        }
        begin = end + 1;
    }
    return false;
}

/// The writer for a file name, not opened; null when there is none.
std::unique_ptr<IFormatWriter> FindWriter(const std::filesystem::path& fileName) {
    if (fileName.empty()) {
        throw Host::ArgumentNullException("fileName");
    }
    const std::string name = fileName.filename().string();
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos) {
        return nullptr;
    }
    const std::string pattern = "*" + ToLower(name.substr(dot));
    return CloneFirst<IFormatWriter>(
        [&](IFormatWriter& writer) { return FilterContains(writer.get_FilterString(), pattern); });
}

/// A clone of the first reader that takes the stream. Clones are asked, without the lock: a stream may be slow, and other
/// threads shall not wait for it.
std::unique_ptr<IFormatReader> FindReader(const std::shared_ptr<Host::Stream>& stream) {
    std::unique_ptr<IFormatReader> reader;
    const auto take = [&](std::size_t index) {
        return WithList<IFormatReader>([&](const CodecList<IFormatReader>& list) {
            reader = index < list.size() ? list[index]->Clone() : nullptr;
            return index < list.size();
        });
    };
    for (std::size_t index = 0; take(index); ++index) {
        if (reader && reader->CheckForSupport(stream)) {
            return reader;
        }
    }
    throw MediaUnsupportedException();
}

/// The "all" entry and the entries of each codec, as a file dialog takes them; empty for an empty list.
template <class Codec>
std::string BuildFilter() {
    return WithList<Codec>([](CodecList<Codec>& list) -> std::string {
        std::string all;
        std::string entries;
        for (const auto& codec : list) {
            const std::string filter = codec->get_FilterString();
            all += (entries.empty() ? "" : ";") + filter;
            entries += (entries.empty() ? "" : "|") + codec->get_FormatDescription() + " (" + filter + ")|" + filter;
        }
        return list.empty() ? std::string() : "All Images (" + all + ")|" + all + "|" + entries;
    });
}

template <class Codec>
std::vector<std::int64_t> ListFormats() {
    return WithList<Codec>([](CodecList<Codec>& list) {
        std::vector<std::int64_t> formats;
        for (const auto& codec : list) {
            formats.push_back(codec->get_MediaFormat());
        }
        return formats;
    });
}

std::string Describe(std::int64_t mediaFormat, std::string (IFormatInfo::*property)()) {
    if (const auto reader = CloneOfFormat<IFormatReader>(mediaFormat)) {
        return (reader.get()->*property)();
    }
    return (Require(CloneOfFormat<IFormatWriter>(mediaFormat)).get()->*property)();
}

} // namespace

void FormatManager::RegisterFormatReader(const ReaderFactory& reader) { Register<IFormatReader>(reader, "reader"); }

void FormatManager::RegisterFormatWriter(const WriterFactory& writer) { Register<IFormatWriter>(writer, "writer"); }

std::unique_ptr<IFormatReader> FormatManager::CreateFormatReader(const std::shared_ptr<Host::Stream>& stream) {
    if (!stream) {
        throw Host::ArgumentNullException("stream");
    }
    const auto proxy = std::make_shared<NonSeekableStreamProxy>(stream);
    auto reader = FindReader(proxy);
    reader->Open(proxy);
    return reader;
}

std::unique_ptr<IFormatReader> FormatManager::CreateFormatReader(const std::filesystem::path& fileName) {
    if (fileName.empty()) {
        throw Host::ArgumentNullException("fileName");
    }
    const auto file = std::make_shared<Host::FileStream>(fileName, Host::FileMode::Open, Host::FileAccess::Read);
    if (!file->get_CanSeek()) {
        return CreateFormatReader(file); // a pipe gives its bytes once
    }
    auto reader = FindReader(file);
    file->Close();
    reader->Open(fileName);
    return reader;
}

std::unique_ptr<IFormatReader> FormatManager::CreateFormatReader(std::int64_t mediaFormat) {
    return Require(CloneOfFormat<IFormatReader>(mediaFormat));
}

std::unique_ptr<IFormatWriter> FormatManager::CreateFormatWriter(const std::filesystem::path& fileName) {
    auto writer = Require(FindWriter(fileName));
    writer->Open(fileName);
    return writer;
}

std::unique_ptr<IFormatWriter> FormatManager::CreateFormatWriter(std::int64_t mediaFormat) {
    return Require(CloneOfFormat<IFormatWriter>(mediaFormat));
}

std::unique_ptr<EncoderOptions> FormatManager::CreateEncoderOptions(std::int64_t mediaFormat) {
    return CreateFormatWriter(mediaFormat)->ExportEncoderOptions();
}

std::string FormatManager::FilterStringForLoad() {
    const std::string filter = BuildFilter<IFormatReader>();
    return filter + (filter.empty() ? "" : "|") + "All Files (*.*)|*.*";
}

std::string FormatManager::FilterStringForSave() { return BuildFilter<IFormatWriter>(); }

std::int64_t FormatManager::GetMediaFormat(const std::filesystem::path& fileName) {
    try {
        return CreateFormatReader(fileName)->get_MediaFormat();
    } catch (const std::exception&) {
        // By the name then.
    }
    try {
        const auto writer = FindWriter(fileName);
        return writer ? writer->get_MediaFormat() : UnknownFormat;
    } catch (const std::exception&) {
        return UnknownFormat;
    }
}

std::int64_t FormatManager::GetMediaFormat(const std::shared_ptr<Host::Stream>& stream) {
    try {
        return CreateFormatReader(stream)->get_MediaFormat();
    } catch (const std::exception&) {
        return UnknownFormat;
    }
}

std::vector<std::int64_t> FormatManager::SupportedMediaFormatsForLoad() { return ListFormats<IFormatReader>(); }

std::vector<std::int64_t> FormatManager::SupportedMediaFormatsForSave() { return ListFormats<IFormatWriter>(); }

std::string FormatManager::GetDefaultExtension(std::int64_t mediaFormat) {
    return Describe(mediaFormat, &IFormatInfo::get_DefaultExtension);
}

std::string FormatManager::GetFormatName(std::int64_t mediaFormat) {
    return Describe(mediaFormat, &IFormatInfo::get_FormatName);
}

std::string FormatManager::GetFormatDescription(std::int64_t mediaFormat) {
    return Describe(mediaFormat, &IFormatInfo::get_FormatDescription);
}

std::string FormatManager::GetFilterString(std::int64_t mediaFormat) {
    return Describe(mediaFormat, &IFormatInfo::get_FilterString);
}

std::string FormatManager::GetMimeType(std::int64_t mediaFormat) {
    return Describe(mediaFormat, &IFormatInfo::get_MimeType);
}

std::string FormatManager::GetFilterString(const std::vector<std::int64_t>& mediaFormats, const std::string& title) {
    std::string all;
    for (auto format = mediaFormats.begin(); format != mediaFormats.end(); ++format) {
        if (std::find(mediaFormats.begin(), format, *format) == format) {
            all += (all.empty() ? "" : ";") + GetFilterString(*format);
        }
    }
    return title + " (" + all + ")|" + all;
}

void FormatManager::Lock() { Registry::GetInstance().Mutex.lock(); }

void FormatManager::Unlock() { Registry::GetInstance().Mutex.unlock(); }

} // namespace Corvane::Rasterloom::Codecs
