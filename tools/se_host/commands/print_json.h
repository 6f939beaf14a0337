// Results on standard output, or on standard error when standard output is an output of the command.
#pragma once

#include <iostream>
#include <nlohmann/json.hpp>

namespace se_host {

// Indented, in ASCII. Bytes that are not UTF-8 (file names may hold any) are replaced, so that the result always
// parses.
void printJson(const nlohmann::ordered_json& json, std::ostream& out = std::cout);

// Where the texts of a command belong.
inline std::ostream& textStream(bool standard_output_is_taken) {
    return standard_output_is_taken ? std::cerr : std::cout;
}

// As its toJson or as its toText.
template <class Answer>
void print(const Answer& answer, bool json, std::ostream& out = std::cout) {
    if (json) {
        printJson(toJson(answer), out);
    } else {
        out << toText(answer);
    }
}

}  // namespace se_host
