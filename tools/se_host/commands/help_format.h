// The format of help texts: no line is wider than 100 columns.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace se_host {

// CLI11's own format, with descriptions broken into lines. Which options exclude or need one another is left to the
// descriptions: the lists of the parser are longer than a line.
class HelpFormat : public CLI::Formatter {
  public:
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_option_desc(const CLI::Option* option) const override;
    std::string make_subcommand(const CLI::App* command) const override;
};

}  // namespace se_host
