// tests/hostile/draw.h - numbers from a seed: the same on every machine
#pragma once

#include <cstddef>
#include <cstdint>

namespace hostile {

inline uint64_t mixed(uint64_t x)
{
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9u;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebu;
    return x ^ (x >> 31);
}

class Draw {
public:
    explicit Draw(uint64_t seed) : state_(seed) {}

    uint64_t bits() { return mixed(state_ += 0x9e3779b97f4a7c15u); }
    int64_t below(int64_t n) { return static_cast<int64_t>((bits() >> 32) * static_cast<uint64_t>(n) >> 32); }
    int64_t between(int64_t low, int64_t high) { return low + below(high - low + 1); }
    bool one_in(int64_t n) { return below(n) == 0; }
    double uniform() { return static_cast<double>(bits() >> 11) * 0x1p-53; }
    template <class T, std::size_t n>
    T one_of(const T (&values)[n])
    {
        return values[below(n)];
    }

private:
    uint64_t state_;
};

}  // namespace hostile
