#pragma once

#include <Corvane/Rasterloom/Codecs/IFormatReader.h>
#include <Corvane/Rasterloom/Host/Stream.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace Tool {

/// Standard input as a source, standard output as a target.
inline const std::filesystem::path Standard = "-";

/// One picture on its way.
struct Task {
    std::filesystem::path Input;
    std::filesystem::path Output;
};

/// Thrown for a command line that cannot be meant; exit code 2.
struct UsageError {
    std::string Text;
};

/// Pairs each input with its output: for several inputs `output` is a pattern in which "{}" stands for the input's name
/// without folder and extension. Fails with `UsageError` for two inputs that would go to one file.
std::vector<Task> MakeTasks(const std::vector<std::filesystem::path>& inputs, const std::filesystem::path& output);

/// All of standard input; it can be read once.
std::shared_ptr<Corvane::Rasterloom::Host::Stream> ReadStandardInput();
/// Opens a file, or standard input for "-".
std::unique_ptr<Corvane::Rasterloom::Codecs::IFormatReader> OpenPicture(const std::filesystem::path& file);
/// The format with this extension, with or without its dot, among those that can be saved. Fails with
/// `MediaUnsupportedException`.
std::int64_t FindFormatForSave(const std::string& extension);

} // namespace Tool
