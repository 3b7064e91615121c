// linsys/isa/step.h - a step of the elimination, with the search for the next pivot
//
// Everything here has internal linkage, as in rows.h.
#pragma once

#include "linsys/isa/rows.h"

namespace orvel::linsys {

namespace {

template <class R>
class Search {
public:
    explicit Search(int64_t row) : none_(row)
    {
        best_ = Wide<R>{} - R(1);
        row_ = Whole<R>{};
    }

    // Rows from `row` on, where `chosen`.
    template <bool Complex, class Mask>
    void see(int64_t row, const Rows<R, Complex>& x, Wide<R> s, Mask chosen)
    {
        Wide<R> size = magnitude<R>(x.re);
        if constexpr (Complex) size = held(size + magnitude<R>(x.im));
        size *= s;
        const auto better = (size > best_) & chosen;
        best_ = better ? size : best_;
        row_ = better ? Whole<R>{} + static_cast<isa::Integer<R>>(row) : row_;
    }

    // Without branches: which row it is, nobody can predict.
    int64_t first_of_largest(int64_t m) const
    {
        Wide<R> largest = best_;
#pragma GCC unroll 4
        for (int w = 1; w < lanes<R>; w *= 2) {
            const Wide<R> other = isa::shuffle(largest, apart(w));
            largest = other > largest ? other : largest;
        }
        // What no row has reached counts as the first row beyond all.
        Whole<R> row = ((best_ == largest) & (best_ >= 0)) ? row_ + lane_numbers<R>() : Whole<R>{} + beyond;
#pragma GCC unroll 4
        for (int w = 1; w < lanes<R>; w *= 2) {
            const Whole<R> other = isa::shuffle(row, apart(w));
            row = other < row ? other : row;
        }
        const int64_t found = row[0];
        return found < m ? found : none_;
    }

private:
    static constexpr auto beyond = static_cast<isa::Integer<R>>(INT32_MAX);

    static Whole<R> apart(int w) { return lane_numbers<R>() ^ static_cast<isa::Integer<R>>(w); }

    int64_t none_;
    Wide<R> best_;
    Whole<R> row_;
};

template <class R, bool Complex>
int64_t pivot(int64_t c, int64_t m, const R* x, const R* s, PanelShape shape)
{
    constexpr int L = lanes<R>;
    Search<R> search(c);
    int64_t row = c / L * L;
    search.template see<Complex>(row, Rows<R, Complex>::load(x + row, shape.half), wide(s + row),
                                 below<R>(c - row - 1));
    for (row += L; row < m; row += L)
        search.template see<Complex>(row, Rows<R, Complex>::load(x + row, shape.half), wide(s + row),
                                     below<R>(-1));
    return search.first_of_largest(m);
}

// t * x; the products are rounded before they are added, on every level.
template <class R, bool Complex>
inline Rows<R, Complex> times(const R* t, const Rows<R, Complex>& x)
{
    if constexpr (Complex)
        return {held(t[0] * x.re) - held(t[1] * x.im), held(t[0] * x.im) + held(t[1] * x.re)};
    else
        return {t[0] * x.re, Wide<R>{}};
}

template <class R, bool Complex>
int64_t step(int64_t c, int64_t m, int64_t n, const R* t, const R* s, R* p, PanelShape shape)
{
    using Here = Rows<R, Complex>;
    constexpr int L = lanes<R>;
    const int64_t others = n - c - 1;
    R* const own = p + c * shape.step;
    R* const next = own + shape.step;
    const R scale[2] = {t[0], Complex ? t[1] : R(0)};
    R u_re[small_order], u_im[small_order];
    for (int64_t j = 0; j < others; ++j) {
        u_re[j] = next[j * shape.step + c];
        u_im[j] = Complex ? next[j * shape.step + shape.half + c] : R(0);
    }
    Search<R> search(c + 1);
    // Rows of the first vector up to c stay as they are.
    const int64_t first = (c + 1) / L * L;
    {
        const Whole<R> rest = below<R>(c - first);
        const Here old = Here::load(own + first, shape.half), m_first = times<R, Complex>(scale, old);
        Here::choose(rest, m_first, old).store(own + first, shape.half);
        for (int64_t j = 0; j < others; ++j) {
            R* const column = next + j * shape.step + first;
            const Here before = Here::load(column, shape.half);
            Here sum = before;
            sum.add(m_first, u_re[j], u_im[j]);
            Here::choose(rest, sum, before).store(column, shape.half);
            if (j == 0) search.template see<Complex>(first, sum, wide(s + first), rest);
        }
    }
    for (int64_t row = first + L; row < m; row += L) {
        Here mult = times<R, Complex>(scale, Here::load(own + row, shape.half));
        mult.re = held(mult.re);
        if constexpr (Complex) mult.im = held(mult.im);
        mult.store(own + row, shape.half);
        if (others == 0) continue;
        Here sum = Here::load(next + row, shape.half);
        sum.add(mult, u_re[0], u_im[0]);
        sum.store(next + row, shape.half);
        search.template see<Complex>(row, sum, wide(s + row), below<R>(-1));
        for (int64_t j = 1; j < others; ++j) {
            R* const column = next + j * shape.step + row;
            Here other = Here::load(column, shape.half);
            other.add(mult, u_re[j], u_im[j]);
            other.store(column, shape.half);
        }
    }
    return search.first_of_largest(m);
}

}  // namespace

}  // namespace orvel::linsys
