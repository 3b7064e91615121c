// linsys/isa/loops.h - tables of the hot loops of the dense solvers, one for each instruction-set level
//
// The files beside this one are compiled once per level; see kernels/isa/loops.h for what they must keep to.
#pragma once

#include <stdint.h>

#include "isa/levels.h"

namespace orvel::linsys {

// A panel holds columns of a matrix being eliminated. Column c begins at p + c * step; complex columns hold
// their real parts there and their imaginary parts `half` numbers on. A column is aligned to 64 bytes and
// has room for whole vectors; what lies behind its rows may be overwritten.
struct PanelShape {
    int64_t step, half;
};

template <class R>
struct Elimination {
    int leaf;  // columns that are factored at a time; panels are eliminated in multiples of it

    // The rows 0..k-1 of C(m, n) become those of L^-1 * C, and the rows below get the products with them:
    // forward elimination with the k columns of the panel p, whose rows are in the order of the pivots and
    // whose multipliers are negated. k is a multiple of `leaf`; C has the shape of the panel.
    void (*eliminate)(int64_t k, int64_t m, int64_t n, const R* p, R* c, PanelShape shape);

    // One step of a leaf: multiplies the rows below c of column c by t and adds their products with row c to
    // the columns c + 1..n - 1. Returns the row of the next pivot, as `pivot` does for column c + 1.
    int64_t (*step)(int64_t c, int64_t m, int64_t n, const R* t, const R* s, R* p, PanelShape shape);

    // The first row from c on where |x| * s is largest; complex magnitudes are |re| + |im|. s has room for
    // whole vectors. A NaN is chosen only where there is nothing else.
    int64_t (*pivot)(int64_t c, int64_t m, const R* x, const R* s, PanelShape shape);
};

template <class R>
struct VectorLoops {
    // maxima(m) = max(maxima, |x|); a complex x(m) is interleaved.
    void (*raise_maxima)(int64_t m, const R* x, R* maxima);

    // Complex numbers apart and together again.
    void (*split)(int64_t m, const R* pairs, R* re, R* im);
    void (*join)(int64_t m, const R* re, const R* im, R* pairs);

    // Adds to before[] the magnitudes of z + wm * u, to after[] those of the new z = z + wp * u, lane by
    // lane; a long vector may come in pieces of whole vectors. Complex vectors are interleaved; n counts
    // their elements. Behind them are zeros for a whole vector.
    void (*grow)(int64_t n, const R* u, const R* wm, const R* wp, R* z, R* before, R* after);
};

// All of a small matrix, n <= small_order: copies A to FACT, forms the scale factors and factors. Returns
// whether a pivot was not above `small`. `invert` forms t = -1 / x.
template <class R>
using SmallMatrix = bool (*)(int64_t n, const R* a, int64_t lda, R* fact, int64_t ldfac, R* s, int32_t* ipvt,
                             R small, void (*invert)(const R* x, R* t));

inline constexpr int64_t small_order = 32;

// A = R^H * R for n <= small_order: the upper triangle of A is read, that of FACT, which may be A, is
// written. A pivot must be above least(k). Returns the number of columns that were reached and written, n
// when A is positive definite.
template <class R>
using SmallCholesky = int64_t (*)(int64_t n, const R* a, int64_t lda, R* fact, int64_t ldfac, const R* least);

// Residuals with more than the working precision. Single members sum exact products in double, double members
// in pairs (head, tail) of doubles made by error-free transformations.
template <class R>
struct Residuals {
    // r(m) = A(m, n) * x - b, rounded once; A by columns. Complex arrays are interleaved.
    void (*by_columns)(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, const R* b, R* r);
    // r(n) = A(m, n)^T * x - b; the complex one with the conjugate transpose.
    void (*by_rows)(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, const R* b, R* r);
    // r(m) = the rows from `first` on of A(n, n) * x, less b(m); A is symmetric or Hermitian, its upper
    // triangle is read, and the imaginary parts of its diagonal count as zero.
    void (*by_upper_triangle)(int64_t n, int64_t first, int64_t m, const R* a, int64_t lda, const R* x,
                              const R* b, R* r);
};

// Whether an element of the residual is larger than `limit` times the sum of the magnitudes that it is made
// of. Arguments as those of Residuals.
template <class R>
struct Excess {
    bool (*by_columns)(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, const R* b, double limit);
    bool (*by_rows)(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, const R* b, double limit);
};

ORVEL_LEVEL_TABLE(isa::ForAll<Elimination>, elimination_loops);
ORVEL_LEVEL_TABLE(isa::ForAll<VectorLoops>, vector_loops);
ORVEL_LEVEL_TABLE(isa::ForAll<SmallMatrix>, small_matrix_loops);
ORVEL_LEVEL_TABLE(isa::ForAll<SmallCholesky>, small_cholesky_loops);
ORVEL_LEVEL_TABLE(isa::ForAll<Residuals>, residual_loops);
ORVEL_LEVEL_TABLE(isa::ForAll<Excess>, excess_loops);

}  // namespace orvel::linsys
