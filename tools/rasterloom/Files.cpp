#include "Files.h"

#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <set>
#include <stdexcept>
#include <system_error>

namespace Tool {

using namespace Corvane::Rasterloom;

namespace {

constexpr std::string_view NamePlace = "{}";

std::filesystem::path FillPattern(const std::string& pattern, const std::filesystem::path& input) {
    std::string text = pattern;
    const std::string name = input == Standard ? "stdin" : input.stem().string();
    text.replace(text.find(NamePlace), NamePlace.size(), name);
    return text;
}

} // namespace

std::vector<Task> MakeTasks(const std::vector<std::filesystem::path>& inputs, const std::filesystem::path& output) {
    if (std::error_code error; std::filesystem::is_directory(output, error)) {
        throw UsageError{output.string() + " is a folder; the output is a file, such as " +
                         (output / "{}.png").string()};
    }
    const bool pattern = output.string().find(NamePlace) != std::string::npos;
    if (inputs.size() > 1 && !pattern) {
        throw UsageError{"several inputs need an output with {} in it, which stands for the name of each"};
    }
    std::vector<Task> tasks;
    std::set<std::filesystem::path> taken;
    for (const std::filesystem::path& input : inputs) {
        tasks.push_back({input, pattern ? FillPattern(output.string(), input) : output});
        if (!taken.insert(tasks.back().Output).second) {
            throw UsageError{"two inputs would be saved as " + tasks.back().Output.string()};
        }
    }
    return tasks;
}

std::shared_ptr<Host::Stream> ReadStandardInput() {
    std::vector<std::uint8_t> bytes;
    std::array<std::uint8_t, 65536> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), stdin)) {
        bytes.insert(bytes.end(), block.data(), block.data() + count);
    }
    if (std::ferror(stdin) != 0) {
        throw std::runtime_error("standard input cannot be read");
    }
    return std::make_shared<Host::MemoryStream>(std::move(bytes));
}

std::unique_ptr<Codecs::IFormatReader> OpenPicture(const std::filesystem::path& file) {
    return file == Standard ? Codecs::FormatManager::CreateFormatReader(ReadStandardInput())
                            : Codecs::FormatManager::CreateFormatReader(file);
}

std::int64_t FindFormatForSave(const std::string& extension) {
    std::string wanted = (extension.starts_with('.') ? "*" : "*.") + extension;
    std::ranges::transform(wanted, wanted.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    for (const auto format : Codecs::FormatManager::SupportedMediaFormatsForSave()) {
        const std::string filter = ";" + Codecs::FormatManager::GetFilterString(format) + ";";
        if (filter.find(";" + wanted + ";") != std::string::npos) {
            return format;
        }
    }
    throw Codecs::MediaUnsupportedException();
}

} // namespace Tool
