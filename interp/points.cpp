// interp/points.cpp - C1SOR: data points by ascending abscissa
#include <algorithm>

#include "frame/export.h"
#include "interp/interp.h"
#include "orvel/interp.h"
#include "util/sort.h"

namespace orvel::interp {

namespace {

// The first k > 0 with x(k - 1) < x(k) not true, or n. Blocks are tested as a whole.
template <class T>
int64_t first_not_ascending(int64_t n, const T* x)
{
    constexpr int64_t block = 64;
    int64_t k = 1;
    for (; n - k >= block; k += block) {
        T descents = 0;
        for (int64_t j = k; j < k + block; ++j) descents += x[j - 1] < x[j] ? T(0) : T(1);
        if (descents > 0) break;
    }
    while (k < n && x[k - 1] < x[k]) ++k;
    return k;
}

template <class Frame, class T>
void post_equal(Frame& me, int32_t a, int32_t b, T x)
{
    me.post(
        terminal, 2,
        "Points in the data point abscissas array, XDATA, must be distinct, but XDATA(%(I1)) = XDATA(%(I2)) = %(R1).",
        {i(1, a), i(2, b), r(1, static_cast<double>(x))});
}

}  // namespace

template <class T>
Points<T> sorted(frame::State& s, int64_t n, const T* x, const T* f, T* brkpt, T* spcoef, int64_t ldc,
                 int32_t* iwk)
{
    Routine<T, "C1SOR"> me(s);
    const int64_t at = first_not_ascending(n, x);
    if (at >= n) return {n, x, f, 1};
    if (x[at - 1] == x[at]) {
        post_equal(me, static_cast<int32_t>(at), static_cast<int32_t>(at + 1), x[at]);
        return {};
    }
    for (int32_t k = 0; k < n; ++k) iwk[k] = k + 1;
    if (brkpt != x) std::copy_n(x, n, brkpt);
    util::sort_labelled(n, brkpt, iwk);
    for (int64_t k = 0; k < n; ++k) spcoef[k * ldc] = f[iwk[k] - 1];
    for (int64_t k = 1; k < n; ++k)
        if (brkpt[k - 1] == brkpt[k]) {
            post_equal(me, iwk[k - 1], iwk[k], brkpt[k]);
            return {};
        }
    return {n, brkpt, spcoef, ldc};
}

template Points<float> sorted(frame::State&, int64_t, const float*, const float*, float*, float*, int64_t,
                              int32_t*);
template Points<double> sorted(frame::State&, int64_t, const double*, const double*, double*, double*,
                               int64_t, int32_t*);

namespace {

template <class T>
void c1sor(const int32_t* ndata, const T* xdata, const T* fdata, T* brkpt, T* spcoef, const int32_t* ldc,
           int32_t* iwk)
{
    if (*ldc < 1) return;
    const Points<T> points = sorted(frame::state(), *ndata, xdata, fdata, brkpt, spcoef, int64_t{*ldc}, iwk);
    if (points.x != xdata || points.n < 1) return;
    std::copy_n(points.x, points.n, brkpt);
    for (int64_t k = 0; k < points.n; ++k) spcoef[k * *ldc] = points.ordinate(k);
}

}  // namespace

}  // namespace orvel::interp

ORVEL_EXPORT_REALS(C1SOR, c1sor_, DC1SOR, dc1sor_, 7, orvel::interp::c1sor);
