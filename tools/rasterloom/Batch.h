#pragma once

#include "Console.h"
#include "Files.h"
#include "Operations.h"
#include "SaveChoices.h"

#include <functional>
#include <vector>

namespace Tool {

/// How a run treats its files.
struct BatchOptions {
    /// Files worked on at a time.
    std::int32_t Jobs = 1;
    /// Whether files may be replaced.
    bool Force = false;
    /// Format of what goes to standard output, by extension.
    std::string StandardOutputFormat;
    Settings Choices;
    SaveChoices Saving;
    std::vector<Operation> Operations;
    /// Brings the picture into the bitmap and tells what it is.
    std::function<std::string(Corvane::Rasterloom::Bitmap&, const std::filesystem::path&, const Settings&)> Load;
};

/// Loads, changes and saves each file; a failure of one does not stop the others. True when all went well.
bool RunBatch(const std::vector<Task>& tasks, const BatchOptions& options, Console& console);

} // namespace Tool
