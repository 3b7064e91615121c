// kernels/isa/lanes.h - vectors of the width of the instruction-set level, and loops over them
//
// Everything is local to the file that includes it; see loops.h.
#pragma once

#include <stdint.h>

namespace orvel::kernels {

namespace {

#if defined(__AVX512F__)
constexpr int widest = 64;
#elif defined(__AVX2__)
constexpr int widest = 32;
#else
constexpr int widest = 16;
#endif

template <class R>
struct Integer;
template <>
struct Integer<float> {
    typedef int32_t type;
};
template <>
struct Integer<double> {
    typedef int64_t type;
};

// A vector of so many bytes, with loads and stores of any alignment.
template <class R, int bytes>
struct Lanes {
    typedef typename Integer<R>::type Int;
    typedef R Vector __attribute__((vector_size(bytes)));
    typedef Int Integers __attribute__((vector_size(bytes)));
    typedef R Unaligned __attribute__((vector_size(bytes), aligned(alignof(R)), may_alias));
    static constexpr int64_t count = bytes / static_cast<int>(sizeof(R));

    static Vector load(const R* p) { return *reinterpret_cast<const Unaligned*>(p); }
    static void store(R* p, Vector v) { *reinterpret_cast<Unaligned*>(p) = v; }
    static Vector all(R a) { return a - Vector{}; }  // the difference keeps a negative zero
    static Vector magnitude(Vector v)
    {
        constexpr Int mask = static_cast<Int>(~(static_cast<uint64_t>(1) << (8 * sizeof(R) - 1)));
        return reinterpret_cast<Vector>(reinterpret_cast<Integers>(v) & mask);
    }
    // a in the even lanes, b in the odd ones
    static Vector pairs(R a, R b)
    {
        Integers odd{};
        for (int k = 0; k < count; ++k) odd[k] = -(k & 1);
        return odd ? all(b) : all(a);
    }
    // even and odd lanes exchanged
    static Vector exchange(Vector v)
    {
        Integers order{};
        for (int k = 0; k < count; ++k) order[k] = static_cast<Int>(k ^ 1);
        return __builtin_shuffle(v, order);
    }
};

// One number alone, for the ends of vectors.
template <class R>
struct Single {
    typedef R Vector;
    static constexpr int64_t count = 1;

    static Vector load(const R* p) { return *p; }
    static void store(R* p, Vector v) { *p = v; }
    static Vector all(R a) { return a; }
    static Vector magnitude(Vector v) { return v < 0 ? -v : v + R(0); }
};

// A vector in a register: what is made of it does not read the memory again.
template <class V>
inline V held(V v)
{
#ifdef __x86_64__
    if constexpr (sizeof(V) >= 8) __asm__("" : "+x"(v));
#endif
    return v;
}

// The lower half of the lanes, and the sum of both halves.
template <class R, int bytes>
inline typename Lanes<R, bytes / 2>::Vector lower(typename Lanes<R, bytes>::Vector v)
{
    union {
        typename Lanes<R, bytes>::Vector whole;
        typename Lanes<R, bytes / 2>::Vector half[2];
    } parts = {v};
    return parts.half[0];
}
template <class R, int bytes>
inline typename Lanes<R, bytes / 2>::Vector fold(typename Lanes<R, bytes>::Vector v)
{
    union {
        typename Lanes<R, bytes>::Vector whole;
        typename Lanes<R, bytes / 2>::Vector half[2];
    } parts = {v};
    return parts.half[0] + parts.half[1];
}

// The same pair of numbers in all lanes, made once for every width.
template <class R>
class Pairs {
public:
    Pairs(R a, R b) : all_(Lanes<R, widest>::pairs(a, b)) {}
    template <int bytes>
    typename Lanes<R, bytes>::Vector of(Lanes<R, bytes>) const
    {
        return narrowed<widest, bytes>(all_);
    }
    R of(Single<R>) const { return all_[0]; }

private:
    template <int from, int to>
    static typename Lanes<R, to>::Vector narrowed(typename Lanes<R, from>::Vector v)
    {
        if constexpr (from == to)
            return v;
        else
            return narrowed<from / 2, to>(lower<R, from>(v));
    }

    typename Lanes<R, widest>::Vector all_;
};

// Vectors beyond this length come from memory, not from a cache. There narrow loads are faster: hardware
// prefetches further ahead when a line is asked for more than once.
template <class R>
constexpr int64_t far = (16 << 20) / static_cast<int64_t>(sizeof(R));

// Calls work(lanes, i) for all i: four vectors of the width at a time, then single ones, then ever narrower
// ones. `finest` is the narrowest width in numbers, 1 or 2; n is a multiple of it.
template <class R, int bytes, int finest, class F>
inline __attribute__((always_inline)) void for_rest(int64_t i, int64_t n, F work)
{
    if constexpr (bytes > static_cast<int>(sizeof(R))) {
        typedef Lanes<R, bytes> L;
        if (n - i >= L::count) {
            work(L(), i);
            i += L::count;
        }
        if constexpr (L::count > finest) for_rest<R, bytes / 2, finest>(i, n, work);
    } else {
        if (n > i) work(Single<R>(), i);
    }
}

template <class R, int bytes, int finest, class F>
inline __attribute__((always_inline)) void for_width(int64_t n, F work)
{
    typedef Lanes<R, bytes> L;
    int64_t i = 0;
    for (; n - i >= 4 * L::count; i += 4 * L::count) {
        work(L(), i);
        work(L(), i + L::count);
        work(L(), i + 2 * L::count);
        work(L(), i + 3 * L::count);
    }
    for (; n - i >= L::count; i += L::count) work(L(), i);
    if constexpr (L::count > finest) for_rest<R, bytes / 2, finest>(i, n, work);
}

// For loops that write. A store of 64 bytes takes two steps on some machines, which shows, and gains nothing
// over two of 32 bytes.
constexpr int written = widest < 32 ? widest : 32;

template <class R, int finest, class F>
inline __attribute__((always_inline)) void for_lanes(int64_t n, F work)
{
    if (n < far<R>)
        for_width<R, written, finest>(n, work);
    else
        for_width<R, 16, finest>(n, work);
}

}  // namespace

}  // namespace orvel::kernels
