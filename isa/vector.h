// isa/vector.h - vectors of numbers, as wide as the registers of the instruction-set level
//
// Files of hot loops include it, each of which is compiled for several levels: everything is local to them.
#pragma once

#include <stdint.h>

namespace orvel::isa {

namespace {

// Bytes of a register.
#if defined(__AVX512F__)
constexpr int width = 64;
#elif defined(__AVX2__)
constexpr int width = 32;
#else
constexpr int width = 16;
#endif

// Numbers in a register.
template <class R>
constexpr int lanes = width / static_cast<int>(sizeof(R));

// N numbers side by side, which may be part of any array and lie anywhere. One number is itself. Clang
// forgets what the name of a type says of its alignment where the type is deduced or returned; so there are
// places in memory there.
template <class R, int N>
struct VectorOf {
#ifdef __clang__
    typedef R type __attribute__((vector_size(N * sizeof(R))));
#else
    typedef R type __attribute__((vector_size(N * sizeof(R)), aligned(alignof(R)), may_alias));
#endif
};
template <class R>
struct VectorOf<R, 1> {
    typedef R type;
};
template <class R, int N>
using Vector = typename VectorOf<R, N>::type;

// Whole numbers as wide as R: the results of comparisons, and the order of a shuffle.
template <class R>
struct IntegerOf {
    typedef int64_t type;
};
template <>
struct IntegerOf<float> {
    typedef int32_t type;
};
template <class R>
using Integer = typename IntegerOf<R>::type;
template <class R, int N>
using Integers = Vector<Integer<R>, N>;

// A vector in memory, to be written and to be read.
#ifdef __clang__
template <class R, int N>
class Place {
    typedef Vector<R, N> Anywhere __attribute__((aligned(alignof(R)), may_alias));

public:
    explicit Place(R* p) : p_(p) {}
    operator Vector<R, N>() const { return *reinterpret_cast<const Anywhere*>(p_); }
    void operator=(Vector<R, N> v) const { *reinterpret_cast<Anywhere*>(p_) = v; }
    void operator=(const Place& from) const { *this = static_cast<Vector<R, N>>(from); }
    void operator+=(Vector<R, N> v) const { *this = static_cast<Vector<R, N>>(*this) + v; }

private:
    R* p_;
};
template <class R, int N>
using Reading = Vector<R, N>;
#else
template <class R, int N>
using Place = Vector<R, N>&;
template <class R, int N>
using Reading = const Vector<R, N>&;
#endif

// The vector that begins at p.
template <int N, class R>
inline Place<R, N> at(R* p)
{
#ifdef __clang__
    return Place<R, N>(p);
#else
    return *reinterpret_cast<Vector<R, N>*>(p);
#endif
}
template <int N, class R>
inline Reading<R, N> at(const R* p)
{
#ifdef __clang__
    return Place<R, N>(const_cast<R*>(p));
#else
    return *reinterpret_cast<const Vector<R, N>*>(p);
#endif
}

// The same of the width of a register.
template <class R>
using Wide = Vector<R, lanes<R>>;
template <class R>
inline Place<R, lanes<R>> wide(R* p)
{
    return at<lanes<R>>(p);
}
template <class R>
inline Reading<R, lanes<R>> wide(const R* p)
{
    return at<lanes<R>>(p);
}

// Numbers of single precision as doubles.
template <int N>
inline Reading<double, N> widened(const double* p)
{
    return at<N>(p);
}
template <int N>
inline Vector<double, N> widened(const float* p)
{
    if constexpr (N == 1)
        return static_cast<double>(*p);
    else
        return __builtin_convertvector(at<N>(p), Vector<double, N>);
}

// A vector in a register: what is made of it neither reads the memory again nor is contracted with what made
// it.
template <class V>
inline V held(V v)
{
#if defined(__x86_64__) && defined(__clang__)
    if constexpr (sizeof(V) == 8) {  // where half a register has to be called a double
        auto bits = __builtin_bit_cast(double, v);
        __asm__("" : "+x"(bits));
        return __builtin_bit_cast(V, bits);
    }
#endif
#if defined(__x86_64__)
    if constexpr (sizeof(V) >= 8) __asm__("" : "+x"(v));
#elif defined(__aarch64__)
    __asm__("" : "+w"(v));
#else
    __asm__("" : "+m"(v));
#endif
    return v;
}

// The same address, which the compiler takes for another: what was computed from it before is computed again
// instead of being kept, where there are more addresses than registers.
template <class R>
inline R* anew(R* p)
{
    __asm__("" : "+r"(p));
    return p;
}

// Lane k of the result is lane places[k] of both vectors in a row, or of the one. The places are known when
// the caller is compiled; one compiler makes a shuffle of the numbers one by one.
template <class V, class Places>
inline __attribute__((always_inline)) V shuffle(V a, V b, Places places)
{
#ifdef __clang__
    constexpr int N = sizeof(V) / sizeof(a[0]);
    V v{};
#pragma unroll
    for (int k = 0; k < N; ++k) v[k] = places[k] < N ? a[places[k] % N] : b[places[k] % N];
    return v;
#else
    return __builtin_shuffle(a, b, places);
#endif
}
template <class V, class Places>
inline __attribute__((always_inline)) V shuffle(V v, Places places)
{
#ifdef __clang__
    return shuffle(v, v, places);
#else
    return __builtin_shuffle(v, places);
#endif
}

template <class R, int N>
inline Vector<R, N> all(R a)
{
    return a - Vector<R, N>{};  // the difference keeps a negative zero
}

// 0, 1, 2 ... in the lanes.
template <class R, int N>
inline Integers<R, N> numbered()
{
    Integers<R, N> lane{};
    for (int k = 0; k < N; ++k) lane[k] = static_cast<Integer<R>>(k);
    return lane;
}

template <class R, int N>
inline Vector<R, N> broadcast(Vector<R, N> v, int lane)
{
    return shuffle(v, Integers<R, N>{} + static_cast<Integer<R>>(lane));
}

template <class R, int N>
inline Vector<R, N> magnitude(Vector<R, N> v)
{
    if constexpr (N == 1) {
        return v < 0 ? -v : v + R(0);
    } else {
        constexpr auto mask = static_cast<Integer<R>>(~(static_cast<uint64_t>(1) << (8 * sizeof(R) - 1)));
        return reinterpret_cast<Vector<R, N>>(reinterpret_cast<Integers<R, N>>(v) & mask);
    }
}

// Even and odd lanes exchanged: pairs (re, im) become (im, re).
template <class R, int N>
inline __attribute__((always_inline)) Vector<R, N> exchanged(Vector<R, N> v)
{
    Integers<R, N> order{};
    for (int k = 0; k < N; ++k) order[k] = static_cast<Integer<R>>(k ^ 1);
    return shuffle(v, order);
}

// a in the even lanes, b in the odd ones.
template <class R, int N>
inline Vector<R, N> alternating(R a, R b)
{
    return (numbered<R, N>() & 1) != 0 ? all<R, N>(b) : all<R, N>(a);
}

// The lower half of the lanes, and the sum of both halves.
template <class R, int N>
struct Halves {
    union {
        Vector<R, N> whole;
        Vector<R, N / 2> half[2];
    };
};
template <class R, int N>
inline Vector<R, N / 2> lower(Vector<R, N> v)
{
    return Halves<R, N>{v}.half[0];
}
template <class R, int N>
inline Vector<R, N / 2> fold(Vector<R, N> v)
{
    const Halves<R, N> parts = {v};
    return parts.half[0] + parts.half[1];
}

// Transposes N vectors of N numbers in registers: a butterfly of exchanges between vectors 1, 2, 4 ... apart.
template <class R, int N>
inline __attribute__((always_inline)) void transpose(Vector<R, N> (&x)[N])
{
#pragma GCC unroll 4
    for (int w = 1; w < N; w *= 2) {
        Integers<R, N> low = {}, high = {};
        for (int k = 0; k < N; ++k) {
            low[k] = k & w ? N + k - w : k;
            high[k] = k & w ? N + k : k + w;
        }
#pragma GCC unroll 16
        for (int i = 0; i < N; ++i)
            if (!(i & w)) {
                const Vector<R, N> first = x[i], second = x[i + w];
                x[i] = shuffle(first, second, low);
                x[i + w] = shuffle(first, second, high);
            }
    }
}

}  // namespace

}  // namespace orvel::isa
