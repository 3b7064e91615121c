// kernels/isa/loops.h - tables of the hot loops, one set for each instruction-set level
//
// The files beside this one are compiled once per level. They include nothing but this header and <stdint.h>,
// keep everything in unnamed namespaces, and so leave no symbol that the linker could merge with code of
// another level.
#pragma once

#include <stdint.h>

namespace orvel::kernels {

// Loops over contiguous vectors of n > 0 elements. R is float or double.
template <class R>
struct RealLevel1 {
    R (*dot)(int64_t n, const R* x, const R* y);
    void (*axpy)(int64_t n, R a, const R* x, R* y);
};

// The same for complex vectors, given as their interleaved real and imaginary parts.
template <class R>
struct ComplexLevel1 {
    void (*axpy)(int64_t n, const R* a, const R* x, R* y);
};

struct Level1Loops {
    RealLevel1<float> s;
    RealLevel1<double> d;
    ComplexLevel1<float> c;
    ComplexLevel1<double> z;
};

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
};

template <class R>
struct RealLevel3 {
    void (*direct)(const Product<R>*);           // needs a_rows = 1
    void (*packed)(const Product<R>*, R* work);  // any strides
    int64_t (*workspace)(int64_t m, int64_t n, int64_t k);
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
};

template <class R>
struct ComplexLevel3 {
    void (*packed)(const ComplexProduct<R>*, R* work);
    int64_t (*workspace)(int64_t m, int64_t n, int64_t k);
};

// Small lower triangles applied to blocks of rows, see triangle.cpp. A block has `width` columns (complex
// ones `complex_width`).
template <class R>
struct Triangles {
    int width;
    void (*solve)(int64_t n, const R* l, bool unit, R* x);
    void (*multiply)(int64_t n, const R* l, bool unit, R* x);
    int complex_width;
    void (*solve_complex)(int64_t n, const R* l, bool unit, R* x);
    void (*multiply_complex)(int64_t n, const R* l, bool unit, R* x);
};

// Products of a matrix A(m, n), by columns lda apart, with contiguous vectors. Complex ones as interleaved
// parts.
template <class R>
struct RealLevel2 {
    void (*add_columns)(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, R* y);  // y(m) += A * x(n)
    void (*dot_columns)(int64_t m, int64_t n, const R* a, int64_t lda, const R* x,
                        R* y);  // y(n) = A^T * x(m)
};
template <class R>
struct ComplexLevel2 {
    void (*add_columns)(int64_t m, int64_t n, const R* a, int64_t lda, bool conjugate, const R* x, R* y);
    void (*dot_columns)(int64_t m, int64_t n, const R* a, int64_t lda, bool conjugate, const R* x, R* y);
};

struct Level2Loops {
    RealLevel2<float> s;
    RealLevel2<double> d;
    ComplexLevel2<float> c;
    ComplexLevel2<double> z;
};

struct Loops {
    const char* level;
    const Level1Loops* level1;
    const RealLevel3<float>* gemm_s;
    const RealLevel3<double>* gemm_d;
    const ComplexLevel3<float>* gemm_c;
    const ComplexLevel3<double>* gemm_z;
    const Triangles<float>* triangles_s;
    const Triangles<double>* triangles_d;
    const Level2Loops* level2;
};

// The loops of the best level that the machine has; chosen at the first call.
const Loops& loops();

// For tests: the levels that this machine has, lowest first, and a way to force one. A null name goes back to
// the best. Returns whether the level exists here.
int level_count();
const char* level_name(int k);
bool force_level(const char* name);

}  // namespace orvel::kernels
