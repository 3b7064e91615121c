// random/isa/loops.cpp - the hot loops of the generators, for the level ORVEL_ISA
//
// Congruential fills run a vector of lanes ahead: lane k starts at the state k + 1 steps on, and a step of
// all lanes multiplies by the power of the multiplier that skips them. Products are exact integers; twice
// 2^31 is folded to 1, which leaves a residue of 1..2^31 - 2, since a residue of 0 cannot occur.
#include "random/isa/loops.h"

#include "isa/vector.h"
#include "random/isa/twister.h"

namespace orvel::random {

namespace {

constexpr int width = isa::lanes<double>;
constexpr int vectors = 4;  // in flight, to hide the latency of the product
constexpr int lanes = width * vectors;

typedef isa::Vector<uint64_t, width> Wide;
typedef isa::Vector<double, width> Reals;
typedef isa::Vector<float, width> Floats;
typedef isa::Vector<int32_t, 2 * width> Halves;

// Products of the low halves.
[[gnu::always_inline]] inline Wide product(Wide a, Wide b)
{
#if defined(__AVX512F__) && defined(__clang__)
    return reinterpret_cast<Wide>(
        __builtin_ia32_pmuludq512(reinterpret_cast<Halves>(a), reinterpret_cast<Halves>(b)));
#elif defined(__AVX512F__)
    return reinterpret_cast<Wide>(__builtin_ia32_pmuludq512_mask(
        reinterpret_cast<Halves>(a), reinterpret_cast<Halves>(b),
        reinterpret_cast<long long __attribute__((vector_size(64)))>(a), static_cast<unsigned char>(-1)));
#elif defined(__AVX2__)
    return reinterpret_cast<Wide>(
        __builtin_ia32_pmuludq256(reinterpret_cast<Halves>(a), reinterpret_cast<Halves>(b)));
#elif defined(__SSE2__)
    return reinterpret_cast<Wide>(
        __builtin_ia32_pmuludq128(reinterpret_cast<Halves>(a), reinterpret_cast<Halves>(b)));
#else
    return a * b;
#endif
}

template <class W>
[[gnu::always_inline]] constexpr W folded(W p)
{
    const W once = (p & modulus) + (p >> 31);
    return (once & modulus) + (once >> 31);
}

struct Powers {
    uint64_t power[lanes];  // of the multiplier, from the first
};

constexpr Powers powers_of(uint32_t multiplier)
{
    Powers p{};
    uint64_t power = 1;
    for (uint64_t& entry : p.power) entry = power = folded<uint64_t>(power * multiplier);
    return p;
}

constexpr Powers powers[3] = {powers_of(multipliers[0]), powers_of(multipliers[1]),
                              powers_of(multipliers[2])};

// Values below 2^52 as doubles: 2^52 is put in front of their bits and taken away again.
[[gnu::always_inline]] inline Reals real(Wide x)
{
    return reinterpret_cast<Reals>(x | 0x4330000000000000u) - 0x1p52;
}

[[gnu::always_inline]] inline void store(double* out, Wide x) { isa::at<width>(out) = real(x) * reciprocal; }

[[gnu::always_inline]] inline void store(float* out, Wide x)
{
    isa::at<width>(out) = __builtin_convertvector(real(x) * static_cast<double>(single_scale), Floats);
}

[[gnu::always_inline]] inline void store(uint32_t* out, Wide x)
{
    typedef isa::Vector<uint32_t, width> Words;
    isa::at<width>(out) = __builtin_convertvector(x, Words);
}

double number(double, uint64_t x) { return static_cast<double>(x) * reciprocal; }
float number(float, uint64_t x)
{
    return static_cast<float>(static_cast<double>(x) * static_cast<double>(single_scale));
}
uint32_t number(uint32_t, uint64_t x) { return static_cast<uint32_t>(x); }

template <class T>
uint32_t congruential(int which, uint32_t state, int64_t n, T* out)
{
    const uint64_t* const power = powers[which].power;
    Wide x[vectors];
    __builtin_memcpy(x, power, sizeof x);
    for (Wide& v : x) v = folded(product(v, Wide{} + state));
    const Wide jump = Wide{} + power[lanes - 1];
    uint64_t last = state;
    while (n >= lanes) {
        for (int k = 0; k < vectors; ++k) store(out + k * width, x[k]);
        last = x[vectors - 1][width - 1];
        for (Wide& v : x) v = folded(product(v, jump));
        out += lanes;
        n -= lanes;
    }
    uint64_t rest[lanes];
    __builtin_memcpy(rest, x, sizeof rest);
    for (int64_t k = 0; k < n; ++k) out[k] = number(T(), last = rest[k]);
    return static_cast<uint32_t>(last);
}

// Runs of numbers between the turns of the two indices, short enough that no word is read after it was
// written in the same run.
template <class T>
int32_t shift_register(int32_t* words, int32_t* first, int32_t* second, int64_t n, T* out)
{
    int32_t p = *first, q = *second, last = 0;
    while (n > 0) {
        int32_t run = register_length - (p > q ? p : q);
        const int32_t distance = p > q ? p - q : q - p;
        if (distance > 0 && distance < run) run = distance;
        if (n < run) run = static_cast<int32_t>(n);
        int32_t* const a = words + p;
        const int32_t* const b = words + q;
        last = a[run - 1] & 0x7FFFFFFF;
#pragma GCC ivdep
        for (int32_t k = 0; k < run; ++k) {
            const int32_t word = a[k];
            a[k] = word ^ b[k];
            const double wide = static_cast<double>(word & 0x7FFFFFFF);
            out[k] = static_cast<T>(wide * (sizeof(T) == 4 ? static_cast<double>(single_scale) : reciprocal));
        }
        p = p + run == register_length ? 0 : p + run;
        q = q + run == register_length ? 0 : q + run;
        out += run;
        n -= run;
    }
    *first = p;
    *second = q;
    return last;
}

template <class Word>
void refill(Word* w)
{
    using M = Twister<Word>;
    constexpr Word lower = 0x7FFFFFFF;
    constexpr int length = M::length, middle = M::middle;
    const auto twist = [](Word a, Word b, Word c) {
        const Word y = (a & ~lower) | (b & lower);
        return static_cast<Word>(c ^ (y >> 1) ^ (-(b & 1) & M::matrix));
    };
    for (int k = 0; k < length - middle; ++k) w[k] = twist(w[k], w[k + 1], w[k + middle]);
    Word* const v = w + (length - middle);
#pragma GCC ivdep
    for (int k = 0; k < middle - 1; ++k) v[k] = twist(v[k], v[k + 1], w[k]);
    w[length - 1] = twist(w[length - 1], w[0], w[middle - 1]);
}

// (y + 0.5) / (2^32 - 1) is x (2^-32 + 2^-64 + 2^-96 ...) for x = y + 0.5. The sum below, rounded to single,
// equals the division for each of the 2^32 words, as a run over all of them has shown; as a double it misses
// the last bit of one.
template <class T>
void from_words32(const uint32_t* word, int64_t n, T* __restrict out)
{
    for (int64_t k = 0; k < n; ++k) {
        const uint32_t y = tempered(word[k]);
        const double x = static_cast<double>(static_cast<int32_t>(y ^ 0x80000000u)) + 2147483648.5;
        out[k] = static_cast<T>(sizeof(T) == 4 ? x * 0x1p-32 + x * 0x1.00000001p-64 : x / 4294967295.0);
    }
}

template <class T>
void from_words64(const uint64_t* word, int64_t n, T* __restrict out)
{
    for (int64_t k = 0; k < n; ++k) {
        const uint64_t x = tempered(word[k]);
        // 53 bits as a double: the upper 21 in front of 2^84, the lower 32 in front of 2^52; all exact.
        const auto upper = __builtin_bit_cast(double, (x >> 43) | 0x4530000000000000u);
        const auto lower = __builtin_bit_cast(double, ((x >> 11) & 0xFFFFFFFFu) | 0x4330000000000000u);
        out[k] = static_cast<T>((upper - (0x1p84 + 0x1p52) + lower) * 0x1p-53);
    }
}

template <class T>
constexpr NumberLoops<T> numbers = {congruential<T>, shift_register<T>, from_words32<T>, from_words64<T>};

}  // namespace

const isa::ForReals<NumberLoops> ORVEL_ISA::number_loops = {numbers<float>, numbers<double>};
const StateLoops ORVEL_ISA::state_loops = {congruential<uint32_t>, refill<uint32_t>, refill<uint64_t>};

}  // namespace orvel::random
