// kernels/isa/loops.h - tables of the hot loops, one set for each instruction-set level
//
// The files beside this one are compiled once per level. They include nothing but each other, the folder isa/
// and <stdint.h>, keep everything in unnamed namespaces, and so leave no symbol that the linker could merge
// with code of another level.
#pragma once

#include <stdint.h>

#include "isa/levels.h"

namespace orvel::kernels {

// Loops over contiguous vectors. R is float or double; n counts real numbers, n >= 0, where nothing else is
// said. A loop over complex vectors takes their interleaved parts.
//
// Vectors that a loop reads and writes may be the same one. A written vector that begins less than `block`
// bytes behind the begin of a read one would not give what the plain loop gives.
inline constexpr int64_t block = 64;

template <class R>
struct Updates {
    void (*copy)(int64_t n, const R* x, R* y);
    void (*swap)(int64_t n, R* x, R* y);
    void (*axpy)(int64_t n, R a, const R* x, R* y);               // y += a x
    void (*scale)(int64_t n, R a, const R* x, R* y);              // y = a x
    void (*multiply)(int64_t n, const R* x, const R* y, R* z);    // z = x y
    void (*transform)(int64_t n, const R h[4], R* x, R* y);       // (x, y) = (h0 x + h1 y, h2 x + h3 y)
    void (*complex_axpy)(int64_t n, R a, R b, const R* x, R* y);  // a + i b; n reals, as in scale
    void (*complex_scale)(int64_t n, R a, R b, const R* x, R* y);
    // a for the numbers of even index, b for the others
    void (*set)(int64_t n, R a, R b, R* x);
    void (*add)(int64_t n, R a, R b, R* x);            // x += a
    void (*subtract_from)(int64_t n, R a, R b, R* x);  // x = a - x
};

// Sums are formed in independent partial sums, so that they neither wait for each other nor depend on
// alignment.
template <class R>
struct Sums {
    R (*sum)(int64_t n, const R* x);
    R (*magnitudes)(int64_t n, const R* x);
    R (*products)(int64_t n, const R* x, const R* y);
    R (*triple_products)(int64_t n, const R* x, const R* y, const R* z);
    void (*norms)(int64_t n, const R* x, R most,
                  R s[2]);  // sums of magnitudes, cut to `most`, and of their squares
    // Sums of re re, im im, re im and im re of the elements of x and y; n reals.
    void (*complex_products)(int64_t n, const R* x, const R* y, R s[4]);
};

// Products and sums in double of single-precision vectors.
struct WideSums {
    double (*products)(int64_t n, const float* x, const float* y);
    void (*complex_products)(int64_t n, const float* x, const float* y, double s[4]);
};

// Index, from 0, of the first of the n > 0 elements that is strictly better than all before it. A NaN is
// never better; nothing is better than a NaN at the front. A complex element counts as |re| + |im|, and n
// counts elements.
template <class R>
struct Searches {
    int64_t (*largest_magnitude)(int64_t n, const R* x);
    int64_t (*smallest_magnitude)(int64_t n, const R* x);
    int64_t (*largest)(int64_t n, const R* x);
    int64_t (*smallest)(int64_t n, const R* x);
    int64_t (*complex_largest)(int64_t n, const R* x);
    int64_t (*complex_smallest)(int64_t n, const R* x);
};

ORVEL_LEVEL_TABLE(isa::ForReals<Updates>, update_loops);
ORVEL_LEVEL_TABLE(isa::ForReals<Sums>, sum_loops);
ORVEL_LEVEL_TABLE(WideSums, wide_sum_loops);
ORVEL_LEVEL_TABLE(isa::ForReals<Searches>, search_loops);

// C(m, n) += A(m, k) * (alpha * B(k, n)), each element's products in ascending order of the inner index.
// Element (i, l) of A is at a[i * a_rows + l * a_columns], likewise B; the rows of C are contiguous.
template <class R>
struct Product {
    int64_t m, n, k;
    const R* a;
    int64_t a_rows, a_columns;
    const R* b;
    int64_t b_rows, b_columns;
    R alpha;
    R* c;
    int64_t c_columns;
    bool from_zero;       // the sums start from zero instead of C
    char triangle;        // L or U: only this triangle of C is read and written
    char a_stored = 'A';  // L or U: of a symmetric A this triangle is read
    char b_stored = 'A';
};

// Packed panels of A(rows, depth) and B(depth, columns) that a product goes through. Rows are whole tiles.
struct Blocks {
    int64_t depth, rows, columns;
};

template <class R>
struct RealLevel3 {
    int tile_rows, tile_columns;
    void (*direct)(const Product<R>*);  // needs a_rows = 1, alpha = 1, no triangle and no symmetry
    void (*packed)(const Product<R>*, Blocks, R* packed_a, R* packed_b);  // any strides
    // to(columns, rows) by columns `ldto` apart = the transpose of A(rows, columns) by columns lda apart
    void (*transpose)(int64_t rows, int64_t columns, const R* a, int64_t lda, R* to, int64_t ldto);
    void (*copy)(int64_t rows, int64_t columns, const R* a, int64_t lda, R* to, int64_t ldto);
};

// The same for complex matrices, given as their interleaved parts; strides count complex elements.
template <class R>
struct ComplexProduct {
    int64_t m, n, k;
    const R* a;
    int64_t a_rows, a_columns;
    bool a_conjugate;
    const R* b;
    int64_t b_rows, b_columns;
    bool b_conjugate;
    R alpha[2];
    R* c;
    int64_t c_columns;
    bool from_zero;
    char triangle;
    char a_stored = 'A';
    char b_stored = 'A';
    bool hermitian = false;  // what is not stored is the conjugate, and the diagonal is real
};

template <class R>
struct ComplexLevel3 {
    int tile_rows, tile_columns;
    void (*direct)(const ComplexProduct<R>*);  // as above, and A not conjugated
    void (*packed)(const ComplexProduct<R>*, Blocks, R* packed_a, R* packed_b);
};

// Small lower triangles applied to blocks of rows, see triangle.cpp. A block has `width` columns (complex
// ones `complex_width`); narrower ones are for what is left over.
template <class R>
struct Triangles {
    struct OfWidth {
        int width;
        void (*solve)(int64_t n, const R* l, bool unit, R* x);
        void (*multiply)(int64_t n, const R* l, bool unit, R* x);
    } real[3];
    int complex_width;
    void (*solve_complex)(int64_t n, const R* l, bool unit, R* x);
    void (*multiply_complex)(int64_t n, const R* l, bool unit, R* x);
};

inline constexpr int64_t small_square = 8;  // order of the squares on the diagonal that level 2 takes at once

struct SmallTriangle {
    bool lower, transposed, unit;
};

// Products of a matrix A(m, n), by columns lda apart, with contiguous vectors. Complex ones as interleaved
// parts.
template <class R>
struct RealLevel2 {
    void (*add_columns)(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, R* y);  // y(m) += A * x(n)
    // y(n) = A^T * x(m)
    void (*dot_columns)(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, R* y);
    // Both at once, reading A once: y(m) += A * x(n), sums(n) = A^T * z(m).
    void (*both)(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, R* y, const R* z, R* sums);
    // A += x(m) * y(n)^T
    void (*add_rank_1)(int64_t m, int64_t n, const R* x, const R* y, R* a, int64_t lda);
    // y += S * x, S symmetric of order n <= small_square, of which the lower or upper triangle is read.
    void (*add_small_symmetric)(int64_t n, bool lower, const R* a, int64_t lda, const R* x, R* y);
    // x = op(T) * x or its solution, T triangular of order n <= small_square.
    void (*multiply_small)(int64_t n, SmallTriangle how, const R* a, int64_t lda, R* x);
    void (*solve_small)(int64_t n, SmallTriangle how, const R* a, int64_t lda, R* x);
};
template <class R>
struct ComplexLevel2 {
    void (*add_columns)(int64_t m, int64_t n, const R* a, int64_t lda, bool conjugate, const R* x, R* y);
    void (*dot_columns)(int64_t m, int64_t n, const R* a, int64_t lda, bool conjugate, const R* x, R* y);
};

using Level2Loops = isa::ForAll<RealLevel2, ComplexLevel2>;

ORVEL_LEVEL_TABLE(Level2Loops, level2_loops);
ORVEL_LEVEL_TABLE(isa::ForReals<RealLevel3>, real_product_loops);
ORVEL_LEVEL_TABLE(isa::ForComplex<ComplexLevel3>, complex_product_loops);
ORVEL_LEVEL_TABLE(isa::ForReals<Triangles>, triangle_loops);

}  // namespace orvel::kernels
