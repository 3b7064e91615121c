// kernels/isa/sums.cpp - sums over contiguous vectors
#include "kernels/isa/lanes.h"
#include "kernels/isa/loops.h"

namespace orvel::kernels {

namespace {

// `streams` sums at once. add(lanes, s, i) adds what begins at i to the vectors s[0], s[1] ... The sums run
// in `chains` sets that are added in pairs at the end; then the lanes fold, and each width takes its part of
// the rest.
template <class R, int bytes, int streams, int finest, class F>
inline __attribute__((always_inline)) void sum_rest(typename Lanes<R, bytes>::Vector (&s)[streams], int64_t i,
                                                    int64_t n, R* result, F add)
{
    typedef Lanes<R, bytes / 2> Half;
    if constexpr (Lanes<R, bytes>::count == finest) {
        for (int k = 0; k < streams; ++k)
            for (int j = 0; j < finest; ++j) result[k * finest + j] = s[k][j];
    } else if constexpr (Half::count == 1) {
        for (int k = 0; k < streams; ++k) result[k] = s[k][0] + s[k][1];
        if (n > i) add(Single<R>(), *reinterpret_cast<R(*)[streams]>(result), i);
    } else {
        typename Half::Vector half[streams];
        for (int k = 0; k < streams; ++k) half[k] = fold<R, bytes>(s[k]);
        if (n - i >= Half::count) {
            add(Half(), half, i);
            i += Half::count;
        }
        sum_rest<R, bytes / 2, streams, finest>(half, i, n, result, add);
    }
}

template <class R, int streams, int chains, int finest, class F>
inline __attribute__((always_inline)) void sum_lanes(int64_t n, R* result, F add)
{
    typedef Lanes<R, widest> L;
    typename L::Vector s[chains][streams] = {};
    int64_t i = 0;
    for (; n - i >= chains * L::count; i += chains * L::count)
#pragma GCC unroll 8
        for (int c = 0; c < chains; ++c) add(L(), s[c], i + c * L::count);
#pragma GCC unroll 8
    for (int c = 0; c < chains - 1; ++c)
        if (n - i >= L::count) {
            add(L(), s[c], i);
            i += L::count;
        }
#pragma GCC unroll 3
    for (int half = chains / 2; half > 0; half /= 2)
#pragma GCC unroll 4
        for (int c = 0; c < half; ++c)
#pragma GCC unroll 2
            for (int k = 0; k < streams; ++k) s[c][k] += s[c + half][k];
    sum_rest<R, widest, streams, finest>(s[0], i, n, result, add);
}

template <class R>
R sum(int64_t n, const R* x)
{
    R result[1];
    sum_lanes<R, 1, 8, 1>(n, result, [=](auto l, auto& s, int64_t i) { s[0] += l.load(x + i); });
    return result[0];
}

template <class R>
R magnitudes(int64_t n, const R* x)
{
    R result[1];
    sum_lanes<R, 1, 8, 1>(n, result, [=](auto l, auto& s, int64_t i) { s[0] += l.magnitude(l.load(x + i)); });
    return result[0];
}

template <class R>
R products(int64_t n, const R* x, const R* y)
{
    R result[1];
    sum_lanes<R, 1, 4, 1>(n, result,
                          [=](auto l, auto& s, int64_t i) { s[0] += l.load(x + i) * l.load(y + i); });
    return result[0];
}

template <class R>
R triple_products(int64_t n, const R* x, const R* y, const R* z)
{
    R result[1];
    sum_lanes<R, 1, 4, 1>(n, result, [=](auto l, auto& s, int64_t i) {
        s[0] += l.load(x + i) * l.load(y + i) * l.load(z + i);
    });
    return result[0];
}

template <class R>
void norms(int64_t n, const R* x, R result[2])
{
    sum_lanes<R, 2, 4, 1>(n, result, [=](auto l, auto& s, int64_t i) {
        const auto v = l.load(x + i);
        s[0] += l.magnitude(v);
        s[1] += v * v;
    });
}

template <class R>
void complex_products(int64_t n, const R* x, const R* y, R result[4])
{
    sum_lanes<R, 2, 4, 2>(n, result, [=](auto l, auto& s, int64_t i) {
        const auto u = l.load(x + i), v = l.load(y + i);
        s[0] += u * v;
        s[1] += u * l.exchange(v);
    });
}

// Lanes of doubles, loaded from floats.
template <class L>
inline __attribute__((always_inline)) typename L::Vector widen(L, const float* p)
{
    if constexpr (L::count == 1) {
        return static_cast<double>(*p);
    } else {
        typedef float Floats __attribute__((vector_size(L::count * 4), aligned(4), may_alias));
        return __builtin_convertvector(*reinterpret_cast<const Floats*>(p), typename L::Vector);
    }
}

double wide_products(int64_t n, const float* x, const float* y)
{
    double result[1];
    sum_lanes<double, 1, 8, 1>(
        n, result, [=](auto l, auto& s, int64_t i) { s[0] += widen(l, x + i) * widen(l, y + i); });
    return result[0];
}

void wide_complex_products(int64_t n, const float* x, const float* y, double result[4])
{
    sum_lanes<double, 2, 4, 2>(n, result, [=](auto l, auto& s, int64_t i) {
        const auto u = widen(l, x + i), v = widen(l, y + i);
        s[0] += u * v;
        s[1] += u * l.exchange(v);
    });
}

template <class R>
constexpr Sums<R> sums = {sum<R>,   magnitudes<R>,      products<R>, triple_products<R>,
                          norms<R>, complex_products<R>};

}  // namespace

namespace ORVEL_ISA {

extern const Level1Sums level1_sums;
const Level1Sums level1_sums = {sums<float>, sums<double>, {wide_products, wide_complex_products}};

}  // namespace ORVEL_ISA

}  // namespace orvel::kernels
