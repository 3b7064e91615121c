// fft/factors.cpp - factor lists in memory and in the 15 elements of a work vector
#include "fft/factors.h"

namespace orvel::fft {

namespace {

// Pairs of factors that a stored list may have as their product.
constexpr int64_t pairs[][2] = {{2, 4}, {3, 3}, {4, 4}, {5, 5}};

bool has_product(int64_t a, int64_t b)
{
    for (const auto& pair : pairs)
        if (a == pair[0] && b == pair[1]) return true;
    return false;
}

// The first such pair becomes its product. Every list of more than 13 has one.
void shorten(Factors& f)
{
    int32_t k = 0;
    while (!has_product(f.factor[k], f.factor[k + 1])) ++k;
    f.factor[k] *= f.factor[k + 1];
    --f.count;
    for (++k; k < f.count; ++k) f.factor[k] = f.factor[k + 1];
}

void append_parts(Factors& f, int64_t factor)
{
    for (const auto& pair : pairs)
        if (factor == pair[0] * pair[1]) {
            f.append(pair[0]);
            factor = pair[1];
        }
    f.append(factor);
}

}  // namespace

template <class R>
void store_factors(const Factors& f, R* stored)
{
    Factors list = f;
    while (list.count > most_stored) shorten(list);
    stored[0] = static_cast<R>(list.n);
    stored[1] = static_cast<R>(list.count);
    for (int32_t k = 0; k < most_stored; ++k)
        stored[2 + k] = k < list.count ? static_cast<R>(list.factor[k]) : R(0);
}

template <class R>
bool read_factors(int64_t n, const R* stored, Factors& f)
{
    if (stored[0] != static_cast<R>(n) || !(stored[1] >= 1 && stored[1] <= most_stored)) return false;
    const int32_t count = static_cast<int32_t>(stored[1] + R(0.5));
    f.n = n;
    f.count = 0;
    int64_t product = 1;
    for (int32_t k = 0; k < count; ++k) {
        const R value = stored[2 + k];
        if (!(value >= 2 && value <= R(0x1p31))) return false;
        int64_t factor = static_cast<int64_t>(value + R(0.5));
        if (factor >= int64_t(1) << 24 && k == count - 1) {
            // A single real may be a rounded factor. It is the last one, and what the others leave.
            factor = n / product;
            if (static_cast<R>(factor) != value) return false;
        }
        product *= factor;
        if (product > n || (factor % 2 == 0 && factor > 4 && factor != 8 && factor != 16)) return false;
        append_parts(f, factor);
    }
    return product == n;
}

template void store_factors(const Factors&, float*);
template void store_factors(const Factors&, double*);
template bool read_factors(int64_t, const float*, Factors&);
template bool read_factors(int64_t, const double*, Factors&);

}  // namespace orvel::fft
