#include "tools/se_host/commands/help_format.h"

#include <algorithm>
#include <sstream>

namespace se_host {
namespace {

constexpr size_t kTerminalColumns = 99;

// The words of `text` in lines of at most `width` columns; a longer word has a line of its own.
std::string broken(const std::string& text, size_t width) {
    std::istringstream words(text);
    std::string lines, line;
    for (std::string word; words >> word;) {
        if (!line.empty() && line.size() + 1 + word.size() > width) {
            lines += line + "\n";
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    return lines + line;
}

}  // namespace

std::string HelpFormat::make_option_opts(const CLI::Option* option) const {
    const std::string text = Formatter::make_option_opts(option);
    return text.substr(0, std::min(text.find(" Needs:"), text.find(" Excludes:")));
}

std::string HelpFormat::make_option_desc(const CLI::Option* option) const {
    return broken(option->get_description(), kTerminalColumns - get_column_width());
}

std::string HelpFormat::make_subcommand(const CLI::App* command) const {
    std::ostringstream out;
    CLI::detail::format_help(out, command->get_name(),
                             broken(command->get_description(), kTerminalColumns - get_column_width()),
                             get_column_width());
    return out.str();
}

}  // namespace se_host
