// Pieces of an HTML page.
#pragma once

#include <string>
#include <string_view>

namespace se_host::report {

// Text, also in attributes.
std::string escaped(std::string_view text);

// <TAG>TEXT</TAG>; the content is HTML.
std::string element(const std::string& tag, const std::string& content, const std::string& attributes = "");

// The bytes as the address of an image.
std::string imageData(std::string_view png);

// A document without scripts and without addresses of other places; `body` is HTML.
std::string document(const std::string& title, const std::string& body);

}  // namespace se_host::report
