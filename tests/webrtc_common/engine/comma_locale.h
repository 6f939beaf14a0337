// A locale whose decimal point is a comma. It is built by the test, because not every machine has one.
#pragma once

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace quill::test {

class CommaLocale {
  public:
    CommaLocale() {
        std::string folder = (std::filesystem::temp_directory_path() / "comma_locale.XXXXXX").string();
        if (mkdtemp(folder.data()) == nullptr) return;
        folder_ = folder;
        std::ofstream(folder + "/source") << "comment_char %\n"
                                             "escape_char /\n"
                                             "LC_NUMERIC\n"
                                             "decimal_point \",\"\n"
                                             "thousands_sep \".\"\n"
                                             "grouping 3;3\n"
                                             "END LC_NUMERIC\n";
        // localedef reports the other categories as missing, and still writes the locale.
        const std::string command =
            "localedef -c --quiet -i " + folder + "/source " + folder + "/comma >" + folder + "/said 2>&1";
        [[maybe_unused]] const int warnings = std::system(command.c_str());
        setenv("LOCPATH", folder.c_str(), 1);
        is_set_ = std::setlocale(LC_ALL, "comma") != nullptr;
    }
    ~CommaLocale() {
        std::setlocale(LC_ALL, "C");
        unsetenv("LOCPATH");
        std::error_code error;
        if (!folder_.empty()) std::filesystem::remove_all(folder_, error);
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    // False where there is no localedef.
    bool isSet() const { return is_set_; }

  private:
    std::string folder_;
    bool is_set_ = false;
};

}  // namespace quill::test
