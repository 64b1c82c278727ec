#pragma once

#include "Console.h"

#include <filesystem>
#include <vector>

namespace Tool {

/// What is told of each file.
struct InfoChoices {
    bool Json = false;
    bool Metadata = false;
};

/// Prints what each picture is, as text or as one JSON array; true when all could be opened.
bool RunInfo(const std::vector<std::filesystem::path>& files, const InfoChoices& choices, Console& console);
/// Prints the list of formats.
void RunFormats(Console& console);

} // namespace Tool
