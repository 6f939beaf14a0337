// Thresholds for the duration of a test.
#pragma once

#include <string>
#include <utility>

#include "common/logging.h"

namespace quill::test {

class ScopedTagThreshold {
  public:
    ScopedTagThreshold(std::string tag, int level) : tag_(std::move(tag)) { setLogThreshold(tag_, level); }
    ~ScopedTagThreshold() { setLogThreshold(tag_, 4); }
    ScopedTagThreshold(const ScopedTagThreshold&) = delete;
    ScopedTagThreshold& operator=(const ScopedTagThreshold&) = delete;

  private:
    std::string tag_;
};

class ScopedThreshold {
  public:
    explicit ScopedThreshold(int level) { setLogThreshold(level); }
    ~ScopedThreshold() { setLogThreshold(4); }
    ScopedThreshold(const ScopedThreshold&) = delete;
    ScopedThreshold& operator=(const ScopedThreshold&) = delete;
};

}  // namespace quill::test
