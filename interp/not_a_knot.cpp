// interp/not_a_knot.cpp - CSINT, CSDEC and their workers: cubic splines by a tridiagonal system for the
// slopes
//
// Method of C. de Boor, A Practical Guide to Splines, Springer, 1978, chapter 4. While the system is solved a
// column of the coefficients holds its ordinate, p, q and the divided difference to the right: the equation
// of the column has become s(i) = p - q s(i + 1).
#include "frame/export.h"
#include "frame/scratch.h"
#include "interp/interp.h"
#include "orvel/interp.h"

namespace orvel::interp {

namespace {

template <class T>
struct Ends {
    int32_t left, right;
    T vleft, vright;
};

// An equation of the two slopes at an end of the data: a s(1) + b s(2) = e.
template <class T>
struct EndEquation {
    T a, b, e;
};

// h are the scaled spacings and d the divided differences of the first two pieces; step is the first spacing
// by `part`, as these equations are.
template <class T>
EndEquation<T> first_equation(const Ends<T>& ends, int64_t n, const Spacings<T>& h, T step, const T (&d)[2])
{
    if (ends.left == 1) return {1, 0, ends.vleft};
    if (ends.left == 2) return {2 * part<T>, part<T>, part<T> * d[0] * 3 - step * ends.vleft / 2};
    if (n == 2) return {part<T>, part<T>, part<T> * d[0] * 2};
    const T both = h.left + h.right;
    return {h.right, both, ((h.left + 2 * both) * h.right * d[0] + h.left * h.left * d[1]) / both};
}

// Of the last two pieces.
template <class T>
EndEquation<T> last_equation(const Ends<T>& ends, int64_t n, const Spacings<T>& h, T step, const T (&d)[2])
{
    if (ends.right == 1) return {0, 1, ends.vright};
    if (ends.right == 2) return {part<T>, 2 * part<T>, part<T> * d[1] * 3 + step * ends.vright / 2};
    if (n == 2 && ends.left == 0) return {0, 1, d[1]};
    if (n == 2 || (n == 3 && ends.left == 0)) return {part<T>, part<T>, part<T> * d[1] * 2};
    const T both = h.left + h.right;
    return {both, h.left, (d[0] * h.right * h.right + d[1] * h.left * (h.right + 2 * both)) / both};
}

// Forward elimination; returns the last slope. Spacings and differences of the last two pieces are carried.
template <class T>
T eliminate(const Ends<T>& ends, const Points<T>& points, T* brkpt, T* spcoef)
{
    const int64_t n = points.n;
    const auto difference = [&](int64_t k, T spacing) {
        return (points.ordinate(k + 1) - points.ordinate(k)) / spacing;
    };
    T h[2], d[2];
    h[0] = points.x[1] - points.x[0];
    d[0] = difference(0, h[0]);
    h[1] = n > 2 ? points.x[2] - points.x[1] : h[0];
    d[1] = n > 2 ? difference(1, h[1]) : d[0];
    Spacings<T> row(h[0], h[1]);
    const EndEquation<T> first = first_equation(ends, n, row, h[0] * part<T>, d);
    T pivot = first.a, upper = first.b;
    T p = first.e / pivot, q = upper / pivot;
    const auto store = [&](int64_t k, T delta) {
        T* const column = spcoef + 4 * k;
        column[0] = points.ordinate(k);
        column[1] = p;
        column[2] = q;
        column[3] = delta;
        brkpt[k] = points.x[k];
    };
    store(0, d[0]);
    for (int64_t k = 1; k < n - 1; ++k) {
        if (k > 1) {
            h[0] = h[1];
            d[0] = d[1];
            h[1] = points.x[k + 1] - points.x[k];
            d[1] = difference(k, h[1]);
            row = {h[0], h[1]};
        }
        // The next pivot waits for a quotient only: q is the upper element by the pivot.
        pivot = 2 * (row.left + row.right) - row.right * upper / pivot;
        upper = row.left;
        const T per_pivot = 1 / pivot;
        p = (3 * (row.right * d[0] + row.left * d[1]) - row.right * p) * per_pivot;
        q = upper * per_pivot;
        store(k, d[1]);
    }
    const EndEquation<T> last = last_equation(ends, n, row, h[1] * part<T>, d);
    const T slope = (last.e - last.a * p) / (last.b - last.a * q);
    spcoef[4 * (n - 1)] = points.ordinate(n - 1);
    brkpt[n - 1] = points.x[n - 1];
    return slope;
}

// Back substitution, and the coefficients of each piece.
template <class T>
void substitute(int64_t n, T slope, const T* brkpt, T* spcoef)
{
    T* column = spcoef + 4 * (n - 1);
    column[1] = slope;
    column[2] = column[3] = 0;
    for (int64_t k = n - 2; k >= 0; --k) {
        column -= 4;
        const T right = slope;
        slope = column[1] - column[2] * right;
        column[1] = slope;
        set_curvature(brkpt[k + 1] - brkpt[k], column[3], slope, right, column);
    }
}

template <class Frame>
void check_count(Frame& me, int32_t ndata)
{
    if (ndata < 2)
        me.post(terminal, 1, "The number of data points must be 2 or more while NDATA = %(I1) is given.",
                {i(1, ndata)});
}

template <class Frame>
void check_ends(Frame& me, int32_t ileft, int32_t iright)
{
    if (ileft < 0 || ileft > 2)
        me.post(terminal, 2, "The argument ILEFT = %(I1).  It must be 0, 1 or 2.", {i(1, ileft)});
    if (iright < 0 || iright > 2)
        me.post(terminal, 3, "The argument IRIGHT = %(I1).  It must be 0, 1 or 2.", {i(1, iright)});
}

template <class T>
void c2dec(frame::State& s, int32_t ndata, const T* xdata, const T* fdata, int32_t ileft, T vleft,
           int32_t iright, T vright, T* brkpt, T* spcoef, int32_t* iwk)
{
    Routine<T, "C2DEC"> me(s);
    check_count(me, ndata);
    check_ends(me, ileft, iright);
    if (me.failed()) return;
    const Points<T> points = sorted(s, ndata, xdata, fdata, brkpt, spcoef, 4, iwk);
    if (me.failed()) return;
    const Ends<T> ends{ileft, iright, vleft, vright};
    substitute(points.n, eliminate(ends, points, brkpt, spcoef), brkpt, spcoef);
}

template <class T>
void c2int(frame::State& s, int32_t ndata, const T* xdata, const T* fdata, T* brkpt, T* spcoef, int32_t* iwk)
{
    Routine<T, "C2INT"> me(s);
    c2dec<T>(s, ndata, xdata, fdata, 0, 0, 0, 0, brkpt, spcoef, iwk);
}

template <class T>
void csint(const int32_t* ndata, const T* xdata, const T* fdata, T* brkpt, T* spcoef)
{
    Routine<T, "CSINT"> me;
    check_count(me, *ndata);
    if (me.failed()) return;
    Scratch<int32_t> iwk;
    if (!iwk.allocate(*ndata)) return no_work_storage(me, *ndata);
    c2int<T>(me.state(), *ndata, xdata, fdata, brkpt, spcoef, iwk);
}

template <class T>
void csdec(const int32_t* ndata, const T* xdata, const T* fdata, const int32_t* ileft, const T* vleft,
           const int32_t* iright, const T* vright, T* brkpt, T* spcoef)
{
    Routine<T, "CSDEC"> me;
    check_count(me, *ndata);
    check_ends(me, *ileft, *iright);
    if (me.failed()) return;
    Scratch<int32_t> iwk;
    if (!iwk.allocate(*ndata)) return no_work_storage(me, *ndata);
    c2dec<T>(me.state(), *ndata, xdata, fdata, *ileft, *vleft, *iright, *vright, brkpt, spcoef, iwk);
}

}  // namespace

}  // namespace orvel::interp

ORVEL_EXPORT_REALS(CSINT, csint_, DCSINT, dcsint_, 5, orvel::interp::csint);
ORVEL_EXPORT_REALS(C2INT, c2int_, DC2INT, dc2int_, 6, orvel::interp::c2int);
ORVEL_EXPORT_REALS(CSDEC, csdec_, DCSDEC, dcsdec_, 9, orvel::interp::csdec);
ORVEL_EXPORT_REALS(C2DEC, c2dec_, DC2DEC, dc2dec_, 10, orvel::interp::c2dec);
