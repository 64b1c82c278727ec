#include "CommandLine.h"

#include <sstream>
#include <utility>

namespace Tool {

namespace {

constexpr std::size_t LineWidth = 80;
constexpr std::size_t TextColumn = 28;
constexpr std::size_t Indent = 2;

/// `text` broken at spaces, each line but the first behind `column` spaces.
std::string Wrap(const std::string& text, std::size_t column) {
    std::istringstream words(text);
    std::string result;
    std::string word;
    std::size_t used = column;
    while (words >> word) {
        if (used > column && used + 1 + word.size() > LineWidth) {
            result += "\n" + std::string(column, ' ');
            used = column;
        }
        const bool first = used == column;
        result += (first ? "" : " ") + word;
        used += word.size() + (first ? 0 : 1);
    }
    return result;
}

std::string TwoColumns(const std::string& left, const std::string& right) {
    std::string text = std::string(Indent, ' ') + left;
    if (text.size() + Indent > TextColumn) {
        text += "\n" + std::string(TextColumn, ' ');
    } else {
        text.resize(TextColumn, ' ');
    }
    return text + Wrap(right, TextColumn) + "\n";
}

/// "-h, --help" for "-h,--help".
std::string SpacedNames(std::string names) {
    if (const auto comma = names.find(','); comma != std::string::npos) {
        names.insert(comma + 1, " ");
    }
    return names;
}

} // namespace

std::string HelpFormatter::make_option(const CLI::Option* option, bool isPositional) const {
    const std::string value = option->get_option_text().empty() ? "" : " " + option->get_option_text();
    const std::string name = isPositional ? option->get_name(true) : SpacedNames(option->get_name(false, true));
    return TwoColumns(name + (isPositional ? "" : value), option->get_description());
}

std::string HelpFormatter::make_usage(const CLI::App* app, std::string name) const {
    std::string usage = "Usage: " + name;
    const bool hasCommands = !app->get_subcommands([](const CLI::App*) { return true; }).empty();
    usage += hasCommands ? " COMMAND [OPTIONS]" : " [OPTIONS]";
    for (const CLI::Option* option : app->get_options()) {
        if (option->get_positional()) {
            usage += " " + option->get_option_text();
        }
    }
    return usage + "\n";
}

std::string HelpFormatter::make_description(const CLI::App* app) const {
    return Wrap(app->get_description(), 0) + ".\n\n";
}

std::string HelpFormatter::make_group(std::string group, bool isPositional,
                                      std::vector<const CLI::Option*> options) const {
    std::string text = "\n" + group + ":\n";
    for (const CLI::Option* option : options) {
        text += make_option(option, isPositional);
    }
    return text;
}

std::string HelpFormatter::make_subcommand(const CLI::App* command) const {
    return TwoColumns(command->get_name(), command->get_description());
}

std::string HelpFormatter::make_footer(const CLI::App* app) const {
    return app->get_footer().empty() ? "" : app->get_footer() + "\n";
}

} // namespace Tool
