// The harness's results, as text line by line or as JSON at the end.
#pragma once

#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <string>

#include "kernel_check/harness/selection.h"
#include "kernel_check/harness/sweep.h"
#include "kernel_check/timing/measure.h"
#include "webrtc_common/se_wrapper/dsp/select_kernels.h"

namespace kernel_harness {

class Report {
  public:
    Report(uint32_t seed, bool json);

    // The variants that this machine runs by default.
    void selected(const std::vector<quill::media::se_wrapper::SelectedKernels>& families);
    void listed(const Selected& row);
    void skipped(const Selected& row);
    void passed(const Selected& row, int problems);
    // `repeat_command` repeats the failure.
    void failed(const Selected& row, const std::string& text, const std::string& repeat_command);
    void timed(const Selected& row, const quill::test::Numbers& numbers, const timing::Measurement& m);
    // A table: a row for each number of taps, a column for each variant, at last the lowest dip of each.
    void swept(const Sweep& sweep);
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
