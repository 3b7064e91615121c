// kernels/isa/sums.cpp - sums over contiguous vectors
#ifdef __AVX512F__
#include <immintrin.h>
#endif

#include "kernels/isa/lanes.h"
#include "kernels/isa/loops.h"

namespace orvel::kernels {

namespace {

using isa::held;

// What is summed at once: one or two vectors.
template <class L>
struct One {
    typename L::Vector a = {};

    One operator+(One other) const { return {a + other.a}; }
};
template <class L>
struct Two {
    typename L::Vector a = {}, b = {};

    Two operator+(Two other) const { return {a + other.a, b + other.b}; }
};

// Chains of additions that do not wait for each other, joined in pairs at the end. add(lanes, sums, i) adds
// what begins at i.
template <class S, class L, int chains>
struct Chains {
    Chains<S, L, chains / 2> first, second;

    template <class F>
    inline __attribute__((always_inline)) void add_to_all(int64_t i, F add)
    {
        first.add_to_all(i, add);
        second.add_to_all(i + chains / 2 * L::count, add);
    }
    template <class F>
    inline __attribute__((always_inline)) int64_t add_to_some(int64_t i, int64_t n, F add)
    {
        return second.add_to_some(first.add_to_some(i, n, add), n, add);
    }
    S joined() const { return first.joined() + second.joined(); }
};
template <class S, class L>
struct Chains<S, L, 1> {
    S sums;

    template <class F>
    inline __attribute__((always_inline)) void add_to_all(int64_t i, F add)
    {
        add(L(), sums, i);
    }
    template <class F>
    inline __attribute__((always_inline)) int64_t add_to_some(int64_t i, int64_t n, F add)
    {
        if (n - i < L::count) return i;
        add(L(), sums, i);
        return i + L::count;
    }
    S joined() const { return sums; }
};

// Folds the lanes down to `finest`, one or two; each width takes its part of the rest.
template <class R, int N, int finest, template <class> class S, class F>
inline __attribute__((always_inline)) auto folded(S<Lanes<R, N>> sums, int64_t i, int64_t n, F add)
{
    if constexpr (N == finest) {
        return sums;
    } else {
        typedef Lanes<R, N / 2> Half;
        S<Half> half;
        half.a = isa::fold<R, N>(sums.a);
        if constexpr (sizeof(half) > sizeof(half.a)) half.b = isa::fold<R, N>(sums.b);
        if (n - i >= Half::count) {
            add(Half(), half, i);
            i += Half::count;
        }
        return folded<R, N / 2, finest, S>(half, i, n, add);
    }
}

template <class R, int N, template <class> class S, int chains, int finest, class F>
inline __attribute__((always_inline)) auto sum_width(int64_t n, F add)
{
    typedef Lanes<R, N> L;
    Chains<S<L>, L, chains> sums;
    int64_t i = 0;
    for (; n - i >= chains * N; i += chains * N) sums.add_to_all(i, add);
    i = sums.add_to_some(i, n, add);
    return folded<R, N, finest, S>(sums.joined(), i, n, add);
}

template <class R, template <class> class S, int chains, int finest, class F>
inline __attribute__((always_inline)) auto sum_lanes(int64_t n, F add)
{
    return n < far<R> ? sum_width<R, isa::lanes<R>, S, chains, finest>(n, add)
                      : sum_width<R, narrow<R>, S, 8, finest>(n, add);
}

template <class R>
R sum(int64_t n, const R* x)
{
    return sum_lanes<R, One, 8, 1>(n, [=](auto l, auto& s, int64_t i) { s.a += l.load(x + i); }).a;
}

template <class R>
R magnitudes(int64_t n, const R* x)
{
    return sum_lanes<R, One, 8, 1>(n, [=](auto l, auto& s, int64_t i) { s.a += l.magnitude(l.load(x + i)); })
        .a;
}

template <class R>
R products(int64_t n, const R* x, const R* y)
{
    return sum_lanes<R, One, 4, 1>(n,
                                   [=](auto l, auto& s, int64_t i) { s.a += l.load(x + i) * l.load(y + i); })
        .a;
}

template <class R>
R triple_products(int64_t n, const R* x, const R* y, const R* z)
{
    return sum_lanes<R, One, 4, 1>(
               n, [=](auto l, auto& s, int64_t i) { s.a += l.load(x + i) * l.load(y + i) * l.load(z + i); })
        .a;
}

// x, or the limit where that is less; what is no number stays. Compilers find the instruction for it by
// themselves, but at the level that has masks.
template <class V>
inline __attribute__((always_inline)) V cut(V x, V limit)
{
#ifdef __AVX512F__
    typedef __typeof__(x[0] + x[0]) R;
    if constexpr (sizeof(V) == 64 && sizeof(R) == 4)
        return (V)_mm512_maskz_min_ps(static_cast<__mmask16>(-1), (__m512)limit, (__m512)x);
    if constexpr (sizeof(V) == 64 && sizeof(R) == 8)
        return (V)_mm512_maskz_min_pd(static_cast<__mmask8>(-1), (__m512d)limit, (__m512d)x);
#endif
    return limit < x ? limit : x;
}
inline float cut(float x, float limit) { return limit < x ? limit : x; }
inline double cut(double x, double limit) { return limit < x ? limit : x; }

template <class R>
void norms(int64_t n, const R* x, R most, R result[2])
{
    const auto s = sum_lanes<R, Two, 4, 1>(n, [=](auto l, auto& sums, int64_t i) {
        const auto v = held(cut(l.magnitude(l.load(x + i)), l.all(most)));
        sums.a += v;
        sums.b += v * v;
    });
    result[0] = s.a;
    result[1] = s.b;
}

template <class S, class R>
void store_pairs(const S& s, R* result)
{
    result[0] = s.a[0];
    result[1] = s.a[1];
    result[2] = s.b[0];
    result[3] = s.b[1];
}

template <class R>
void complex_products(int64_t n, const R* x, const R* y, R result[4])
{
    store_pairs(sum_lanes<R, Two, 4, 2>(n,
                                        [=](auto l, auto& s, int64_t i) {
                                            const auto u = held(l.load(x + i)), v = held(l.load(y + i));
                                            s.a += u * v;
                                            s.b += u * l.exchanged(v);
                                        }),
                result);
}

// Conversions limit these sums, not the memory: the full width always.
double wide_products(int64_t n, const float* x, const float* y)
{
    return sum_width<double, isa::lanes<double>, One, 8, 1>(
               n, [=](auto l, auto& s, int64_t i) { s.a += l.widened(x + i) * l.widened(y + i); })
        .a;
}

void wide_complex_products(int64_t n, const float* x, const float* y, double result[4])
{
    store_pairs(sum_width<double, isa::lanes<double>, Two, 4, 2>(n,
                                                                 [=](auto l, auto& s, int64_t i) {
                                                                     const auto u = l.widened(x + i),
                                                                                v = l.widened(y + i);
                                                                     s.a += u * v;
                                                                     s.b += u * l.exchanged(v);
                                                                 }),
                result);
}

template <class R>
constexpr Sums<R> sums = {sum<R>,   magnitudes<R>,      products<R>, triple_products<R>,
                          norms<R>, complex_products<R>};

}  // namespace

const isa::ForReals<Sums> ORVEL_ISA::sum_loops = {sums<float>, sums<double>};
const WideSums ORVEL_ISA::wide_sum_loops = {wide_products, wide_complex_products};

}  // namespace orvel::kernels
