// interp/akima.cpp - CSAKM, C2AKM: Akima's cubic spline
//
// H. Akima, A new method of interpolation and smooth curve fitting based on local procedures, Journal of the
// ACM 17, 1970. Pieces are made in blocks whose differences and slopes are held on the stack, each by a loop
// without branches.
#include <algorithm>

#include "frame/export.h"
#include "frame/scratch.h"
#include "interp/interp.h"
#include "interp/isa/akima.h"
#include "interp/isa/scale.h"
#include "orvel/interp.h"

namespace orvel::interp {

namespace {

constexpr int64_t longest = 128;

// Pieces first to first + count - 1. Arrays begin two pieces before the block; slopes at its first point.
template <class T>
void make_block(const AkimaLoops<T>& loops, const Points<T>& points, int64_t first, int64_t count, T* brkpt,
                T* spcoef)
{
    T x[longest + 5], f[longest + 5], scale[longest + 5], per_h[longest + 5], m[longest + 5], t[longest + 1];
    const int64_t pieces = points.n - 1, shift = 2 - first;
    const int64_t begin = std::max<int64_t>(first - 2, 0), end = std::min(first + count + 2, pieces);
    for (int64_t k = begin; k <= end; ++k) {
        x[k + shift] = points.x[k];
        f[k + shift] = points.ordinate(k);
    }
    const int64_t at = begin + shift;
    loops.differences(end - begin, x + at, f + at, m + at, scale + at, per_h + at);
    if (first == 0) {
        m[1] = 2 * m[2] - m[3];
        m[0] = 2 * m[1] - m[2];
    }
    if (first + count + 1 >= pieces) {
        T* const last = m + pieces + 1 - first;
        last[1] = 2 * last[0] - last[-1];
        last[2] = 2 * last[1] - last[0];
    }
    loops.slopes(count + 1, m, t);
    loops.columns(count, f + 2, m + 2, scale + 2, per_h + 2, t, spcoef + 4 * first);
    std::copy_n(x + 2, count + 1, brkpt + first);
    T* const last = spcoef + 4 * (first + count);
    last[0] = f[count + 2];
    last[1] = t[count] / part<T>;
}

template <class Frame>
void check_count(Frame& me, int32_t ndata)
{
    if (ndata < 4)
        me.post(terminal, 1, "The number of data points must be 4 or more while NDATA = %(I1) is given.",
                {i(1, ndata)});
}

template <class T>
void c2akm(frame::State& s, int32_t ndata, const T* xdata, const T* fdata, T* brkpt, T* spcoef, int32_t* iwk)
{
    Routine<T, "C2AKM"> me(s);
    check_count(me, ndata);
    if (me.failed()) return;
    const Points<T> points = sorted(s, ndata, xdata, fdata, brkpt, spcoef, 4, iwk);
    if (me.failed()) return;
    const int64_t pieces = points.n - 1;
    for (int64_t first = 0; first < pieces; first += longest)
        make_block(isa::of_type<T>(akima_loops()), points, first, std::min(pieces - first, longest), brkpt,
                   spcoef);
    spcoef[4 * pieces + 2] = spcoef[4 * pieces + 3] = 0;
}

template <class T>
void csakm(const int32_t* ndata, const T* xdata, const T* fdata, T* brkpt, T* spcoef)
{
    Routine<T, "CSAKM"> me;
    check_count(me, *ndata);
    if (me.failed()) return;
    Scratch<int32_t> iwk;
    if (!iwk.allocate(*ndata)) return no_work_storage(me, *ndata);
    c2akm<T>(me.state(), *ndata, xdata, fdata, brkpt, spcoef, iwk);
}

template <class T>
void c2akm_alone(const int32_t* ndata, const T* xdata, const T* fdata, T* brkpt, T* spcoef, int32_t* iwk)
{
    c2akm(frame::state(), *ndata, xdata, fdata, brkpt, spcoef, iwk);
}

}  // namespace

}  // namespace orvel::interp

ORVEL_EXPORT(CSAKM, csakm_, 5, orvel::interp::csakm<float>);
ORVEL_EXPORT(DCSAKM, dcsakm_, 5, orvel::interp::csakm<double>);
ORVEL_EXPORT(C2AKM, c2akm_, 6, orvel::interp::c2akm_alone<float>);
ORVEL_EXPORT(DC2AKM, dc2akm_, 6, orvel::interp::c2akm_alone<double>);
