#include "CommandLine.h"
#include "Commands.h"
#include "InfoCommand.h"

#include <iostream>

// Exit codes: 0 done, 1 a file failed or the work was interrupted, 2 the command line is wrong.

namespace {

using namespace Tool;

constexpr int FileFailed = 1;
constexpr int UsageFailed = 2;

/// Text that did not reach its reader is a failure as well.
int Result(bool complete, const Console& console) {
    if (!console.IsComplete()) {
        std::cerr << "rasterloom: standard output takes no more\n";
    }
    return complete && console.IsComplete() ? 0 : FileFailed;
}

} // namespace

int main(int argc, char** argv) {
    InstallInterruptHandler();
    Request request;
    CLI::App app("Loads, converts, resizes and saves pictures", "rasterloom");
    app.formatter(std::make_shared<HelpFormatter>());
    app.set_help_flag("-h,--help", "Print this help");
    app.set_version_flag("--version", RASTERLOOM_VERSION)->description("Print the version");
    app.require_subcommand(1);
    app.footer("rasterloom COMMAND --help tells the options of a command.");
    const CLI::App* const info = AddInfo(app, request);
    AddConvert(app, request);
    AddThumbnail(app, request);
    const CLI::App* const formats = AddFormats(app);
    for (CLI::App* const command : app.get_subcommands([](const CLI::App*) { return true; })) {
        command->group("Commands");
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : UsageFailed;
    }
    try {
        if (info->parsed()) {
            Console console(false);
            return Result(RunInfo(request.Files, {request.Json, request.Metadata}, console), console);
        }
        if (formats->parsed()) {
            Console console(false);
            RunFormats(console);
            return Result(true, console);
        }
        return RunRequest(request) ? 0 : FileFailed;
    } catch (const UsageError& error) {
        std::cerr << "rasterloom: " << error.Text << '\n';
        return UsageFailed;
    }
}
