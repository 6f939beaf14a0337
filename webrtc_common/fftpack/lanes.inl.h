// Vectors of 1, 4 and 8 floats and the operations of the butterflies. Included by one source file an
// instruction set, within a namespace of its own.
//
// 8 lanes are two halves of 4: all rearrangements but those of `halves` happen within a half, since only these
// are cheap. The same butterflies therefore work with both sizes.

struct One : OneSample {
    using Vector = float;
    static constexpr size_t kLanes = 1;
    static FFT_INLINE Vector load(const float* p) { return *p; }
    static FFT_INLINE void store(float* p, Vector v) { *p = v; }
    using OneSample::load;
    using OneSample::store;
    static FFT_INLINE Vector all(float x) { return x; }
};

struct Four : FourSamples {
    using Vector = __m128;
    using Narrower = One;
    static constexpr size_t kLanes = 4;
    // The last thing that a transform does: SSE code after it would be slow on some processors if it left the upper
    // halves of the registers in use. Compilers do it by themselves only when they optimise as for a release.
    static FFT_INLINE void clearUpperHalves() {}
    static FFT_INLINE Vector load(const float* p) { return _mm_loadu_ps(p); }
    static FFT_INLINE void store(float* p, Vector v) { _mm_storeu_ps(p, v); }
    using FourSamples::load;
    using FourSamples::store;
    static FFT_INLINE Vector all(float x) { return _mm_set1_ps(x); }

    // Four at `low`; eight lanes take or put their upper half at `distance` from there.
    static FFT_INLINE Vector halves(const float* low, ptrdiff_t /*distance*/) { return load(low); }
    static FFT_INLINE void putHalves(float* low, ptrdiff_t /*distance*/, Vector v) { store(low, v); }

    // 0 0 2 2, 1 1 3 3
    static FFT_INLINE Vector evensTwice(Vector v) { return _mm_moveldup_ps(v); }
    static FFT_INLINE Vector oddsTwice(Vector v) { return _mm_movehdup_ps(v); }
    // a0 b0 a1 b1, a2 b2 a3 b3
    static FFT_INLINE Vector zipLow(Vector a, Vector b) { return _mm_unpacklo_ps(a, b); }
    static FFT_INLINE Vector zipHigh(Vector a, Vector b) { return _mm_unpackhi_ps(a, b); }
    // a0 a1 b0 b1, a2 a3 b2 b3
    static FFT_INLINE Vector lowPairs(Vector a, Vector b) { return _mm_movelh_ps(a, b); }
    static FFT_INLINE Vector highPairs(Vector a, Vector b) { return _mm_movehl_ps(b, a); }
    template <int k0, int k1, int k2, int k3>  // a[k0] a[k1] b[k2] b[k3]
    static FFT_INLINE Vector pick(Vector a, Vector b) {
        return _mm_shuffle_ps(a, b, _MM_SHUFFLE(k3, k2, k1, k0));
    }
};

#ifdef __AVX__
struct Eight : EightSamples {
    using Vector = __m256;
    using Narrower = Four;
    static constexpr size_t kLanes = 8;
    static FFT_INLINE void clearUpperHalves() { _mm256_zeroupper(); }
    static FFT_INLINE Vector load(const float* p) { return _mm256_loadu_ps(p); }
    static FFT_INLINE void store(float* p, Vector v) { _mm256_storeu_ps(p, v); }
    using EightSamples::load;
    using EightSamples::store;
    static FFT_INLINE Vector all(float x) { return _mm256_set1_ps(x); }

    static FFT_INLINE Vector halves(const float* low, ptrdiff_t distance) {
        return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(low)), _mm_loadu_ps(low + distance),
                                    1);
    }
    static FFT_INLINE void putHalves(float* low, ptrdiff_t distance, Vector v) {
        _mm_storeu_ps(low, _mm256_castps256_ps128(v));
        _mm_storeu_ps(low + distance, _mm256_extractf128_ps(v, 1));
    }
    static FFT_INLINE Vector evensTwice(Vector v) { return _mm256_moveldup_ps(v); }
    static FFT_INLINE Vector oddsTwice(Vector v) { return _mm256_movehdup_ps(v); }
    static FFT_INLINE Vector zipLow(Vector a, Vector b) { return _mm256_unpacklo_ps(a, b); }
    static FFT_INLINE Vector zipHigh(Vector a, Vector b) { return _mm256_unpackhi_ps(a, b); }
    static FFT_INLINE Vector lowPairs(Vector a, Vector b) {
        return _mm256_shuffle_ps(a, b, _MM_SHUFFLE(1, 0, 1, 0));
    }
    static FFT_INLINE Vector highPairs(Vector a, Vector b) {
        return _mm256_shuffle_ps(a, b, _MM_SHUFFLE(3, 2, 3, 2));
    }
    template <int k0, int k1, int k2, int k3>
    static FFT_INLINE Vector pick(Vector a, Vector b) {
        return _mm256_shuffle_ps(a, b, _MM_SHUFFLE(k3, k2, k1, k0));
    }
};
using Widest = Eight;
#else
using Widest = Four;
#endif

// Rows of a 4 by 4 matrix, a matrix each half, to its columns.
template <class F>
FFT_INLINE void transpose(typename F::Vector& a, typename F::Vector& b, typename F::Vector& c,
                          typename F::Vector& d) {
    const auto ab_low = F::zipLow(a, b);
    const auto ab_high = F::zipHigh(a, b);
    const auto cd_low = F::zipLow(c, d);
    const auto cd_high = F::zipHigh(c, d);
    a = F::lowPairs(ab_low, cd_low);
    b = F::highPairs(ab_low, cd_low);
    c = F::lowPairs(ab_high, cd_high);
    d = F::highPairs(ab_high, cd_high);
}

// A complex value a lane, and the operations of the butterflies, each rounded exactly as it is written.
template <class F>
struct Complex {
    typename F::Vector re;
    typename F::Vector im;
};

template <class F>
FFT_INLINE Complex<F> operator+(Complex<F> a, Complex<F> b) {
    return {a.re + b.re, a.im + b.im};
}
template <class F>
FFT_INLINE Complex<F> operator-(Complex<F> a, Complex<F> b) {
    return {a.re - b.re, a.im - b.im};
}
template <class F>
FFT_INLINE Complex<F> operator*(Complex<F> w, Complex<F> a) {
    return {w.re * a.re - w.im * a.im, w.re * a.im + w.im * a.re};
}
template <class F>
FFT_INLINE Complex<F> scaled(float s, Complex<F> a) {
    return {F::all(s) * a.re, F::all(s) * a.im};
}
// conj(w) a
template <class F>
FFT_INLINE Complex<F> timesConj(Complex<F> w, Complex<F> a) {
    return {w.re * a.re + w.im * a.im, w.re * a.im - w.im * a.re};
}
// a + conj(b)
template <class F>
FFT_INLINE Complex<F> plusConj(Complex<F> a, Complex<F> b) {
    return {a.re + b.re, a.im - b.im};
}
// a - conj(b)
template <class F>
FFT_INLINE Complex<F> minusConj(Complex<F> a, Complex<F> b) {
    return {a.re - b.re, a.im + b.im};
}
// conj(a - b)
template <class F>
FFT_INLINE Complex<F> conjDifference(Complex<F> a, Complex<F> b) {
    return {a.re - b.re, b.im - a.im};
}
// -i (a - b)
template <class F>
FFT_INLINE Complex<F> turnedDifference(Complex<F> a, Complex<F> b) {
    return {a.im - b.im, b.re - a.re};
}
// a + i b
template <class F>
FFT_INLINE Complex<F> plusTurned(Complex<F> a, Complex<F> b) {
    return {a.re - b.im, a.im + b.re};
}
// a - i b
template <class F>
FFT_INLINE Complex<F> minusTurned(Complex<F> a, Complex<F> b) {
    return {a.re + b.im, a.im - b.re};
}
