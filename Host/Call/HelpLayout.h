#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace qvhost {

/// Lays out what `--help` prints for a terminal of 80 columns: names on the left, what they mean on the right, long
/// lines broken between words.
class HelpLayout : public CLI::Formatter {
  public:
    HelpLayout();

    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
    std::string make_footer(const CLI::App* app) const override;
    std::string make_option(const CLI::Option* option, bool isPositional) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_subcommand(const CLI::App* command) const override;
};

}  // namespace qvhost
