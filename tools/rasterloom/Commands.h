#pragma once

#include "Batch.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <vector>

namespace Tool {

/// What the command line asks for.
struct Request {
    std::vector<std::filesystem::path> Files;
    bool Json = false;
    bool Metadata = false;
    BatchOptions Batch;
};

// Each adds a command whose options write to the request. The command calls nothing.
CLI::App* AddInfo(CLI::App& app, Request& request);
CLI::App* AddConvert(CLI::App& app, Request& request);
CLI::App* AddThumbnail(CLI::App& app, Request& request);
CLI::App* AddFormats(CLI::App& app);

/// Pairs files, adds the steps that choices bring along and works. True when all went well; fails with `UsageError`.
bool RunRequest(Request& request);

} // namespace Tool
