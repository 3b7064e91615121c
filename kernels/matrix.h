// kernels/matrix.h - matrices as views, letters of options
#pragma once

#include <complex>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "kernels/vectors.h"

namespace orvel::kernels {

// Element (i, j) is at p[i * rows + j * columns]. Transposed and reversed matrices are views of the same
// elements, so that one algorithm serves every side and triangle.
template <class T>
struct View {
    T* p;
    int64_t rows, columns;

    T& operator()(int64_t row, int64_t column) const { return p[row * rows + column * columns]; }
    View from(int64_t row, int64_t column) const
    {
        return {p + row * rows + column * columns, rows, columns};
    }
    View transposed() const { return {p, columns, rows}; }
    View rows_reversed(int64_t m) const { return {p + (m - 1) * rows, -rows, columns}; }
    View columns_reversed(int64_t n) const { return {p + (n - 1) * columns, rows, -columns}; }
    View<const T> constant() const { return {p, rows, columns}; }
};

// A matrix that enters a product, perhaps conjugated.
template <class T>
struct Factor {
    View<const T> view;
    bool conjugated = false;

    Factor from(int64_t row, int64_t column) const { return {view.from(row, column), conjugated}; }
    Factor transposed() const { return {view.transposed(), conjugated}; }
    Factor rows_reversed(int64_t m) const { return {view.rows_reversed(m), conjugated}; }
    Factor columns_reversed(int64_t n) const { return {view.columns_reversed(n), conjugated}; }
    Factor adjoint() const { return {view.transposed(), is_complex<T> && !conjugated}; }
    T operator()(int64_t row, int64_t column) const
    {
        return conjugated ? conjugate(view(row, column)) : view(row, column);
    }
};

template <class T>
inline View<T> by_columns(T* a, int32_t lda)
{
    return {a, 1, lda};
}

// ---- option letters, in upper or lower case ---------------------------------------------------------------

constexpr char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
inline bool is_letter(const char* given, char letter) { return upper(*given) == letter; }
inline bool is_one_of(const char* given, std::string_view letters)
{
    for (const char letter : letters)
        if (upper(*given) == letter) return true;
    return false;
}

// op(A) for TRANS = N, T or C.
template <class T>
inline Factor<T> operand(const T* a, int32_t lda, const char* trans)
{
    const Factor<T> plain{{a, 1, lda}};
    return is_letter(trans, 'N') ? plain : is_letter(trans, 'T') ? plain.transposed() : plain.adjoint();
}

}  // namespace orvel::kernels
