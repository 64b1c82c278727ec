#pragma once

#include "Console.h"

#include <filesystem>
#include <vector>

namespace Tool {

/// Prints what each picture is, as text or as one JSON array; true when all could be opened.
bool RunInfo(const std::vector<std::filesystem::path>& files, bool json, Console& console);
/// Prints the list of formats.
void RunFormats(Console& console);

} // namespace Tool
