// fft/factors.h - factor lists in memory and in the 15 elements of a work vector
#pragma once

#include <cstdint>

namespace orvel::fft {

// Factors in the order of the passes: as many as a length below 2^31 can have.
struct Factors {
    int64_t n = 1;
    int32_t count = 0;
    int32_t most_in_last = 5;  // factors that the second pass of two takes at once; see plan.h
    int64_t factor[32] = {};

    constexpr void append(int64_t f) { factor[count++] = f; }
};

// 4, 2, 3, 5, 7, 9, 11 ... divided out in turn; a 2 found behind others goes to the front.
constexpr Factors factorize(int64_t n)
{
    Factors f;
    f.n = n;
    const auto divide_out = [&](int64_t d) {
        for (; n % d == 0; n /= d) f.append(d);
    };
    divide_out(4);
    if (n % 2 == 0) {
        for (int32_t k = f.count; k > 0; --k) f.factor[k] = f.factor[k - 1];
        f.factor[0] = 2;
        ++f.count;
        n /= 2;
    }
    divide_out(3);
    divide_out(5);
    for (int64_t d = 7; d * d <= n; d += 2) divide_out(d);
    if (n > 1) f.append(n);
    return f;
}

// Stores n, the count and the factors in 15 reals. Lists of more than 13 are shortened: pairs are multiplied.
inline constexpr int32_t most_stored = 13;
template <class R>
void store_factors(const Factors& f, R* stored);

// Reads them back; false where they are no factorization of n or a factor is of a kind that no pass has.
// What rounding took from n or from a large factor is restored, and a product of a pair is read as the pair.
// Another list of admissible factors than ours gives wrong numbers inside the arrays.
template <class R>
bool read_factors(int64_t n, const R* stored, Factors& f);

}  // namespace orvel::fft
