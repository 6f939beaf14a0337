// Files of JSON lines: an object a line.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace se_host::sweep {

using Json = nlohmann::ordered_json;

// The whole file. fails: Failure.
std::string textOf(const std::string& path);

// Calls `visit` for each line that is not empty, in order; the last one may lack its line break. A Failure of `visit`
// gets "PATH:LINE: " in front.
void visitLines(const std::string& path, std::string_view text,
                const std::function<void(std::string_view line)>& visit);

// The length of `text` without a last line that lacks its line break, as a write that was cut short leaves it.
size_t lengthOfWholeLines(std::string_view text);

// fails: Failure when the line is not a JSON object.
Json objectIn(std::string_view line);

// On one line, with its break. Bytes that are not UTF-8 are replaced.
std::string lineOf(const Json& json);

}  // namespace se_host::sweep
