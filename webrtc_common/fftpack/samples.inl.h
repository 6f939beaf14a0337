// The 16-bit values at the ends of a transform: their places, and the conversions of 1, 4 and 8 of them to floats
// and back. Included by one source file an instruction set.
//
// Samples are a plain pointer to int16. The other places act as pointers that are moved by adding.
//
// Single values use the same conversion as vectors, because a cast in the language is undefined outside the range
// of its target.

// Values 0 to `last` of a packed half spectrum, which holds the imaginary part of bin 0 too, in front of value 1,
// and halves of the first and the last value. They are loaded as multiples of kUnit: both parts of a pair become the
// upper half of 32 bits with one instruction each, and a power of two changes no bit of the transform.
struct PackedSpectrum {
    static constexpr int kUnit = 65536;

    const int16_t* data;
    ptrdiff_t last;
    ptrdiff_t index = 0;

    template <class Distance>
    FFT_INLINE PackedSpectrum operator+(Distance n) const {
        return {data, last, index + static_cast<ptrdiff_t>(n)};
    }
    FFT_INLINE const int16_t* pairs() const { return data + index + 1; }
    FFT_INLINE float value() const {
        const int x = index == 0 ? *data : *pairs();
        return static_cast<float>(x * (index == 0 ? 2 : 1) *
                                  (index == last ? 2 : 1)) *  // a single value is both
               kUnit;
    }
};

// Values leave multiplied by `scale`, truncated to 32 bits, of which the low 16 are kept.
struct SpectrumOut {
    int16_t* data;
    float scale;

    template <class Distance>
    FFT_INLINE SpectrumOut operator+(Distance n) const {
        return {data + n, scale};
    }
};

// Values leave as value * gain + 512 in single precision, truncated to 32 bits, shifted right by 10 and saturated.
// What exceeds 32 bits would be converted to the lowest number, which is right for negative values alone. The others
// are limited before: as integers, which order positive floats as they are, because the units for floats are busy.
struct SamplesOut {
    static constexpr float kLargest = 2147483520.0f;  // below 2^31
    int16_t* data;
    float gain;

    template <class Distance>
    FFT_INLINE SamplesOut operator+(Distance n) const {
        return {data + n, gain};
    }
    template <class Vector>
    FFT_INLINE Vector scaled(Vector v) const {
        return v * gain + 512.0f;
    }
    static FFT_INLINE __m128 limited(__m128 v) {
        const __m128i largest = _mm_castps_si128(_mm_set1_ps(kLargest));
        return _mm_castsi128_ps(_mm_min_epi32(_mm_castps_si128(v), largest));
    }
#if defined(__AVX2__)
    static FFT_INLINE __m256 limited(__m256 v) {
        const __m256i largest = _mm256_castps_si256(_mm256_set1_ps(kLargest));
        return _mm256_castsi256_ps(_mm256_min_epi32(_mm256_castps_si256(v), largest));
    }
#elif defined(__AVX__)
    static FFT_INLINE __m256 limited(__m256 v) {
        return _mm256_min_ps(v, _mm256_set1_ps(kLargest));
    }
#endif
};

// Eight samples of two vectors of truncated values.
FFT_INLINE __m128i saturated(__m128i low, __m128i high) {
    return _mm_packs_epi32(_mm_srai_epi32(low, 10), _mm_srai_epi32(high, 10));
}

struct OneSample {
    static FFT_INLINE float load(const int16_t* p) { return *p; }
    static FFT_INLINE float load(PackedSpectrum p) { return p.value(); }
    static FFT_INLINE void store(SpectrumOut to, float v) {
        *to.data = static_cast<int16_t>(_mm_cvttss_si32(_mm_set_ss(v * to.scale)));
    }
    static FFT_INLINE void store(SamplesOut to, float v) {
        const __m128i truncated = _mm_cvttps_epi32(SamplesOut::limited(_mm_set_ss(to.scaled(v))));
        *to.data = static_cast<int16_t>(_mm_cvtsi128_si32(saturated(truncated, truncated)));
    }
};

// A pair of 16-bit values is one of 32 bits, so that its parts are separated and combined without a shuffle.
struct FourSamples {
    static FFT_INLINE __m128i widened(const int16_t* p) {
        return _mm_cvtepi16_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
    }
    static FFT_INLINE __m128 load(const int16_t* p) { return _mm_cvtepi32_ps(widened(p)); }
    static FFT_INLINE void store(SamplesOut to, __m128 v) {
        const __m128i truncated = _mm_cvttps_epi32(SamplesOut::limited(to.scaled(v)));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to.data), saturated(truncated, truncated));
    }

    using Pairs = __m128i;
    static FFT_INLINE Pairs loadPairs(const int16_t* p) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    }
    static FFT_INLINE void storePairs(int16_t* p, Pairs v) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
    }
    static FFT_INLINE Pairs reversed(Pairs v) { return _mm_shuffle_epi32(v, _MM_SHUFFLE(0, 1, 2, 3)); }
    static FFT_INLINE Pairs upper16(Pairs v) { return _mm_and_si128(v, _mm_set1_epi32(-0x10000)); }
    static FFT_INLINE Pairs loadReversedPairs(const int16_t* p) { return reversed(loadPairs(p)); }
    static FFT_INLINE void storeReversedPairs(int16_t* p, Pairs v) { storePairs(p, reversed(v)); }
    static FFT_INLINE __m128 re(Pairs v) { return _mm_cvtepi32_ps(_mm_slli_epi32(v, 16)); }
    static FFT_INLINE __m128 im(Pairs v) { return _mm_cvtepi32_ps(upper16(v)); }
    static FFT_INLINE Pairs truncatedPairs(__m128 re, __m128 im) {
        return _mm_blend_epi16(_mm_cvttps_epi32(re), _mm_slli_epi32(_mm_cvttps_epi32(im), 16), 0xaa);
    }
};

// Pairs 0 1 4 5 | 2 3 6 7.
#if defined(__AVX2__)
struct EightSamples {
    static FFT_INLINE __m256 load(const int16_t* p) {
        return _mm256_cvtepi32_ps(_mm256_cvtepi16_epi32(FourSamples::loadPairs(p)));
    }
    static FFT_INLINE void store(SamplesOut to, __m256 v) {
        const __m256i shifted = _mm256_srai_epi32(_mm256_cvttps_epi32(SamplesOut::limited(to.scaled(v))), 10);
        FourSamples::storePairs(
            to.data, _mm_packs_epi32(_mm256_castsi256_si128(shifted), _mm256_extracti128_si256(shifted, 1)));
    }

    using Pairs = __m256i;
    static FFT_INLINE Pairs loadPairs(const int16_t* p) { return inOrder(load256(p)); }
    static FFT_INLINE Pairs loadReversedPairs(const int16_t* p) { return inReversedOrder(load256(p)); }
    static FFT_INLINE void storePairs(int16_t* p, Pairs v) { store256(p, inOrder(v)); }
    static FFT_INLINE void storeReversedPairs(int16_t* p, Pairs v) { store256(p, inReversedOrder(v)); }
    static FFT_INLINE __m256 re(Pairs v) { return _mm256_cvtepi32_ps(_mm256_slli_epi32(v, 16)); }
    static FFT_INLINE __m256 im(Pairs v) {
        return _mm256_cvtepi32_ps(_mm256_and_si256(v, _mm256_set1_epi32(-0x10000)));
    }
    static FFT_INLINE Pairs truncatedPairs(__m256 re, __m256 im) {
        return _mm256_blend_epi16(_mm256_cvttps_epi32(re), _mm256_slli_epi32(_mm256_cvttps_epi32(im), 16),
                                  0xaa);
    }

  private:
    static FFT_INLINE Pairs load256(const int16_t* p) {
        return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
    }
    static FFT_INLINE void store256(int16_t* p, Pairs v) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v);
    }
    static FFT_INLINE Pairs inOrder(Pairs v) { return _mm256_permute4x64_epi64(v, _MM_SHUFFLE(3, 1, 2, 0)); }
    static FFT_INLINE Pairs inReversedOrder(Pairs v) {
        return _mm256_permutevar8x32_epi32(v, _mm256_setr_epi32(7, 6, 3, 2, 5, 4, 1, 0));
    }
};
#elif defined(__AVX__)
struct EightSamples {
    static FFT_INLINE __m256 load(const int16_t* p) {
        return _mm256_cvtepi32_ps(joined(FourSamples::widened(p), FourSamples::widened(p + 4)));
    }
    static FFT_INLINE void store(SamplesOut to, __m256 v) {
        const __m256i truncated = _mm256_cvttps_epi32(SamplesOut::limited(to.scaled(v)));
        FourSamples::storePairs(
            to.data, saturated(_mm256_castsi256_si128(truncated), _mm256_extractf128_si256(truncated, 1)));
    }

    struct Pairs {
        __m128i low;
        __m128i high;
    };
    static FFT_INLINE Pairs loadPairs(const int16_t* p) {
        return inOrder({FourSamples::loadPairs(p), FourSamples::loadPairs(p + 8)});
    }
    static FFT_INLINE void storePairs(int16_t* p, Pairs v) {
        const Pairs pairs = inOrder(v);
        FourSamples::storePairs(p, pairs.low);
        FourSamples::storePairs(p + 8, pairs.high);
    }
    static FFT_INLINE Pairs loadReversedPairs(const int16_t* p) { return reversed(loadPairs(p)); }
    static FFT_INLINE void storeReversedPairs(int16_t* p, Pairs v) { storePairs(p, reversed(v)); }
    static FFT_INLINE __m256 re(Pairs v) {
        return _mm256_cvtepi32_ps(joined(_mm_slli_epi32(v.low, 16), _mm_slli_epi32(v.high, 16)));
    }
    static FFT_INLINE __m256 im(Pairs v) {
        return _mm256_cvtepi32_ps(joined(FourSamples::upper16(v.low), FourSamples::upper16(v.high)));
    }
    static FFT_INLINE Pairs truncatedPairs(__m256 re, __m256 im) {
        return {FourSamples::truncatedPairs(_mm256_castps256_ps128(re), _mm256_castps256_ps128(im)),
                FourSamples::truncatedPairs(_mm256_extractf128_ps(re, 1), _mm256_extractf128_ps(im, 1))};
    }

  private:
    static FFT_INLINE __m256i joined(__m128i low, __m128i high) {
        return _mm256_insertf128_si256(_mm256_castsi128_si256(low), high, 1);
    }
    static FFT_INLINE Pairs inOrder(Pairs v) {
        return {_mm_unpacklo_epi64(v.low, v.high), _mm_unpackhi_epi64(v.low, v.high)};
    }
    static FFT_INLINE Pairs reversed(Pairs v) {
        return {FourSamples::reversed(v.high), FourSamples::reversed(v.low)};
    }
};
#endif
