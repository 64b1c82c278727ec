#pragma once

#include <Corvane/Rasterloom/EnumNames.h>

#include <CLI/CLI.hpp>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tool {

/// Lays help out in two columns of 80 characters, with the examples of a command at the end.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_option(const CLI::Option* option, bool isPositional) const override;
    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_description(const CLI::App* app) const override;
    std::string make_group(std::string group, bool isPositional,
                           std::vector<const CLI::Option*> options) const override;
    std::string make_subcommand(const CLI::App* command) const override;
    std::string make_footer(const CLI::App* app) const override;
};

/// What help calls the value of an option, and what it says of it.
struct OptionText {
    std::string Name;  ///< "--resize,-r"
    std::string Value; ///< "SIZE"
    std::string Description;
};

/// An option whose text is parsed by `parse`; `store` is called for each time it is given, in the order of the command
/// line. A text that does not parse is an error that shows `explain()`.
template <class Value>
CLI::Option* AddParsedOption(CLI::App& command, const OptionText& text,
                             std::function<std::optional<Value>(const std::string&)> parse,
                             std::function<std::string()> explain, std::function<void(Value)> store) {
    return command
        .add_option_function<std::string>(
            text.Name, [parse, store](const std::string& value) { store(*parse(value)); }, text.Description)
        ->option_text(text.Value)
        ->trigger_on_parse()
        ->check([parse, explain](const std::string& value) {
            return parse(value) ? std::string() : "'" + value + "' is " + explain();
        });
}

/// "A, B, C": the proper name of each value that `accept` takes.
template <class E>
std::string NamesOf(const std::function<bool(E)>& accept = {}) {
    std::string names;
    for (const auto& entry : Corvane::Rasterloom::EnumNames<E>()) {
        const bool proper = Corvane::Rasterloom::ToString(entry.Value) == entry.Name;
        if (proper && (!accept || accept(entry.Value))) {
            names += (names.empty() ? "" : ", ") + std::string(entry.Name);
        }
    }
    return names;
}

/// Takes the name of a value of an enumeration, in any case, and lists the names in its help.
template <class E>
CLI::Option* AddEnumOption(CLI::App& command, OptionText text, std::function<void(E)> store,
                           const std::function<bool(E)>& accept = {}) {
    const std::string names = NamesOf<E>(accept);
    text.Description += ": " + names;
    const auto parse = [accept](const std::string& value) {
        const auto parsed = Corvane::Rasterloom::Parse<E>(value);
        return parsed && (!accept || accept(*parsed)) ? parsed : std::nullopt;
    };
    return AddParsedOption<E>(
        command, text, parse, [names] { return "none of " + names; }, std::move(store));
}

} // namespace Tool
