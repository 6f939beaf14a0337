// The butterflies of radix 2, 3, 4 and 5. The order of every sum is the published one: results are compared
// bit by bit. Included by one source file an instruction set.
//
// Of each pass, `ends` computes the real values of groups k, k + 1, ... as many as F has lanes, `pairs` the
// complex values that an arrangement L has in its lanes. A forward pass reads split rows and writes packed ones,
// a backward pass the reverse.

// For the places of a pass's values see stage.h. Data of n values, from group k on.
template <size_t kRadix, class Place>
struct Split {
    Place data;
    size_t groups;

    FFT_INLINE Place value(size_t j, size_t i) const { return data + (kRadix * i + j) * groups; }
    FFT_INLINE Place pair(size_t m) const { return value(0, 2 * m - 1); }
};
template <class Place>
struct Packed {
    Place data;
    size_t groups;
    size_t width;

    FFT_INLINE Place value(size_t j, size_t i) const { return data + (width * j + i) * groups; }
    FFT_INLINE Place pair(size_t j, size_t m) const { return value(j, 2 * m - 1); }
    // Pairs m, m + 1, ..., `pairs` of them, counted from the end: an odd row is the reversed half of the row
    // before it.
    FFT_INLINE Place reversed(size_t j, size_t m, size_t pairs) const {
        return value(j, width + 1 - 2 * (m + pairs));
    }
};

template <size_t kRadix, class Place>
FFT_INLINE Split<kRadix, Place> split(const Stage& s, Place data, size_t k) {
    return {data + k, s.groups};
}
template <class Place>
FFT_INLINE Packed<Place> packed(const Stage& s, Place data, size_t k) {
    return {data + k, s.groups, s.width};
}

// The twiddle factors of pair m, row 1 first.
template <class L, size_t kRadix>
struct Twiddles {
    Complex<typename L::Floats> row[kRadix];  // that of row 0 is 1 and not used

    FFT_INLINE Twiddles(const Stage& s, size_t m) {
        FFT_UNROLL for (size_t j = 1; j < kRadix; ++j) {
            row[j] = L::twiddles(s.twiddles + s.width * (j - 1) + 2 * m - 2);
        }
    }
};

struct Forward2 {
    static constexpr size_t kRadix = 2;

    template <class F, class From, class To>
    static FFT_INLINE void ends(const Stage& s, From from, To to, size_t k) {
        const auto in = split<2>(s, from, k);
        const auto out = packed(s, to, k);
        const size_t last = s.width - 1;
        const auto a = F::load(in.value(0, 0));
        const auto b = F::load(in.value(1, 0));
        F::store(out.value(0, 0), a + b);
        F::store(out.value(1, last), a - b);
        if (s.width % 2 == 0) {
            const auto c = F::load(in.value(0, last));
            const auto d = F::load(in.value(1, last));
            F::store(out.value(0, last), c);
            F::store(out.value(1, 0), -d);
        }
    }
    template <class L, class From, class To>
    static FFT_INLINE void pairs(const Stage& s, const Twiddles<L, 2>& w, From from, To to, size_t k,
                                 size_t m) {
        const auto in = split<2>(s, from, k);
        const auto out = packed(s, to, k);
        Complex<typename L::Floats> rows[2];
        L::getRows(in.pair(m), s.groups, rows);
        const auto y = timesConj(w.row[1], rows[1]);
        L::putPairs(out.pair(0, m), s.groups, rows[0] + y);
        L::putReversed(out.reversed(1, m, L::kPairs), s.groups, conjDifference(rows[0], y));
    }
};

struct Backward2 {
    static constexpr size_t kRadix = 2;

    template <class F, class From, class To>
    static FFT_INLINE void ends(const Stage& s, From from, To to, size_t k) {
        const auto in = packed(s, from, k);
        const auto out = split<2>(s, to, k);
        const size_t last = s.width - 1;
        const auto a = F::load(in.value(0, 0));
        const auto b = F::load(in.value(1, last));
        if (s.width % 2 == 0) {
            const auto c = F::load(in.value(0, last));
            const auto d = F::load(in.value(1, 0));
            F::store(out.value(0, last), c + c);
            F::store(out.value(1, last), -(d + d));
        }
        F::store(out.value(0, 0), a + b);
        F::store(out.value(1, 0), a - b);
    }
    template <class L, class From, class To>
    static FFT_INLINE void pairs(const Stage& s, const Twiddles<L, 2>& w, From from, To to, size_t k,
                                 size_t m) {
        const auto in = packed(s, from, k);
        const auto out = split<2>(s, to, k);
        const auto x = L::getPairs(in.pair(0, m), s.groups);
        const auto y = L::getReversed(in.reversed(1, m, L::kPairs), s.groups);
        L::putRows(out.pair(m), s.groups, {plusConj(x, y), w.row[1] * minusConj(x, y)});
    }
};

struct Forward4 {
    static constexpr size_t kRadix = 4;

    template <class F, class From, class To>
    static FFT_INLINE void ends(const Stage& s, From from, To to, size_t k) {
        const auto in = split<4>(s, from, k);
        const auto out = packed(s, to, k);
        const size_t last = s.width - 1;
        const auto a = F::load(in.value(0, 0));
        const auto b = F::load(in.value(1, 0));
        const auto c = F::load(in.value(2, 0));
        const auto d = F::load(in.value(3, 0));
        const auto even = a + c;
        const auto odd = b + d;
        F::store(out.value(0, 0), odd + even);
        F::store(out.value(1, last), a - c);
        F::store(out.value(2, 0), d - b);
        F::store(out.value(3, last), even - odd);
        if (s.width % 2 == 0) highest<F>(in, out, last);
    }
    template <class L, class From, class To>
    static FFT_INLINE void pairs(const Stage& s, const Twiddles<L, 4>& w, From from, To to, size_t k,
                                 size_t m) {
        const auto in = split<4>(s, from, k);
        const auto out = packed(s, to, k);
        Complex<typename L::Floats> rows[4];
        L::getRows(in.pair(m), s.groups, rows);
        const auto x = rows[0];
        const auto y = timesConj(w.row[1], rows[1]);
        const auto z = timesConj(w.row[2], rows[2]);
        const auto u = timesConj(w.row[3], rows[3]);
        const auto turned = turnedDifference(y, u);
        L::putPairs(out.pair(0, m), s.groups, (y + u) + (x + z));
        L::putReversed(out.reversed(1, m, L::kPairs), s.groups, conjDifference(x - z, turned));
        L::putPairs(out.pair(2, m), s.groups, turned + (x - z));
        L::putReversed(out.reversed(3, m, L::kPairs), s.groups, conjDifference(x + z, y + u));
    }

  private:
    template <class F, class In, class Out>
    static FFT_INLINE void highest(const In& in, const Out& out, size_t last) {
        const auto half_sqrt2 = F::all(0.70710678118654752440f);
        const auto a = F::load(in.value(0, last));
        const auto b = F::load(in.value(1, last));
        const auto c = F::load(in.value(2, last));
        const auto d = F::load(in.value(3, last));
        const auto im = -half_sqrt2 * (b + d);
        const auto re = half_sqrt2 * (b - d);
        F::store(out.value(0, last), re + a);
        F::store(out.value(1, 0), im - c);
        F::store(out.value(2, last), a - re);
        F::store(out.value(3, 0), im + c);
    }
};

struct Backward4 {
    static constexpr size_t kRadix = 4;

    template <class F, class From, class To>
    static FFT_INLINE void ends(const Stage& s, From from, To to, size_t k) {
        const auto in = packed(s, from, k);
        const auto out = split<4>(s, to, k);
        const size_t last = s.width - 1;
        const auto a = F::load(in.value(0, 0));
        const auto b = F::load(in.value(1, last));
        const auto c = F::load(in.value(2, 0));
        const auto d = F::load(in.value(3, last));
        const auto difference = a - d;
        const auto sum = a + d;
        const auto re = b + b;
        const auto im = c + c;
        F::store(out.value(0, 0), sum + re);
        F::store(out.value(1, 0), difference - im);
        F::store(out.value(2, 0), sum - re);
        F::store(out.value(3, 0), difference + im);
        if (s.width % 2 == 0) highest<F>(in, out, last);
    }
    template <class L, class From, class To>
    static FFT_INLINE void pairs(const Stage& s, const Twiddles<L, 4>& w, From from, To to, size_t k,
                                 size_t m) {
        const auto in = packed(s, from, k);
        const auto out = split<4>(s, to, k);
        const auto x = L::getPairs(in.pair(0, m), s.groups);
        const auto y = L::getReversed(in.reversed(1, m, L::kPairs), s.groups);
        const auto z = L::getPairs(in.pair(2, m), s.groups);
        const auto u = L::getReversed(in.reversed(3, m, L::kPairs), s.groups);
        const auto even = plusConj(x, u);
        const auto odd = plusConj(z, y);
        const auto straight = minusConj(x, u);
        const auto across = minusConj(z, y);
        L::putRows(out.pair(m), s.groups,
                   {even + odd, w.row[1] * plusTurned(straight, across), w.row[2] * (even - odd),
                    w.row[3] * minusTurned(straight, across)});
    }

  private:
    template <class F, class In, class Out>
    static FFT_INLINE void highest(const In& in, const Out& out, size_t last) {
        const auto sqrt2 = F::all(1.41421356237309504880f);
        const auto a = F::load(in.value(0, last));
        const auto b = F::load(in.value(1, 0));
        const auto c = F::load(in.value(2, last));
        const auto d = F::load(in.value(3, 0));
        const auto straight = a - c;
        const auto across = b + d;
        const auto half0 = a + c;
        const auto half2 = d - b;
        F::store(out.value(0, last), half0 + half0);
        F::store(out.value(1, last), sqrt2 * (straight - across));
        F::store(out.value(2, last), half2 + half2);
        F::store(out.value(3, last), -sqrt2 * (straight + across));
    }
};

// Cosines and sines of an odd radix p, all from the first by recurrence, as published. turn[l][j] stands for
// the angle 2 pi j l / p.
struct Turn {
    float cos;
    float sin;
};
constexpr Turn operator*(Turn a, Turn b) {
    return {a.cos * b.cos - a.sin * b.sin, a.cos * b.sin + a.sin * b.cos};
}
template <size_t kRadix>
struct Turns;
template <>
struct Turns<3> {
    static constexpr Turn kStep = {-0.50000006f, 0.866025388f};  // of the float nearest to 2 pi / 3
    static constexpr Turn kTurns[2][2] = {{}, {{}, kStep}};
};
template <>
struct Turns<5> {
    static constexpr Turn kStep = {0.309016973f, 0.95105654f};  // of the float nearest to 2 pi / 5
    static constexpr Turn kTwice = kStep * kStep;
    static constexpr Turn kTurns[3][3] = {{}, {{}, kStep, kTwice}, {{}, kTwice, kTwice* kTwice}};
};

// The transform of an odd radix, on real values or one part of complex ones:
//   sums[0] = value + sum over j of sums[j],
//   sums[l] = value + sum over j of cos * sums[j],  differences[l] = sum over j of sin * differences[j].
template <class F, size_t kRadix>
struct Odd {
    static constexpr size_t kHalf = (kRadix - 1) / 2;
    typename F::Vector sums[kHalf + 1];
    typename F::Vector differences[kHalf + 1];

    FFT_INLINE void transform() {
        const Odd from = *this;
        FFT_UNROLL for (size_t j = 1; j <= kHalf; ++j) sums[0] = sums[0] + from.sums[j];
        FFT_UNROLL for (size_t l = 1; l <= kHalf; ++l) {
            const Turn* const turns = Turns<kRadix>::kTurns[l];
            sums[l] = from.sums[0] + F::all(turns[1].cos) * from.sums[1];
            differences[l] = F::all(turns[1].sin) * from.differences[1];
            FFT_UNROLL for (size_t j = 2; j <= kHalf; ++j) {
                sums[l] = sums[l] + F::all(turns[j].cos) * from.sums[j];
                differences[l] = differences[l] + F::all(turns[j].sin) * from.differences[j];
            }
        }
    }
};

// Only odd factors follow an odd factor, so no row of these passes has an even width.
template <size_t kOddRadix>
struct ForwardOdd {
    static constexpr size_t kRadix = kOddRadix;
    static constexpr size_t kHalf = (kRadix - 1) / 2;

    template <class F, class From, class To>
    static FFT_INLINE void ends(const Stage& s, From from, To to, size_t k) {
        const auto in = split<kRadix>(s, from, k);
        const auto out = packed(s, to, k);
        Odd<F, kRadix> odd;
        odd.sums[0] = F::load(in.value(0, 0));
        FFT_UNROLL for (size_t j = 1; j <= kHalf; ++j) {
            const auto a = F::load(in.value(j, 0));
            const auto b = F::load(in.value(kRadix - j, 0));
            odd.sums[j] = a + b;
            odd.differences[j] = b - a;
        }
        odd.transform();
        F::store(out.value(0, 0), odd.sums[0]);
        FFT_UNROLL for (size_t j = 1; j <= kHalf; ++j) {
            F::store(out.value(2 * j - 1, s.width - 1), odd.sums[j]);
            F::store(out.value(2 * j, 0), odd.differences[j]);
        }
    }
    template <class L, class From, class To>
    static FFT_INLINE void pairs(const Stage& s, const Twiddles<L, kRadix>& w, From from, To to, size_t k,
                                 size_t m) {
        using F = typename L::Floats;
        const auto in = split<kRadix>(s, from, k);
        const auto out = packed(s, to, k);
        Complex<F> rows[kRadix];
        L::getRows(in.pair(m), s.groups, rows);
        Odd<F, kRadix> re, im;
        re.sums[0] = rows[0].re;
        im.sums[0] = rows[0].im;
        FFT_UNROLL for (size_t j = 1; j <= kHalf; ++j) {
            const auto x = timesConj(w.row[j], rows[j]);
            const auto y = timesConj(w.row[kRadix - j], rows[kRadix - j]);
            const auto sum = x + y;
            const auto difference = turnedDifference(x, y);
            re.sums[j] = sum.re;
            im.sums[j] = sum.im;
            re.differences[j] = difference.re;
            im.differences[j] = difference.im;
        }
        re.transform();
        im.transform();
        L::putPairs(out.pair(0, m), s.groups, {re.sums[0], im.sums[0]});
        FFT_UNROLL for (size_t j = 1; j <= kHalf; ++j) {
            const Complex<F> a = {re.sums[j], im.sums[j]};
            const Complex<F> b = {re.differences[j], im.differences[j]};
            L::putPairs(out.pair(2 * j, m), s.groups, a + b);
            L::putReversed(out.reversed(2 * j - 1, m, L::kPairs), s.groups, conjDifference(a, b));
        }
    }
};

struct Backward5 {
    static constexpr size_t kRadix = 5;
    static constexpr size_t kHalf = 2;

    template <class F, class From, class To>
    static FFT_INLINE void ends(const Stage& s, From from, To to, size_t k) {
        const auto in = packed(s, from, k);
        const auto out = split<5>(s, to, k);
        Odd<F, 5> odd;
        odd.sums[0] = F::load(in.value(0, 0));
        FFT_UNROLL for (size_t j = 1; j <= kHalf; ++j) {
            const auto a = F::load(in.value(2 * j - 1, s.width - 1));
            const auto b = F::load(in.value(2 * j, 0));
            odd.sums[j] = a + a;
            odd.differences[j] = b + b;
        }
        odd.transform();
        F::store(out.value(0, 0), odd.sums[0]);
        FFT_UNROLL for (size_t j = 1; j <= kHalf; ++j) {
            F::store(out.value(j, 0), odd.sums[j] - odd.differences[j]);
            F::store(out.value(5 - j, 0), odd.sums[j] + odd.differences[j]);
        }
    }
    template <class L, class From, class To>
    static FFT_INLINE void pairs(const Stage& s, const Twiddles<L, 5>& w, From from, To to, size_t k,
                                 size_t m) {
        using F = typename L::Floats;
        const auto in = packed(s, from, k);
        const auto out = split<5>(s, to, k);
        const Complex<F> first = L::getPairs(in.pair(0, m), s.groups);
        Odd<F, 5> re, im;
        re.sums[0] = first.re;
        im.sums[0] = first.im;
        FFT_UNROLL for (size_t j = 1; j <= kHalf; ++j) {
            const auto x = L::getPairs(in.pair(2 * j, m), s.groups);
            const auto y = L::getReversed(in.reversed(2 * j - 1, m, L::kPairs), s.groups);
            const auto sum = plusConj(x, y);
            const auto difference = minusConj(x, y);
            re.sums[j] = sum.re;
            im.sums[j] = sum.im;
            re.differences[j] = difference.re;
            im.differences[j] = difference.im;
        }
        re.transform();
        im.transform();
        Complex<F> rows[5] = {{re.sums[0], im.sums[0]}};
        FFT_UNROLL for (size_t j = 1; j <= kHalf; ++j) {
            const Complex<F> x = {re.sums[j], im.sums[j]};
            const Complex<F> y = {re.differences[j], im.differences[j]};
            rows[j] = w.row[j] * plusTurned(x, y);
            rows[5 - j] = w.row[5 - j] * minusTurned(x, y);
        }
        L::putRows(out.pair(m), s.groups, rows);
    }
};

// Unlike the forward pass, with exact factors.
struct Backward3 {
    static constexpr size_t kRadix = 3;
    static constexpr float kCos = -0.5f;
    static constexpr float kSin = 0.86602540378443864676f;

    template <class F, class From, class To>
    static FFT_INLINE void ends(const Stage& s, From from, To to, size_t k) {
        const auto in = packed(s, from, k);
        const auto out = split<3>(s, to, k);
        const auto a = F::load(in.value(0, 0));
        const auto b = F::load(in.value(1, s.width - 1));
        const auto c = F::load(in.value(2, 0));
        const auto sum = b + b;
        const auto re = a + F::all(kCos) * sum;
        const auto im = F::all(kSin) * (c + c);
        F::store(out.value(0, 0), a + sum);
        F::store(out.value(1, 0), re - im);
        F::store(out.value(2, 0), re + im);
    }
    template <class L, class From, class To>
    static FFT_INLINE void pairs(const Stage& s, const Twiddles<L, 3>& w, From from, To to, size_t k,
                                 size_t m) {
        const auto in = packed(s, from, k);
        const auto out = split<3>(s, to, k);
        const auto x = L::getPairs(in.pair(0, m), s.groups);
        const auto y = L::getPairs(in.pair(2, m), s.groups);
        const auto z = L::getReversed(in.reversed(1, m, L::kPairs), s.groups);
        const auto straight = x + scaled(kCos, plusConj(y, z));
        const auto across = scaled(kSin, minusConj(y, z));
        L::putRows(out.pair(m), s.groups,
                   {x + plusConj(y, z), w.row[1] * plusTurned(straight, across),
                    w.row[2] * minusTurned(straight, across)});
    }
};
