// Where the 16-bit values of a transform stand that begins or ends with them: as floats do, by adding an index.
// Included by one source file an instruction set.
//
// Samples come as a plain pointer to int16.

// Values 0 to `last` of a packed half spectrum, which holds the imaginary part of bin 0 too, in front of value 1,
// and halves of the first and the last value.
struct PackedSpectrum {
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
        return static_cast<float>(index == 0 || index == last ? 2 * x : x);
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
struct SamplesOut {
    int16_t* data;
    float gain;

    template <class Distance>
    FFT_INLINE SamplesOut operator+(Distance n) const {
        return {data + n, gain};
    }
};
constexpr float kHalfUnit = 512.0f;

// Eight samples of two vectors of truncated values.
FFT_INLINE __m128i narrowed(__m128i low, __m128i high) {
    return _mm_packs_epi32(_mm_srai_epi32(low, 10), _mm_srai_epi32(high, 10));
}
