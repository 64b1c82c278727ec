#pragma once

#include "Console.h"
#include "Files.h"
#include "Operations.h"
#include "Picture.h"
#include "SaveChoices.h"

#include <vector>

namespace Tool {

/// How a run treats its files.
struct BatchOptions {
    /// Files worked on at a time; 0 for one on each processor.
    std::int32_t Jobs = 1;
    /// Whether files may be replaced.
    bool Force = false;
    /// Format of what goes to standard output, by extension.
    std::string StandardOutputFormat;
    LoadChoices Loading;
    Settings Choices;
    SaveChoices Saving;
    std::vector<Operation> Operations;
};

/// Loads, changes and saves each file; a failure of one does not stop the others. True when all went well.
bool RunBatch(const std::vector<Task>& tasks, const BatchOptions& options, Console& console);

} // namespace Tool
