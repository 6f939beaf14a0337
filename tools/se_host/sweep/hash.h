// XXH3-128 of bytes, as 32 hexadecimal digits: names content, so that what was computed is found again.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace se_host::sweep {

std::string hashOf(std::string_view bytes);
std::string hashOfSamples(const std::vector<int16_t>& samples);

// Of files. Each is read once.
class FileHashes {
  public:
    // fails: Failure when the file cannot be read.
    const std::string& of(const std::string& path);

  private:
    std::map<std::string, std::string> known_;
};

}  // namespace se_host::sweep
