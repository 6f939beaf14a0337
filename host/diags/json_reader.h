// JSON of a file that anybody may have written: read in time and memory that grow with its length, whatever it
// holds. The library's own reader takes time that grows with the square of the number of names in an object.
#pragma once

#include <nlohmann/json.hpp>
#include <string_view>

namespace se_host {

// fails: std::runtime_error, saying what is wrong: it is not JSON, nested too deep, or a name is in an object twice.
nlohmann::ordered_json readJson(std::string_view text);

// Adds a member to an object. Looks at no other: needs a name that is new.
void append(nlohmann::ordered_json& object, const std::string& name, nlohmann::ordered_json value);

}  // namespace se_host
