// What initFFT creates, and where it is stored.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <type_traits>
#include <vector>

#include "kernel_check/problem/guarded_buffer.h"
#include "tests/webrtc_common/dsp/dft_objects.h"
#include "webrtc_common/fftpack/fftpack.h"

namespace quill::media::se_wrapper {
namespace {

using test::contextOf;
using test::newDftObject;

static_assert(std::is_same_v<decltype(&initFFT), InitDftRoutine>);
static_assert(std::is_same_v<decltype(&fwdFFT), FwdDftRoutine>);
static_assert(std::is_same_v<decltype(&invFFT), InvDftRoutine>);

TEST(FFTContextFields, AreTwoSizesAndThreeOwnedArrays) {
    static_assert(std::is_same_v<decltype(FFTContext::dft_size_), uint16_t>);
    static_assert(std::is_same_v<decltype(FFTContext::data_len_), uint16_t>);
    static_assert(std::is_same_v<decltype(FFTContext::twiddles_), std::unique_ptr<float[]>>);
    static_assert(std::is_same_v<decltype(FFTContext::scratch_), std::unique_ptr<float[]>>);
    static_assert(std::is_same_v<decltype(FFTContext::factors_), std::unique_ptr<int[]>>);
    EXPECT_EQ(sizeof(FFTContext), 8 + 3 * sizeof(void*));
}

TEST(FFTContextFields, AreInOrder) {
    const FFTContext context(8, 5);
    const auto at = [&context](const auto& field) {
        return reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&context);
    };
    EXPECT_EQ(at(context.dft_size_), 0);
    EXPECT_EQ(at(context.data_len_), 2);
    EXPECT_EQ(at(context.twiddles_), 8);
    EXPECT_EQ(at(context.scratch_), 16);
    EXPECT_EQ(at(context.factors_), 24);
}

const size_t contexts_at_load = g_fft_contexts.size();

TEST(ListOfContexts, IsEmptyOnceTheLibraryIsLoaded) {
    static_assert(std::is_same_v<decltype(g_fft_contexts), std::vector<FFTContext*>>);
    EXPECT_EQ(contexts_at_load, 0u);
}

TEST(InitFFT, KeepsBothSizes) {
    const FFTContext& context = contextOf(newDftObject(256, 160));
    EXPECT_EQ(context.dft_size_, 256);
    EXPECT_EQ(context.data_len_, 160);
}

TEST(InitFFT, FillsTheTablesOfTheTransform) {
    const FFTContext& context = contextOf(newDftObject(320));
    float wsave[2 * 320 + 15];
    int ifac[20];
    __ogg_fdrffti(320, wsave, ifac);
    EXPECT_TRUE(std::equal(ifac, ifac + 2 + ifac[1], context.factors_.get()));
    // 4, 4, 4, 5: rows of 80 and 20 floats end in one that holds no pair; compare the first pair of each
    for (const int row : {0, 80, 160, 240, 260, 280}) {
        EXPECT_EQ(context.twiddles_[static_cast<size_t>(320 + row)], wsave[320 + row]);
        EXPECT_EQ(context.twiddles_[static_cast<size_t>(320 + row + 1)], wsave[320 + row + 1]);
    }
}

TEST(InitFFT, AppendsEachContextToTheList) {
    const size_t before = g_fft_contexts.size();
    const DftObj_t* const first = newDftObject(8);
    const DftObj_t* const second = newDftObject(16);
    ASSERT_EQ(g_fft_contexts.size(), before + 2);
    EXPECT_EQ(g_fft_contexts[before], first->context);
    EXPECT_EQ(g_fft_contexts[before + 1], second->context);
}

TEST(InitFFT, GivesTwoObjectsOfOneSizeTwoContexts) {
    EXPECT_NE(newDftObject(64)->context, newDftObject(64)->context);
}

TEST(InitFFT, LeavesTheFormerContextOfAnObjectAlive) {
    DftObj_t* const object = newDftObject(8);
    const FFTContext& former = contextOf(test::keptObject(object->context));
    initFFT(object, 16, 16);
    EXPECT_NE(object->context, &former);
    EXPECT_EQ(former.dft_size_, 8);
    EXPECT_EQ(contextOf(object).dft_size_, 16);
}

TEST(InitFFT, TouchesTheFirstFieldOfTheObjectAlone) {
    const test::GuardedBuffer<void*> object(1);
    int16_t block[10] = {};
    auto* const dft = reinterpret_cast<DftObj_t*>(object.data());
    initFFT(dft, 8, 8);
    test::keptObject(dft->context);
    fwdFFT(dft, block, 0, 1024, block, 10);
    EXPECT_EQ(invFFT(dft, block, 4, 1024, block, 0), 8);
}

}  // namespace
}  // namespace quill::media::se_wrapper
