// util/isa/items.h - what is sorted: elements, their keys and labels
#pragma once

#include <stdint.h>

namespace orvel::util {

namespace {

// Keys by which elements are compared.
struct ByValue {
    template <class T>
    static T of(T v)
    {
        return v;
    }
};

struct ByMagnitude {
    static float of(float v) { return __builtin_fabsf(v); }
    static double of(double v) { return __builtin_fabs(v); }
    // The most negative integer has the largest magnitude.
    static uint32_t of(int32_t v) { return v < 0 ? 0u - static_cast<uint32_t>(v) : static_cast<uint32_t>(v); }
};

// Elements and their labels, moved together.
template <class T, bool labelled>
struct Items {
    struct Item {
        T value;
        int32_t label;
    };

    T* x;
    int32_t* label;

    Item get(int64_t k) const { return {x[k], labelled ? label[k] : 0}; }
    void put(int64_t k, Item item) const
    {
        x[k] = item.value;
        if constexpr (labelled) label[k] = item.label;
    }
    void exchange(int64_t a, int64_t b) const
    {
        const Item kept = get(a);
        put(a, get(b));
        put(b, kept);
    }
};

}  // namespace

}  // namespace orvel::util
