// The fatal checks of the FFT hooks, and what happens when their records are filtered out.
#include <gtest/gtest.h>

#include <iostream>
#include <vector>

#include "common/logging.h"
#include "tests/support/log_capture.h"
#include "tests/webrtc_common/dsp/dft_objects.h"

namespace quill::media::se_wrapper {
namespace {

using test::newDftObject;
using Samples = std::vector<int16_t>;

class FftChecks : public ::testing::Test {
  protected:
    void forward(uint16_t scale_factor_q10, uint16_t len_out_buf) {
        fwdFFT(object_, in_.data(), 0, scale_factor_q10, out_.data(), len_out_buf);
    }
    void inverse(uint16_t dft_type) { invFFT(object_, in_.data(), dft_type, 1024, out_.data(), 0); }

    DftObj_t* const object_ = newDftObject(16);
    Samples in_ = {100, -200, 300, 400, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    Samples out_ = Samples(18);
};

TEST_F(FftChecks, AForwardScaleOtherThanUnityIsFatal) {
    EXPECT_FATAL_RECORD_ANY_LINE(forward(1023, 18), "check", "webrtc_common/se_wrapper",
                                 "Check failed: 1024 == scale_factor_q10 (1024 vs. 1023) ");
}

TEST_F(FftChecks, AnOutputBufferOfNPlusOneIsFatal) {
    EXPECT_FATAL_RECORD_ANY_LINE(forward(1024, 17), "check", "webrtc_common/se_wrapper",
                                 "Check failed: context->dft_size_ + 2 <= len_out_buf (18 vs. 17) ");
}

// n + 2 is more than 16 bits hold.
TEST_F(FftChecks, NoOutputBufferIsEnoughForTheLargestSize) {
    DftObj_t* const largest = newDftObject(65535);
    EXPECT_FATAL_RECORD_ANY_LINE(fwdFFT(largest, in_.data(), 0, 1024, out_.data(), 65535), "check",
                                 "webrtc_common/se_wrapper",
                                 "Check failed: context->dft_size_ + 2 <= len_out_buf (65537 vs. 65535) ");
}

TEST_F(FftChecks, TheScaleIsCheckedBeforeTheBuffer) {
    EXPECT_FATAL_RECORD_ANY_LINE(forward(0, 0), "check", "webrtc_common/se_wrapper",
                                 "Check failed: 1024 == scale_factor_q10 (1024 vs. 0) ");
}

TEST_F(FftChecks, AnInverseOfAnotherTypeIsFatal) {
    EXPECT_FATAL_RECORD_ANY_LINE(inverse(3), "check", "webrtc_common/se_wrapper",
                                 "Check failed: dft_type == 4 (3 vs. 4) ");
}

void writeFunctionsOfRecords() {
    setLogSink([](const LogRecord& record) { std::cerr << "in <" << record.function << ">" << std::endl; });
}

TEST_F(FftChecks, RecordsNameTheFunctionThatTheyAreIn) {
    EXPECT_DEATH((writeFunctionsOfRecords(), forward(0, 18)), "in <.*fwdFFT");
    EXPECT_DEATH((writeFunctionsOfRecords(), forward(1024, 17)), "in <.*fwdFFT");
    EXPECT_DEATH((writeFunctionsOfRecords(), inverse(3)), "in <.*invFFT");
}

TEST_F(FftChecks, AnOutputBufferOfNPlusTwoIsEnough) {
    forward(1024, 18);
    EXPECT_EQ(out_[0], (100 - 200 + 300 + 400) / 32);
}

TEST_F(FftChecks, WithTheirTagFilteredOutTheForwardTransformGoesOnAndDoesNotScale) {
    forward(1024, 18);
    const Samples expected = out_;
    out_.assign(18, 0);
    setLogThreshold("check", 0);
    forward(2048, 3);
    EXPECT_EQ(out_, expected);
}

TEST_F(FftChecks, WithTheirTagFilteredOutTheInverseTransformGoesOn) {
    inverse(4);
    const Samples expected = out_;
    out_.assign(18, 0);
    setLogThreshold("check", 0);
    inverse(3);
    EXPECT_EQ(out_, expected);
}

}  // namespace
}  // namespace quill::media::se_wrapper
