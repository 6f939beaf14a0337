// The values in the lanes of a pass: the same pair of as many groups as there are lanes, or, with fewer groups,
// several neighbouring pairs of all groups. Included by one source file an instruction set.
//
// An arrangement has kPairs pairs in its lanes and
//   getRows, putRows           pair m of all split rows, `at` that of row 0
//   getPairs, putPairs         pair m of a packed row
//   getReversed, putReversed   the same when pairs stand from the last to the first, `at` the last of them
//   twiddles                   the factors of pair m
// where `at` is the real part of the first group.

// Any number of groups; the pair is one.
template <class F>
struct AcrossGroups {
    using Floats = F;
    static constexpr size_t kPairs = 1;

    template <size_t kRadix>
    static FFT_INLINE void getRows(const float* at, size_t groups, Complex<F> (&rows)[kRadix]) {
        FFT_UNROLL for (size_t j = 0; j < kRadix; ++j) {
            rows[j] = {F::load(at + j * groups), F::load(at + (kRadix + j) * groups)};
        }
    }
    template <size_t kRadix>
    static FFT_INLINE void putRows(float* at, size_t groups, const Complex<F> (&rows)[kRadix]) {
        FFT_UNROLL for (size_t j = 0; j < kRadix; ++j) {
            F::store(at + j * groups, rows[j].re);
            F::store(at + (kRadix + j) * groups, rows[j].im);
        }
    }
    template <class From>
    static FFT_INLINE Complex<F> getPairs(From at, size_t groups) {
        return {F::load(at), F::load(at + groups)};
    }
    template <class To>
    static FFT_INLINE void putPairs(To at, size_t groups, Complex<F> value) {
        F::store(at, value.re);
        F::store(at + groups, value.im);
    }
    template <class From>
    static FFT_INLINE Complex<F> getReversed(From at, size_t groups) {
        return getPairs(at, groups);
    }
    template <class To>
    static FFT_INLINE void putReversed(To at, size_t groups, Complex<F> value) {
        putPairs(at, groups, value);
    }
    static FFT_INLINE Complex<F> twiddles(const float* w) { return {F::all(w[0]), F::all(w[1])}; }
};

// kGroups groups, fewer than lanes.
template <class F, size_t kGroups>
struct AlongPairs;

// One group. Pairs are in the order 0 1 2 3 or 0 1 4 5 | 2 3 6 7, in which interleaved real and imaginary parts
// are separated and combined within halves.
template <class F>
struct AlongPairs<F, 1> {
    using Floats = F;
    using Vector = typename F::Vector;
    static constexpr size_t kPairs = F::kLanes;
    static constexpr size_t kHalf = 2;                        // pairs from a lane to that of the other half
    static constexpr size_t kThird = F::kLanes == 8 ? 4 : 2;  // the pair in lane 2

    static FFT_INLINE Vector get(const float* at, size_t pair, size_t pair_size) {
        return F::halves(at + pair * pair_size, static_cast<ptrdiff_t>(kHalf * pair_size));
    }
    static FFT_INLINE void put(float* at, size_t pair, size_t pair_size, Vector v) {
        F::putHalves(at + pair * pair_size, static_cast<ptrdiff_t>(kHalf * pair_size), v);
    }

    static FFT_INLINE void getRows(const float* at, size_t /*groups*/, Complex<F> (&rows)[4]) {
        getFour(at, 8, rows[0].re, rows[1].re, rows[2].re, rows[3].re);
        getFour(at + 4, 8, rows[0].im, rows[1].im, rows[2].im, rows[3].im);
    }
    static FFT_INLINE void getRows(const float* at, size_t /*groups*/, Complex<F> (&rows)[2]) {
        getFour(at, 4, rows[0].re, rows[1].re, rows[0].im, rows[1].im);
    }
    static FFT_INLINE void putRows(float* at, size_t /*groups*/, const Complex<F> (&rows)[4]) {
        putFour(at, 8, rows[0].re, rows[1].re, rows[2].re, rows[3].re);
        putFour(at + 4, 8, rows[0].im, rows[1].im, rows[2].im, rows[3].im);
    }
    static FFT_INLINE void putRows(float* at, size_t /*groups*/, const Complex<F> (&rows)[2]) {
        putFour(at, 4, rows[0].re, rows[1].re, rows[0].im, rows[1].im);
    }
    static FFT_INLINE Complex<F> getPairs(const float* at, size_t /*groups*/) {
        return apart(F::load(at), F::load(at + F::kLanes));
    }
    static FFT_INLINE void putPairs(float* at, size_t /*groups*/, Complex<F> value) {
        F::store(at, F::zipLow(value.re, value.im));
        F::store(at + F::kLanes, F::zipHigh(value.re, value.im));
    }
    static FFT_INLINE Complex<F> getReversed(const float* at, size_t /*groups*/) {
        const float* const last = at + 2 * F::kLanes - 4;
        const Vector first = F::halves(last, -4);
        const Vector second = F::halves(last - 2 * kThird, -4);
        return {F::template pick<2, 0, 2, 0>(first, second), F::template pick<3, 1, 3, 1>(first, second)};
    }
    static FFT_INLINE void putReversed(float* at, size_t /*groups*/, Complex<F> value) {
        float* const last = at + 2 * F::kLanes - 4;
        const Vector first = F::zipLow(value.re, value.im);
        const Vector second = F::zipHigh(value.re, value.im);
        F::putHalves(last, -4, F::template pick<2, 3, 0, 1>(first, first));
        F::putHalves(last - 2 * kThird, -4, F::template pick<2, 3, 0, 1>(second, second));
    }

    // The same between 16-bit values.
    static FFT_INLINE Complex<F> getPairs(PackedSpectrum at, size_t /*groups*/) {
        const auto pairs = F::loadPairs(at.pairs());
        return {F::re(pairs), F::im(pairs)};
    }
    static FFT_INLINE Complex<F> getReversed(PackedSpectrum at, size_t /*groups*/) {
        const auto pairs = F::loadReversedPairs(at.pairs());
        return {F::re(pairs), F::im(pairs)};
    }
    static FFT_INLINE void putPairs(SpectrumOut at, size_t /*groups*/, Complex<F> value) {
        F::storePairs(at.data, truncated(at.scale, value));
    }
    static FFT_INLINE void putReversed(SpectrumOut at, size_t /*groups*/, Complex<F> value) {
        F::storeReversedPairs(at.data, truncated(at.scale, value));
    }

    static FFT_INLINE Complex<F> twiddles(const float* w) {
        return apart(F::load(w), F::load(w + F::kLanes));
    }

  private:
    static FFT_INLINE typename F::Pairs truncated(float scale, Complex<F> value) {
        return F::truncatedPairs(value.re * F::all(scale), value.im * F::all(scale));
    }
    static FFT_INLINE Complex<F> apart(Vector first, Vector second) {
        return {F::template pick<0, 2, 0, 2>(first, second), F::template pick<1, 3, 1, 3>(first, second)};
    }
    static FFT_INLINE void getFour(const float* at, size_t pair_size, Vector& a, Vector& b, Vector& c,
                                   Vector& d) {
        a = get(at, 0, pair_size);
        b = get(at, 1, pair_size);
        c = get(at, kThird, pair_size);
        d = get(at, kThird + 1, pair_size);
        transpose<F>(a, b, c, d);
    }
    static FFT_INLINE void putFour(float* at, size_t pair_size, Vector a, Vector b, Vector c, Vector d) {
        transpose<F>(a, b, c, d);
        put(at, 0, pair_size, a);
        put(at, 1, pair_size, b);
        put(at, kThird, pair_size, c);
        put(at, kThird + 1, pair_size, d);
    }
};

// Two groups, side by side: 0 0 1 1 or 0 0 1 1 | 2 2 3 3.
template <class F>
struct AlongPairs<F, 2> {
    using Floats = F;
    using Vector = typename F::Vector;
    static constexpr size_t kPairs = F::kLanes / 2;
    static constexpr ptrdiff_t kPair = 4;       // floats of a pair
    static constexpr ptrdiff_t kRowsPair = 16;  // floats of a pair of all four split rows

    static FFT_INLINE void getRows(const float* at, size_t /*groups*/, Complex<F> (&rows)[4]) {
        getTwo(at, rows[0].re, rows[1].re);
        getTwo(at + 4, rows[2].re, rows[3].re);
        getTwo(at + 8, rows[0].im, rows[1].im);
        getTwo(at + 12, rows[2].im, rows[3].im);
    }
    static FFT_INLINE void putRows(float* at, size_t /*groups*/, const Complex<F> (&rows)[4]) {
        putTwo(at, rows[0].re, rows[1].re);
        putTwo(at + 4, rows[2].re, rows[3].re);
        putTwo(at + 8, rows[0].im, rows[1].im);
        putTwo(at + 12, rows[2].im, rows[3].im);
    }
    static FFT_INLINE Complex<F> getPairs(const float* at, size_t /*groups*/) {
        const Vector first = F::halves(at, 2 * kPair);
        const Vector second = F::halves(at + kPair, 2 * kPair);
        return {F::lowPairs(first, second), F::highPairs(first, second)};
    }
    static FFT_INLINE void putPairs(float* at, size_t /*groups*/, Complex<F> value) {
        F::putHalves(at, 2 * kPair, F::lowPairs(value.re, value.im));
        F::putHalves(at + kPair, 2 * kPair, F::highPairs(value.re, value.im));
    }
    static FFT_INLINE Complex<F> getReversed(const float* at, size_t /*groups*/) {
        const float* const last = at + (static_cast<ptrdiff_t>(kPairs) - 1) * kPair;
        const Vector first = F::halves(last, -2 * kPair);
        const Vector second = F::halves(last - kPair, -2 * kPair);
        return {F::lowPairs(first, second), F::highPairs(first, second)};
    }
    static FFT_INLINE void putReversed(float* at, size_t /*groups*/, Complex<F> value) {
        float* const last = at + (static_cast<ptrdiff_t>(kPairs) - 1) * kPair;
        F::putHalves(last, -2 * kPair, F::lowPairs(value.re, value.im));
        F::putHalves(last - kPair, -2 * kPair, F::highPairs(value.re, value.im));
    }
    static FFT_INLINE Complex<F> twiddles(const float* w) {
        const Vector pairs = F::load(w);
        return {F::evensTwice(pairs), F::oddsTwice(pairs)};
    }

  private:
    static FFT_INLINE void getTwo(const float* at, Vector& a, Vector& b) {
        const Vector first = F::halves(at, 2 * kRowsPair);
        const Vector second = F::halves(at + kRowsPair, 2 * kRowsPair);
        a = F::lowPairs(first, second);
        b = F::highPairs(first, second);
    }
    static FFT_INLINE void putTwo(float* at, Vector a, Vector b) {
        F::putHalves(at, 2 * kRowsPair, F::lowPairs(a, b));
        F::putHalves(at + kRowsPair, 2 * kRowsPair, F::highPairs(a, b));
    }
};

#ifdef __AVX__
// Four groups, a pair each half.
template <>
struct AlongPairs<Eight, 4> {
    using Floats = Eight;
    static constexpr size_t kPairs = 2;
    static constexpr ptrdiff_t kPair = 8;
    static constexpr ptrdiff_t kRowsPair = 32;

    static FFT_INLINE void getRows(const float* at, size_t /*groups*/, Complex<Eight> (&rows)[4]) {
        FFT_UNROLL for (size_t j = 0; j < 4; ++j, at += 4) {
            rows[j] = {Eight::halves(at, kRowsPair), Eight::halves(at + 16, kRowsPair)};
        }
    }
    static FFT_INLINE void putRows(float* at, size_t /*groups*/, const Complex<Eight> (&rows)[4]) {
        FFT_UNROLL for (size_t j = 0; j < 4; ++j, at += 4) {
            Eight::putHalves(at, kRowsPair, rows[j].re);
            Eight::putHalves(at + 16, kRowsPair, rows[j].im);
        }
    }
    static FFT_INLINE Complex<Eight> getPairs(const float* at, size_t /*groups*/) {
        return {Eight::halves(at, kPair), Eight::halves(at + 4, kPair)};
    }
    static FFT_INLINE void putPairs(float* at, size_t /*groups*/, Complex<Eight> value) {
        Eight::putHalves(at, kPair, value.re);
        Eight::putHalves(at + 4, kPair, value.im);
    }
    static FFT_INLINE Complex<Eight> getReversed(const float* at, size_t /*groups*/) {
        return {Eight::halves(at + kPair, -kPair), Eight::halves(at + kPair + 4, -kPair)};
    }
    static FFT_INLINE void putReversed(float* at, size_t /*groups*/, Complex<Eight> value) {
        Eight::putHalves(at + kPair, -kPair, value.re);
        Eight::putHalves(at + kPair + 4, -kPair, value.im);
    }
    static FFT_INLINE Complex<Eight> twiddles(const float* w) {
        const __m256 pairs = Eight::halves(w, 0);
        return {_mm256_permutevar_ps(pairs, _mm256_setr_epi32(0, 0, 0, 0, 2, 2, 2, 2)),
                _mm256_permutevar_ps(pairs, _mm256_setr_epi32(1, 1, 1, 1, 3, 3, 3, 3))};
    }
};
#endif
