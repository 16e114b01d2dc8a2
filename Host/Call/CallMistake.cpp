#include "Call/CallMistake.h"

#include "Support/NearMiss.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

namespace qvhost {
namespace {

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

/// The program and the commands inside each other that the call named.
std::vector<const CLI::App*> chainOf(const CLI::App& program) {
    std::vector<const CLI::App*> chain{&program};
    for (auto inner = program.get_subcommands(); !inner.empty(); inner = chain.back()->get_subcommands())
        chain.push_back(inner.front());
    return chain;
}

std::string callOf(const CLI::App* app) {
    return app->get_parent() ? callOf(app->get_parent()) + " " + app->get_name() : app->get_name();
}

/// The command's words without the program's name, which stands before every message.
std::string nameOf(const CLI::App& app) {
    const CLI::App* parent = app.get_parent();
    if (!parent) return "";
    return parent->get_parent() ? nameOf(*parent) + " " + app.get_name() : app.get_name();
}

std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

std::vector<std::string> namesOf(const std::vector<const CLI::App*>& commands) {
    std::vector<std::string> names;
    names.reserve(commands.size());
    for (const CLI::App* command : commands)
        names.push_back(command->get_name());
    return names;
}

std::vector<std::string> optionsOf(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options([](const CLI::Option* any) { return !any->get_group().empty(); }))
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

std::string didYouMean(const std::optional<std::string>& name) {
    return name ? " Did you mean " + *name + "?" : "";
}

std::string unknownOption(const std::string& word, const CLI::App& app, const CLI::App& called) {
    const std::string name = word.substr(0, word.find('='));
    const std::vector<std::string> laters = optionsOf(called);
    if (&app != &called && std::find(laters.begin(), laters.end(), name) != laters.end())
        return name + " belongs behind the command: " + callOf(&called) + " … " + name + ".";
    const std::string where = app.get_parent() ? nameOf(app) + " has" : std::string("There is");
    return where + " no option " + quoted(name) + "." + didYouMean(nearMiss(name, optionsOf(called)));
}

std::string listed(const std::vector<std::string>& names) {
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i)
        list += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
    return list;
}

/// Somebody who gives nothing but a file wants it read.
std::optional<std::string> scanOf(const std::string& word) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(word, error)) return std::nullopt;
    return quoted("qvcardscan scan " + word);
}

std::string unknownCommand(const std::string& word, const CLI::App& app) {
    const std::vector<std::string> names = namesOf(commandsOf(app));
    std::optional<std::string> meant = nearMiss(word, names);
    if (!meant && !app.get_parent()) meant = scanOf(word);
    return "There is no command " + quoted(word) + "." +
           (meant ? didYouMean(meant) : " The commands are " + listed(names) + ".");
}

std::string tooMuch(const std::string& word, const CLI::App& app) {
    std::string takes;
    for (const CLI::Option* option : app.get_options([](const CLI::Option* any) { return any->get_positional(); }))
        takes += option->get_required() ? " " + option->get_name() : " [" + option->get_name() + "]";
    const std::string most = takes.empty() ? "options only" : takes.substr(1);
    return quoted(word) + " is more than " + nameOf(app) + " takes: " + most + ".";
}

std::string unexpected(const std::string& word, const CLI::App& app, const CLI::App& called) {
    // A command passes what it does not know on to the one around it.
    const CLI::App& where = app.get_parent() ? called : app;
    if (word.size() > 1 && word.front() == '-') return unknownOption(word, where, called);
    return commandsOf(where).empty() ? tooMuch(word, where) : unknownCommand(word, where);
}

/// A word that nothing takes explains more than what the parser complains of after it.
std::optional<std::string> firstUnexpected(const std::vector<const CLI::App*>& chain) {
    for (const CLI::App* app : chain) {
        for (const std::string& word : app->remaining())
            if (word != "--") return unexpected(word, *app, *chain.back());
    }
    return std::nullopt;
}

std::string meaningOf(const CLI::Option& option) {
    std::string text = option.get_description();
    const bool isWord = text.size() > 1 && text[1] >= 'a' && text[1] <= 'z';
    if (isWord && text[0] >= 'A' && text[0] <= 'Z') text[0] = static_cast<char>(text[0] - 'A' + 'a');
    return text;
}

std::string missing(const CLI::App& app) {
    for (const CLI::Option* option : app.get_options([](const CLI::Option* any) { return any->get_required(); })) {
        if (option->count() == 0) return nameOf(app) + " needs " + option->get_name() + ": " + meaningOf(*option) + ".";
    }
    return "A command is needed" + (app.get_parent() ? " behind " + nameOf(app) : "") + ". The commands are " +
           listed(namesOf(commandsOf(app))) + ".";
}

/// The option that a message of the parser begins with; it leaves the hyphens of flags out.
const CLI::Option* optionIn(const std::string& message, const CLI::App& app) {
    const std::string name = message.substr(0, message.find_first_of(": "));
    const CLI::Option* option = app.get_option_no_throw(name);
    return option ? option : app.get_option_no_throw("--" + name);
}

std::string wrongCount(const std::string& message, const CLI::App& app) {
    const CLI::Option* option = optionIn(message, app);
    if (!option) return message + ".";
    const std::string name = option->get_name();
    if (option->get_items_expected_max() == 0) return name + " takes no value.";
    if (static_cast<int>(option->count()) > option->get_items_expected_max()) return name + " is given more than once.";
    return name + " needs a value behind it: " + name + " " + option->get_type_name() + ".";
}

/// The two options that the parser did not want without, or with, each other.
std::string pairOf(const CLI::App& app) {
    for (const CLI::Option* option : app.get_options([](const CLI::Option* any) { return any->count() > 0; })) {
        for (const CLI::Option* needed : option->get_needs())
            if (needed->count() == 0)
                return option->get_name() + " works only together with " + needed->get_name() + ".";
        for (const CLI::Option* other : option->get_excludes())
            if (other->count() > 0) return option->get_name() + " and " + other->get_name() + " exclude each other.";
    }
    return "";
}

/// What an option's own check says is a sentence already.
std::string sentence(std::string text) {
    const std::string_view ends = ".?!";
    if (!text.empty() && ends.find(text.back()) == std::string_view::npos) text += '.';
    return text;
}

std::string messageFor(const CLI::ParseError& error, const CLI::App& app) {
    if (dynamic_cast<const CLI::RequiredError*>(&error)) return missing(app);
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error)) return wrongCount(error.what(), app);
    const std::string pair = pairOf(app);
    const bool isPair =
        dynamic_cast<const CLI::RequiresError*>(&error) || dynamic_cast<const CLI::ExcludesError*>(&error);
    return isPair && !pair.empty() ? pair : sentence(error.what());
}

}  // namespace

CallMistake CallMistake::of(const CLI::ParseError& error, const CLI::App& program) {
    const std::vector<const CLI::App*> chain = chainOf(program);
    const CLI::App& called = *chain.back();
    std::optional<std::string> message = firstUnexpected(chain);
    if (!message) message = messageFor(error, called);
    return {*std::move(message), callOf(&called) + " --help"};
}

}  // namespace qvhost
