// interp/periodic.cpp - CSPER, C2PER: periodic cubic spline
//
// The cyclic system for the slopes is diagonally dominant, so that elimination needs no pivoting (G. H.
// Golub, C. F. Van Loan, Matrix Computations, section 4.1). The last unknown t is kept aside: elimination
// gives every other slope as s(i) = p - q s(i + 1) - v t, back substitution as a - b t with |b| < 1, and the
// last equation t itself.
#include "frame/export.h"
#include "frame/scratch.h"
#include "interp/interp.h"
#include "orvel/interp.h"

namespace orvel::interp {

namespace {

// Data whose last ordinate is the first one, and the columns of the coefficients, which hold ordinate, p, q
// and v (then a in place of p and b in place of v) until the pieces are made.
template <class T>
class Cycle {
public:
    Cycle(const Points<T>& points, T* brkpt, T* spcoef)
        : points_(points), pieces_(points.n - 1), brkpt_(brkpt), spcoef_(spcoef)
    {}

    void build()
    {
        const Piece last = piece(pieces_ - 1, points_.ordinate(0));
        const Piece before = eliminate(last);
        make_pieces(last_slope(before, last));
    }

private:
    struct Piece {
        T h, delta;
    };
    struct Equation {
        T lower, diagonal, upper, right;
    };

    T* column(int64_t k) const { return spcoef_ + 4 * k; }

    Piece piece(int64_t k, T next) const
    {
        const T h = points_.x[k + 1] - points_.x[k];
        return {h, (next - points_.ordinate(k)) / h};
    }

    // Of the point between two pieces.
    static Equation equation(const Piece& g, const Piece& h)
    {
        const Spacings<T> row(g.h, h.h);
        return {row.right, 2 * (row.left + row.right), row.left,
                3 * (row.right * g.delta + row.left * h.delta)};
    }

    // All but the last equation; the slope after the last of these is t. Returns the last piece but one.
    Piece eliminate(Piece left)
    {
        const int64_t count = pieces_ - 1;
        T pivot = 0, upper = 0, p = 0, q = 0, v = 0;
        for (int64_t k = 0; k < count; ++k) {
            const Piece right = piece(k, points_.ordinate(k + 1));
            const Equation e = equation(left, right);
            // The next pivot waits for a quotient only: q is the upper element by the pivot.
            pivot = k == 0 ? e.diagonal : e.diagonal - e.lower * upper / pivot;
            const T per_pivot = 1 / pivot;
            upper = e.upper;
            p = (e.right - e.lower * p) * per_pivot;
            v = (k == 0 ? e.lower : -e.lower * v) * per_pivot;
            q = upper * per_pivot;
            T* const c = column(k);
            c[0] = points_.ordinate(k);
            c[1] = p;
            c[2] = q;
            c[3] = v;
            brkpt_[k] = points_.x[k];
            left = right;
        }
        column(count - 1)[3] = q + v;
        for (int64_t k = count; k <= pieces_; ++k) brkpt_[k] = points_.x[k];
        return left;
    }

    T last_slope(const Piece& before, const Piece& last)
    {
        const int64_t top = pieces_ - 2;
        T a = column(top)[1], b = column(top)[3];
        for (int64_t k = top - 1; k >= 0; --k) {
            T* const c = column(k);
            c[1] = a = c[1] - c[2] * a;
            c[3] = b = c[3] - c[2] * b;
        }
        const Equation e = equation(before, last);
        return (e.right - e.lower * column(top)[1] - e.upper * a) /
               (e.diagonal - e.lower * column(top)[3] - e.upper * b);
    }

    void make_pieces(T t)
    {
        T* const last = column(pieces_ - 1);
        T* const end = column(pieces_);
        const T start = column(0)[0], first_slope = column(0)[1] - column(0)[3] * t;
        last[0] = points_.ordinate(pieces_ - 1);
        last[1] = t;
        last[3] = 0;
        end[0] = start;
        end[1] = first_slope;
        end[2] = end[3] = 0;
        T slope = first_slope;
        for (int64_t k = 0; k < pieces_; ++k) {
            T* const c = column(k);
            const T next = k + 1 < pieces_ ? c[5] - c[7] * t : first_slope;
            const T h = brkpt_[k + 1] - brkpt_[k];
            c[1] = slope;
            set_curvature(h, (c[4] - c[0]) / h, slope, next, c);
            slope = next;
        }
    }

    const Points<T> points_;
    const int64_t pieces_;
    T *const brkpt_, *const spcoef_;
};

template <class T>
void c2per(frame::State& s, int32_t ndata, const T* xdata, const T* fdata, T* brkpt, T* spcoef, T* /*wk*/,
           int32_t* iwk)
{
    Routine<T, "C2PER"> me(s);
    if (ndata < 4)
        me.post(terminal, 1, "The number of data points must be 4 or more while NDATA = %(I1) is given.",
                {i(1, ndata)});
    if (me.failed()) return;
    const Points<T> points = sorted(s, ndata, xdata, fdata, brkpt, spcoef, 4, iwk);
    if (me.failed()) return;
    const int64_t pieces = points.n - 1;
    const T start = points.ordinate(0), end = points.ordinate(pieces);
    if (!(start == end)) {
        const auto wide = [](T v) { return static_cast<double>(v); };
        me.post(
            warning, 1,
            "The function values at smallest and largest XDATA points, %(R1) and %(R2), are not equal.  They are %(R3) and %(R4),  respectively.  %(R3) is used.",
            {r(1, wide(points.x[0])), r(2, wide(points.x[pieces])), r(3, wide(start)), r(4, wide(end))});
    }
    Cycle<T>(points, brkpt, spcoef).build();
}

template <class T>
void csper(const int32_t* ndata, const T* xdata, const T* fdata, T* brkpt, T* spcoef)
{
    Routine<T, "CSPER"> me;
    Scratch<int32_t> iwk;
    // The worker refuses what is too small.
    if (*ndata >= 4 && !iwk.allocate(*ndata)) return no_work_storage(me, *ndata);
    c2per<T>(me.state(), *ndata, xdata, fdata, brkpt, spcoef, nullptr, iwk);
}

}  // namespace

}  // namespace orvel::interp

ORVEL_EXPORT_REALS(CSPER, csper_, DCSPER, dcsper_, 5, orvel::interp::csper);
ORVEL_EXPORT_REALS(C2PER, c2per_, DC2PER, dc2per_, 7, orvel::interp::c2per);
