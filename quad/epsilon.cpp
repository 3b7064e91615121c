// quad/epsilon.cpp - Q4AWO: limit of a sequence by Wynn's epsilon algorithm
//
// The table holds the two lower diagonals. Expressions keep their published order: which elements are
// accepted depends on their rounding.
#include "quad/epsilon.h"

#include <algorithm>
#include <cmath>

#include "frame/export.h"
#include "orvel/quad.h"
#include "quad/rules.h"

namespace orvel::quad {

namespace {

template <class T>
struct Diagonal {
    int32_t kept;     // elements of the table that go on
    bool converged;   // three neighbours are equal but for roundoff
    T result, error;  // the element that differs least from its neighbours
};

// Computes the new diagonal of a table of n >= 3 elements. Elements are e0 to e3 of the rhombus rule
//       e0
//   e3  e1  new
//       e2
template <class T>
Diagonal<T> new_diagonal(int32_t n, T* table)
{
    Diagonal<T> d{n, false, table[n - 1], largest<T>};
    table[n + 1] = table[n - 1];
    table[n - 1] = largest<T>;
    for (int32_t k = n - 1, i = 1; i <= (n - 1) / 2; ++i, k -= 2) {
        const T e0 = table[k - 2], e1 = table[k - 1], e2 = table[k + 2];
        const T delta2 = e2 - e1, delta3 = e1 - e0;
        const T err2 = std::abs(delta2), err3 = std::abs(delta3);
        const T tol2 = std::max(std::abs(e2), std::abs(e1)) * spacing<T>;
        const T tol3 = std::max(std::abs(e1), std::abs(e0)) * spacing<T>;
        if (err2 <= tol2 && err3 <= tol3) {
            d.converged = true;
            d.result = e2;
            d.error = err2 + err3;
            return d;
        }
        const T e3 = table[k];
        table[k] = e1;
        const T delta1 = e1 - e3;
        const T err1 = std::abs(delta1), tol1 = std::max(std::abs(e1), std::abs(e3)) * spacing<T>;
        // Two elements that agree, or an irregular quotient, end the usable part of the table.
        if (err1 <= tol1 || err2 <= tol2 || err3 <= tol3) {
            d.kept = 2 * i - 1;
            return d;
        }
        const T ss = T(1) / delta1 + T(1) / delta2 - T(1) / delta3;
        if (!(std::abs(ss * e1) > T(1e-4))) {
            d.kept = 2 * i - 1;
            return d;
        }
        const T element = e1 + T(1) / ss;
        table[k] = element;
        const T error = err2 + std::abs(element - e2) + err3;
        if (error <= d.error) {
            d.error = error;
            d.result = element;
        }
    }
    return d;
}

// Drops the oldest elements, so that `kept` remain.
template <class T>
void shift(int32_t n, int32_t kept, T* table)
{
    const int32_t first = n % 2 == 0 ? 1 : 0, moved = (n - 1) / 2 + 1;
    for (int32_t i = 0, k = first; i < moved; ++i, k += 2) table[k] = table[k + 2];
    if (kept != n) std::copy(table + (n - kept), table + n, table);
}

}  // namespace

template <class T>
void q4awo(int32_t& n, T* table, T& result, T& error, T* last_results, int32_t& calls)
{
    if (calls < INT32_MAX) ++calls;
    error = largest<T>;
    result = table[n - 1];
    if (n < 3) return;
    const T least = T(5) * spacing<T>;
    const Diagonal<T> d = new_diagonal(n, table);
    result = d.result;
    if (d.converged) {
        error = std::max(d.error, least * std::abs(result));
        return;
    }
    const int32_t kept = d.kept == most_elements ? 2 * (most_elements / 2) - 1 : d.kept;
    shift(n, kept, table);
    n = kept;
    if (calls < 4) {
        last_results[calls - 1] = result;
        return;
    }
    error = std::abs(result - last_results[2]) + std::abs(result - last_results[1]) +
            std::abs(result - last_results[0]);
    error = std::max(error, least * std::abs(result));
    std::copy(last_results + 1, last_results + 3, last_results);
    last_results[2] = result;
}

template void q4awo(int32_t&, float*, float&, float&, float*, int32_t&);
template void q4awo(int32_t&, double*, double&, double&, double*, int32_t&);

namespace {

template <class T>
void extrapolate(int32_t* n, T* epstab, T* result, T* esterr, T* res3la, int32_t* nres)
{
    if (*n < 1 || *n > most_elements) return;
    *nres = std::max(*nres, 0);
    q4awo(*n, epstab, *result, *esterr, res3la, *nres);
}

}  // namespace

}  // namespace orvel::quad

ORVEL_EXPORT_REALS(Q4AWO, q4awo_, DQ4AWO, dq4awo_, 6, orvel::quad::extrapolate);
