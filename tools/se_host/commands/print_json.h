// Results on standard output.
#pragma once

#include <iostream>
#include <nlohmann/json.hpp>

namespace se_host {

// Indented, in ASCII. Bytes that are not UTF-8 (file names may hold any) are replaced, so that the result always
// parses.
void printJson(const nlohmann::ordered_json& json);

// As its toJson or as its toText.
template <class Answer>
void print(const Answer& answer, bool json) {
    if (json) {
        printJson(toJson(answer));
    } else {
        std::cout << toText(answer);
    }
}

}  // namespace se_host
