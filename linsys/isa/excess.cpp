// linsys/isa/excess.cpp - whether a residual is larger than rounding can make it
//
// |A * x - b| is compared, element by element, with a multiple of |A| * (|x| + tiny) + |b|; the smallest
// normal number stands for the spacing of x near zero. Magnitudes of complex numbers are |re| + |im|.
#include "linsys/isa/running_sums.h"

namespace orvel::linsys {

namespace {

template <class R>
constexpr double tiny = sizeof(R) == 4 ? static_cast<double>(__FLT_MIN__) : __DBL_MIN__;

inline double size_of(double x) { return isa::magnitude<double, 1>(x); }
inline Wide size_of(Wide x) { return isa::magnitude<double, L>(x); }

// The magnitudes of pairs, in both lanes of each.
inline Wide size_of_pairs(Wide x)
{
    const Wide size = size_of(x);
    return size + exchanged(size);
}
template <bool Complex>
inline Wide size(Wide x)
{
    return Complex ? size_of_pairs(x) : size_of(x);
}

inline bool any(Wide size, Wide bound)
{
    bool found = false;
    for (int k = 0; k < L; ++k) found |= size[k] > bound[k];
    return found;
}

// L numbers of a vector, or what is left of them with zeros behind.
template <class R>
struct Front {
    const R* p;
    int64_t count;

    Wide whole() const
    {
        if (count >= L) return widened(p);
        Wide v = {};
        for (int64_t k = 0; k < count; ++k) v[k] = static_cast<double>(p[k]);
        return v;
    }
};

// |x(j)| + tiny, which multiplies magnitudes of A.
template <class R, bool Complex>
inline double size_of_element(const R* x, int64_t j)
{
    if constexpr (Complex)
        return size_of(static_cast<double>(x[2 * j])) + size_of(static_cast<double>(x[2 * j + 1])) + tiny<R>;
    else
        return size_of(static_cast<double>(x[j])) + tiny<R>;
}

// Rows of A by its columns, some vectors of rows at a time; m counts rows, complex ones as pairs of numbers.
template <template <int> class Sum, class R, bool Complex>
bool exceeds_by_columns(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, const R* b, double limit)
{
    constexpr int vectors = 8, parts = Complex ? 2 : 1;
    for (int64_t first = 0; first < parts * m; first += vectors * L) {
        Sum<L> sums[vectors];
        Wide bounds[vectors];
        const auto rows = [=](const R* p, int v) {
            return Front<R>{p + first + v * L, parts * m - first - v * L}.whole();
        };
        for (int v = 0; v < vectors; ++v) {
            const Wide right = rows(b, v);
            sums[v] = Sum<L>::from(-right);
            bounds[v] = size<Complex>(right);
        }
        for (int64_t j = 0; j < n; ++j) {
            const double re = static_cast<double>(x[parts * j]), scale = size_of_element<R, Complex>(x, j);
            Wide cross = {};
            if constexpr (Complex)
                for (int k = 0; k < L; ++k)
                    cross[k] = k & 1 ? static_cast<double>(x[2 * j + 1]) : -static_cast<double>(x[2 * j + 1]);
            for (int v = 0; v < vectors; ++v) {
                const Wide e = rows(a + parts * j * lda, v);
                sums[v].add_product(e, Wide{} + re);
                if constexpr (Complex) sums[v].add_product(exchanged(e), cross);
                bounds[v] += size<Complex>(e) * scale;
            }
        }
        for (int v = 0; v < vectors; ++v)
            if (any(size<Complex>(sums[v].value()), limit * bounds[v])) return true;
    }
    return false;
}

// Rows of the conjugate transpose of A: the sums of a column are those of the lanes.
template <template <int> class Sum, class R, bool Complex>
bool exceeds_by_rows(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, const R* b, double limit)
{
    constexpr int parts = Complex ? 2 : 1;
    Wide turn = {};
    for (int k = 0; k < L; ++k) turn[k] = k & 1 ? -1.0 : 1.0;
    const auto total = [](const Sum<L>& lanes, R start) {
        const R nothing = 0;
        return size_of(lanes_and_rest<Sum, R>(Sum<1>::from(-static_cast<double>(start)), lanes, 0, 0,
                                              &nothing, &nothing));
    };
    for (int64_t j = 0; j < n; ++j) {
        Sum<L> same = Sum<L>::from(Wide{}), cross = same;
        Wide bounds = {};
        for (int64_t i = 0; i < parts * m; i += L) {
            const int64_t rest = parts * m - i;
            const Wide e = Front<R>{a + parts * j * lda + i, rest}.whole(), u = Front<R>{x + i, rest}.whole();
            same.add_product(e, u);
            if constexpr (Complex) cross.add_product(e * turn, exchanged(u));
            bounds += size<Complex>(e) * (size<Complex>(u) + tiny<R>);
        }
        double bound = 0;
        for (int k = 0; k < L; k += parts) bound += bounds[k];
        double residual = total(same, b[parts * j]);
        bound += size_of(static_cast<double>(b[parts * j]));
        if constexpr (Complex) {
            residual += total(cross, b[2 * j + 1]);
            bound += size_of(static_cast<double>(b[2 * j + 1]));
        }
        if (residual > limit * bound) return true;
    }
    return false;
}

}  // namespace

const isa::ForAll<Excess> ORVEL_ISA::excess_loops = {
    {exceeds_by_columns<Plain, float, false>, exceeds_by_rows<Plain, float, false>},
    {exceeds_by_columns<Pair, double, false>, exceeds_by_rows<Pair, double, false>},
    {exceeds_by_columns<Plain, float, true>, exceeds_by_rows<Plain, float, true>},
    {exceeds_by_columns<Pair, double, true>, exceeds_by_rows<Pair, double, true>},
};

}  // namespace orvel::linsys
