// random/shift_register.cpp - option 7: generalized feedback shift register; RNGEF, RNSEF
//
// The words start out equidistributed in 32-bit pieces: their bits are three interleaved copies of one bit
// sequence, x^521 + x^489 + 1, far apart from each other. Source: M. Fushimi, Random number generation with
// the recursion X(t) = X(t-3p) xor X(t-3q), Journal of Computational and Applied Mathematics 31, 1990.
#include <algorithm>
#include <array>
#include <bit>

#include "frame/export.h"
#include "frame/routine.h"
#include "random/jump_polynomial.h"
#include "random/random.h"

namespace orvel::random {

namespace {

constexpr int degree = 521, tap = 489;
constexpr int near = register_length - 3 * (degree - tap) + 1;  // one-based start of the second index, 1468

// 1042 bits of a sequence, from the last of a word, the second half by the recurrence; nothing behind them.
using Bits = std::array<uint64_t, 18>;

bool bit_of(const Bits& bits, int k) { return (bits[static_cast<std::size_t>(k / 64)] >> (k % 64) & 1) != 0; }

void set_bit(Bits& bits, int k, bool value)
{
    bits[static_cast<std::size_t>(k / 64)] |= uint64_t{value} << (k % 64);
}

void extend(Bits& bits)
{
    for (int k = degree; k < 2 * degree; ++k)
        set_bit(bits, k, bit_of(bits, k - degree + tap) != bit_of(bits, k - degree));
}

Bits bits_of_seed(int32_t seed)
{
    uint32_t x = static_cast<uint32_t>(seed);
    if (x << 2 == 0 && x != 0x40000000u) x = 1;  // 0, -2^31 and -2^30 would leave a register of zeros
    Bits bits{};
    for (int k = 0; k < degree; ++k) {
        x *= 69069u;
        set_bit(bits, k, static_cast<int32_t>(x) > 0);
    }
    extend(bits);
    return bits;
}

// The sequence ahead by the exponent of the jump polynomial: sums modulo 2 of the bits at its powers.
Bits jumped(const Bits& from)
{
    Bits to{};
    for (int k = 0; k < degree; ++k) {
        const auto word = static_cast<std::size_t>(k / 64);
        const int shift = k % 64;
        uint64_t sum = 0;
        for (std::size_t j = 0; j < jump_polynomial.size(); ++j) {
            const uint64_t above = shift == 0 ? 0 : from[word + j + 1] << (64 - shift);
            sum ^= (from[word + j] >> shift | above) & jump_polynomial[j];
        }
        set_bit(to, k, std::popcount(sum) % 2 != 0);
    }
    extend(to);
    return to;
}

[[gnu::noinline]] void fill_words(orvel_r2ncom& c)
{
    const Bits a = bits_of_seed(c.seed), once = jumped(a), twice = jumped(once);
    std::array<uint8_t, register_length> t;
    for (int k = 0; k < degree; ++k) {
        uint8_t* const three = &t[static_cast<std::size_t>(3 * k)];
        three[0] = bit_of(a, k);
        three[1] = bit_of(once, k);
        three[2] = bit_of(twice, k);
    }
    std::size_t at = 0, other = near - 1;
    for (int32_t& word : c.words) {
        word = 0;
        for (int bit = 30; bit >= -1; --bit) {  // the last of the 32 bits carries no weight
            if (bit >= 0) word |= t[at] << bit;
            t[at] ^= t[other];
            at = at + 1 == register_length ? 0 : at + 1;
            other = other + 1 == register_length ? 0 : other + 1;
        }
    }
    c.first = 1;
    c.second = near;
    c.words_ready = -1;
}

}  // namespace

template <class T>
void fill_register(orvel_r2ncom& c, int64_t n, T* r)
{
    if (!is_true(c.words_ready)) [[unlikely]]
        fill_words(c);
    c.first = std::clamp(c.first, 1, register_length);
    c.second = std::clamp(c.second, 1, register_length);
    if (n == 1) {
        *r = next_of_register<T>(c);
        return;
    }
    int32_t p = c.first - 1, q = c.second - 1;
    const int32_t word = isa::of_type<T>(number_loops()).shift_register(c.words, &p, &q, n, r);
    c.first = p + 1;
    c.second = q + 1;
    keep_state(c, static_cast<uint32_t>(word));
}

template void fill_register<float>(orvel_r2ncom&, int64_t, float*);
template void fill_register<double>(orvel_r2ncom&, int64_t, double*);

namespace {

void r1inf() { fill_words(*stream().common); }

void rngef(int32_t* iarray)
{
    Routine<float, "RNGEF">::visit(frame::state());
    const orvel_r2ncom& c = *stream().common;
    std::copy_n(c.words, register_length, iarray);
    iarray[register_length] = c.first;
    iarray[register_length + 1] = c.second;
}

void rnsef(const int32_t* iarray)
{
    Routine<float, "RNSEF"> me;
    orvel_r2ncom& c = *stream().common;
    if (iarray[0] < 1) {
        c.words_ready = 0;
        return;
    }
    const int32_t first = iarray[register_length], second = iarray[register_length + 1];
    if (first < 1)
        me.post(terminal, 2, "IARRAY(1564) = %(I1).  All elements of IARRAY must be positive.",
                {i(1, first)});
    if (second < 1)
        me.post(terminal, 3, "IARRAY(1565) = %(I1).  All elements of IARRAY must be positive.",
                {i(1, second)});
    if (me.failed()) return;
    std::copy_n(iarray, register_length, c.words);
    c.first = first;
    c.second = second;
    c.words_ready = -1;
}

}  // namespace

}  // namespace orvel::random

ORVEL_EXPORT(R1INF, r1inf_, 0, orvel::random::r1inf);
ORVEL_EXPORT(RNGEF, rngef_, 1, orvel::random::rngef);
ORVEL_EXPORT(RNSEF, rnsef_, 1, orvel::random::rnsef);
