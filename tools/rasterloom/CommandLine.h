#pragma once

#include <Corvane/Rasterloom/EnumNames.h>

#include <CLI/CLI.hpp>
#include <functional>
#include <optional>
#include <string>

namespace Tool {

/// An option whose text is parsed by `parse`; `store` is called for each time it is given, in the order of the command
/// line. A text that does not parse is an error that shows `explain()`.
template <class Value>
CLI::Option* AddParsedOption(CLI::App& command, const std::string& name, const std::string& description,
                             std::function<std::optional<Value>(const std::string&)> parse,
                             std::function<std::string()> explain, std::function<void(Value)> store) {
    return command
        .add_option_function<std::string>(
            name, [parse, store](const std::string& text) { store(*parse(text)); }, description)
        ->trigger_on_parse()
        ->check([parse, explain](const std::string& text) {
            return parse(text) ? std::string() : "'" + text + "' is " + explain();
        });
}

/// Takes the name of a value of an enumeration, in any case.
template <class E>
CLI::Option* AddEnumOption(CLI::App& command, const std::string& name, const std::string& description,
                           std::function<void(E)> store) {
    return AddParsedOption<E>(
        command, name, description, [](const std::string& text) { return Corvane::Rasterloom::Parse<E>(text); },
        [] {
            std::string names;
            for (const auto& entry : Corvane::Rasterloom::EnumNames<E>()) {
                names += (names.empty() ? "" : ", ") + std::string(entry.Name);
            }
            return "none of " + names;
        },
        std::move(store));
}

} // namespace Tool
