#include "Call/HelpLayout.h"

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

namespace qvhost {
namespace {

constexpr std::size_t kWidth = 80;
constexpr std::size_t kIndent = 2;
constexpr std::size_t kColumn = 24;

/// Cuts off as many whole words as fit; one that is too long stays whole.
std::string_view takeLine(std::string_view& text, std::size_t width) {
    std::size_t end = text.size();
    if (end > width) {
        end = text.rfind(' ', width);
        if (end == std::string_view::npos) end = std::min(text.find(' '), text.size());
    }
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

std::string row(const std::string& name, std::string_view meaning) {
    std::string text = std::string(kIndent, ' ') + name;
    if (text.size() + 2 > kColumn && !meaning.empty()) text += "\n";
    std::size_t used = text.back() == '\n' ? 0 : text.size();
    while (!meaning.empty()) {
        text.append(kColumn - used, ' ').append(takeLine(meaning, kWidth - kColumn)).append("\n");
        used = 0;
    }
    return text.back() == '\n' ? text : text + "\n";
}

/// Lines of prose belong together; examples, which are indented, and their heading stand alone.
std::vector<std::string> paragraphs(const std::string& text) {
    std::istringstream lines(text);
    std::vector<std::string> result;
    for (std::string line; std::getline(lines, line);) {
        const bool isProse = !line.empty() && line.front() != ' ';
        const bool goesOn =
            !result.empty() && !result.back().empty() && result.back().front() != ' ' && result.back().back() != ':';
        if (isProse && goesOn) {
            result.back().append(" ").append(line);
        } else {
            result.push_back(line);
        }
    }
    return result;
}

std::string spaced(std::string names) {
    for (std::size_t comma = names.find(','); comma != std::string::npos; comma = names.find(',', comma + 1))
        names.insert(comma + 1, " ");
    return names;
}

}  // namespace

HelpLayout::HelpLayout() {
    label("Positionals", "Arguments");
    label("SUBCOMMAND", "COMMAND");
    label("OPTIONS", "OPTION…");
}

std::string HelpLayout::make_usage(const CLI::App* app, std::string name) const {
    return "\n" + CLI::Formatter::make_usage(app, std::move(name));
}

std::string HelpLayout::make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const {
    std::string help = CLI::Formatter::make_help(app, std::move(name), mode);
    // The library leaves two blank lines where a group of options is hidden.
    for (std::size_t gap = help.find("\n\n\n"); gap != std::string::npos; gap = help.find("\n\n\n", gap))
        help.erase(gap, 1);
    return help;
}

std::string HelpLayout::make_footer(const CLI::App* app) const {
    std::string text;
    for (const std::string& paragraph : paragraphs(app->get_footer())) {
        std::string_view rest = paragraph;
        do {
            text.append(takeLine(rest, kWidth)).append("\n");
        } while (!rest.empty());
    }
    return text;
}

std::string HelpLayout::make_option(const CLI::Option* option, bool isPositional) const {
    const std::string values = isPositional ? "" : make_option_opts(option);
    return row(spaced(make_option_name(option, isPositional)) + values, make_option_desc(option));
}

std::string HelpLayout::make_option_opts(const CLI::Option* option) const {
    return option->get_type_size() != 0 && !option->get_type_name().empty() ? " " + option->get_type_name() : "";
}

std::string HelpLayout::make_subcommand(const CLI::App* command) const {
    return row(command->get_name(), command->get_description());
}

}  // namespace qvhost
