// What the harness found, as text line by line or as JSON at the end.
// Threads: one.
#pragma once

#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <string>

#include "bench/kernel_harness/measure.h"
#include "bench/kernel_harness/selection.h"

namespace kernel_harness {

class Report {
  public:
    Report(uint32_t seed, bool json);

    // What runs on this machine when nobody asks for a variant.
    void selected(const quill::media::se_wrapper::ConvolveVariant& kernels);
    void listed(const Selected& row);
    void skipped(const Selected& row);
    void passed(const Selected& row, int problems);
    // `repeat_command` makes the same failure again.
    void failed(const Selected& row, const std::string& text, const std::string& repeat_command);
    void timed(const Selected& row, const quill::test::Numbers& numbers, const Measurement& m);
    // Prints the JSON.
    void finish() const;

  private:
    void add(const char* list, const Selected& row, nlohmann::ordered_json more);

    const bool json_;
    nlohmann::ordered_json document_;
    bool table_begun_ = false;
    std::map<std::string, double> first_cycles_;  // of a function and case, those of its first variant
};

}  // namespace kernel_harness
