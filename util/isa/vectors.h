// util/isa/vectors.h - partition and short segments by vectors of 512 bits, where the level has them
//
// Compare and compress as in B. Bramas, A novel hybrid quicksort algorithm vectorized using AVX-512 on Intel
// Skylake, International Journal of Advanced Computer Science and Applications 8, 2017.
#pragma once

#include "util/isa/items.h"

#ifdef __AVX512F__
#include <immintrin.h>
#endif

namespace orvel::util {

namespace {

template <class Key, bool or_equal, class T, bool labelled>
class ByVector;

#ifndef __AVX512F__

template <class T>
constexpr bool has_vectors = false;

#else

// Vectors of T, and of the labels of as many elements. A mask has a bit for each lane.
template <class T>
struct Wide {
    static constexpr int lanes = 0;
};

template <>
struct Wide<int32_t> {
    using Vector = __m512i;
    using Labels = Wide<int32_t>;
    static constexpr int lanes = 16;

    static Vector load(uint32_t m, const int32_t* p) { return _mm512_maskz_loadu_epi32(mask(m), p); }
    static void store_all(int32_t* p, Vector v) { _mm512_storeu_si512(p, v); }
    static void store(int32_t* p, uint32_t m, Vector v) { _mm512_mask_storeu_epi32(p, mask(m), v); }
    static Vector compress(uint32_t m, Vector v) { return _mm512_maskz_compress_epi32(mask(m), v); }
    static Vector expand(Vector a, uint32_t m, Vector v) { return _mm512_mask_expand_epi32(a, mask(m), v); }
    static Vector all(int32_t a) { return _mm512_set1_epi32(a); }
    static Vector magnitude(Vector v) { return _mm512_maskz_abs_epi32(mask(~0u), v); }
    static uint32_t less(Vector a, Vector b, ByValue) { return _mm512_cmplt_epi32_mask(a, b); }
    static uint32_t less(Vector a, Vector b, ByMagnitude) { return _mm512_cmplt_epu32_mask(a, b); }

private:
    static __mmask16 mask(uint32_t m) { return static_cast<__mmask16>(m); }
};

template <>
struct Wide<float> {
    using Vector = __m512;
    using Labels = Wide<int32_t>;
    static constexpr int lanes = 16;

    static Vector load(uint32_t m, const float* p) { return _mm512_maskz_loadu_ps(mask(m), p); }
    static void store_all(float* p, Vector v) { _mm512_storeu_ps(p, v); }
    static void store(float* p, uint32_t m, Vector v) { _mm512_mask_storeu_ps(p, mask(m), v); }
    static Vector compress(uint32_t m, Vector v) { return _mm512_maskz_compress_ps(mask(m), v); }
    static Vector expand(Vector a, uint32_t m, Vector v) { return _mm512_mask_expand_ps(a, mask(m), v); }
    static Vector all(float a) { return _mm512_set1_ps(a); }
    static Vector magnitude(Vector v) { return _mm512_abs_ps(v); }
    template <class Key>
    static uint32_t less(Vector a, Vector b, Key)
    {
        return _mm512_cmp_ps_mask(a, b, _CMP_LT_OQ);
    }

private:
    static __mmask16 mask(uint32_t m) { return static_cast<__mmask16>(m); }
};

// Eight labels, beside eight double elements.
struct HalfLabels {
    static __m256i load(uint32_t m, const int32_t* p)
    {
        return _mm256_maskz_loadu_epi32(static_cast<__mmask8>(m), p);
    }
    static void store_all(int32_t* p, __m256i v) { _mm256_storeu_si256(reinterpret_cast<__m256i_u*>(p), v); }
    static void store(int32_t* p, uint32_t m, __m256i v)
    {
        _mm256_mask_storeu_epi32(p, static_cast<__mmask8>(m), v);
    }
    static __m256i compress(uint32_t m, __m256i v)
    {
        return _mm256_maskz_compress_epi32(static_cast<__mmask8>(m), v);
    }
    static __m256i expand(__m256i a, uint32_t m, __m256i v)
    {
        return _mm256_mask_expand_epi32(a, static_cast<__mmask8>(m), v);
    }
};

template <>
struct Wide<double> {
    using Vector = __m512d;
    using Labels = HalfLabels;
    static constexpr int lanes = 8;

    static Vector load(uint32_t m, const double* p) { return _mm512_maskz_loadu_pd(mask(m), p); }
    static void store_all(double* p, Vector v) { _mm512_storeu_pd(p, v); }
    static void store(double* p, uint32_t m, Vector v) { _mm512_mask_storeu_pd(p, mask(m), v); }
    static Vector compress(uint32_t m, Vector v) { return _mm512_maskz_compress_pd(mask(m), v); }
    static Vector expand(Vector a, uint32_t m, Vector v) { return _mm512_mask_expand_pd(a, mask(m), v); }
    static Vector all(double a) { return _mm512_set1_pd(a); }
    static Vector magnitude(Vector v) { return _mm512_abs_pd(v); }
    template <class Key>
    static uint32_t less(Vector a, Vector b, Key)
    {
        return _mm512_cmp_pd_mask(a, b, _CMP_LT_OQ);
    }

private:
    static __mmask8 mask(uint32_t m) { return static_cast<__mmask8>(m); }
};

template <class T>
constexpr bool has_vectors = Wide<T>::lanes > 0;

inline uint32_t lanes_below(int64_t count) { return (1u << count) - 1; }

template <class Key, class T, class V>
inline V keys(V v)
{
    if constexpr (__is_same(Key, ByMagnitude))
        return Wide<T>::magnitude(v);
    else
        return v;
}

// A whole vector at a time: those that go to the front are compressed to its first lanes and stored, then the
// others. The mover of move_all, see there.
template <class Key, bool or_equal, class T, bool labelled>
class ByVector {
    using W = Wide<T>;
    using Labels = typename W::Labels;

public:
    static constexpr int64_t block = 4 * W::lanes;

    // Elements that are held back. They are apart, so that the mover itself can live in registers.
    struct Held {
        alignas(64) T x[3 * block];
        alignas(64) int32_t label[labelled ? 3 * block : 1];
    };

    ByVector(Items<T, labelled> items, Held& held, int64_t first, int64_t last, T pivot)
        : low(first), high(last), items_(items), held_(held), pivot_(keys<Key, T>(W::all(pivot)))
    {}

    void move_first(int64_t begin) { move(begin); }
    void move_last(int64_t end) { move(end - block); }

    void hold(int64_t begin, int64_t count)
    {
        for (int64_t k = 0; k < count; k += W::lanes) {
            const uint32_t m = count - k < W::lanes ? lanes_below(count - k) : every;
            W::store(held_.x + held_count_ + k, every, W::load(m, items_.x + begin + k));
            if constexpr (labelled)
                Labels::store(held_.label + held_count_ + k, every,
                              Labels::load(m, items_.label + begin + k));
        }
        held_count_ += count;
    }

    // The incomplete vector first, while there is room to store a whole one.
    void release()
    {
        decltype(Labels::load(0, nullptr)) l{};
        int64_t k = held_count_ / W::lanes * W::lanes;
        uint32_t m = lanes_below(held_count_ - k);
        if (k == 0) {
            if constexpr (labelled) l = Labels::load(every, held_.label);
            return fill(W::load(every, held_.x), l, m);
        }
        if (m == 0) {
            m = every;
            k -= W::lanes;
        }
        for (; k >= 0; k -= W::lanes) {
            if constexpr (labelled) l = Labels::load(every, held_.label + k);
            emit(W::load(every, held_.x + k), l, m);
            m = every;
        }
    }

    int64_t low, high;

private:
    static constexpr uint32_t every = (1u << W::lanes) - 1;

    // The whole block is read before any of it is overwritten.
    void move(int64_t begin)
    {
        typename W::Vector v[4];
        decltype(Labels::load(0, nullptr)) l[4];
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k) {
            v[k] = W::load(every, items_.x + begin + k * W::lanes);
            if constexpr (labelled) l[k] = Labels::load(every, items_.label + begin + k * W::lanes);
        }
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k) emit(v[k], l[k], every);
    }

    uint32_t fronts(typename W::Vector v) const
    {
        const auto key = keys<Key, T>(v);
        return or_equal ? ~W::less(pivot_, key, Key()) : W::less(key, pivot_, Key());
    }

    // The lanes of m. Divided into first and last lanes, the vector is stored in both gaps, which have room
    // for one.
    template <class V, class L>
    [[gnu::always_inline]] void emit(V v, const L& l, uint32_t m)
    {
        const uint32_t front = m & fronts(v), back = m & ~front;
        const int count = __builtin_popcount(front), behind = __builtin_popcount(m) - count;
        const uint32_t top = every & ~lanes_below(W::lanes - behind);
        const auto both = W::expand(W::compress(front, v), top, W::compress(back, v));
        W::store_all(items_.x + low, both);
        W::store_all(items_.x + high - W::lanes, both);
        if constexpr (labelled) {
            const auto b = Labels::expand(Labels::compress(front, l), top, Labels::compress(back, l));
            Labels::store_all(items_.label + low, b);
            Labels::store_all(items_.label + high - W::lanes, b);
        }
        low += count;
        high -= behind;
    }

    // The last elements, fewer than a vector.
    template <class V, class L>
    void fill(V v, const L& l, uint32_t m)
    {
        const uint32_t front = m & fronts(v), back = m & ~front;
        const int before = __builtin_popcount(front);
        const uint32_t top = m & ~lanes_below(before);
        W::store(items_.x + low, m, W::expand(W::compress(front, v), top, W::compress(back, v)));
        if constexpr (labelled)
            Labels::store(items_.label + low, m,
                          Labels::expand(Labels::compress(front, l), top, Labels::compress(back, l)));
        low += before;
    }

    const Items<T, labelled> items_;
    Held& held_;
    const typename W::Vector pivot_;
    int64_t held_count_ = 0;
};

// Insertion sort of fewer than twelve elements, all at once: the place of an element is the number of those
// that insertion would leave before it, namely smaller ones and equal ones that stand before it now.
template <class Key, int vectors, class T, bool labelled>
inline void sort_by_rank(Items<T, labelled> items, int64_t first, int64_t size)
{
    using W = Wide<T>;
    using Labels = typename W::Labels;
    T* const x = items.x + first;
    const uint32_t all = lanes_below(size), lanes = lanes_below(W::lanes);
    typename W::Vector key[vectors];
    alignas(64) T values[vectors * W::lanes];
    alignas(64) int32_t labels[vectors * W::lanes];
#pragma GCC unroll 2
    for (int k = 0; k < vectors; ++k) {
        const uint32_t m = all >> (k * W::lanes) & lanes;
        const auto v = W::load(m, x + k * W::lanes);
        W::store(values + k * W::lanes, lanes, v);
        key[k] = keys<Key, T>(v);
        if constexpr (labelled)
            Labels::store(labels + k * W::lanes, lanes, Labels::load(m, items.label + first + k * W::lanes));
    }
    for (int64_t j = 0; j < size; ++j) {
        const auto one = keys<Key, T>(W::all(values[j]));
        uint32_t smaller = 0, larger = 0;
#pragma GCC unroll 2
        for (int k = 0; k < vectors; ++k) {
            smaller |= W::less(key[k], one, Key()) << (k * W::lanes);
            larger |= W::less(one, key[k], Key()) << (k * W::lanes);
        }
        const int place = __builtin_popcount((smaller & all) | (~larger & lanes_below(j)));
        x[place] = values[j];
        if constexpr (labelled) items.label[first + place] = labels[j];
    }
}

template <class Key, class T, bool labelled>
inline void sort_short(Items<T, labelled> items, int64_t first, int64_t size)
{
    if (size <= Wide<T>::lanes)
        sort_by_rank<Key, 1>(items, first, size);
    else
        sort_by_rank<Key, 2>(items, first, size);
}

#endif

}  // namespace

}  // namespace orvel::util
