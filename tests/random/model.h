// tests/random/model.h - the generators one number at a time, in the arithmetic of their definition:
// remainders in double, bits in arrays from 1, twisters of the C++ library
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/support.h"

namespace orvel_test {

inline void set_option(int32_t option) { RNOPT(&option); }
inline void set_seed(int32_t seed) { RNSET(&seed); }

// A stream starts on a thread of its own, where nothing is set up. No error may end the test as if it were
// good.
template <class F>
void on_new_thread(F body)
{
    std::thread([&] {
        set_switches(0, 1, 0);
        body();
        EXPECT_EQ(outcome(), (Outcome{0, 0}));
    }).join();
}

template <class T>
std::vector<T> draw(int32_t n)
{
    std::vector<T> r(static_cast<std::size_t>(n) + 1, T(-7));
    member<T>(RNUN, DRNUN)(&n, r.data());
    EXPECT_EQ(r.back(), T(-7)) << "written behind the end";
    r.pop_back();
    return r;
}

struct Model {
    explicit Model(int32_t seed_) : state(seed_), seed(seed_) {}

    int32_t option = 1;
    double state;
    int32_t seed;
    std::tuple<std::vector<float>, std::vector<double>> tables;
    std::vector<int32_t> words;
    int32_t p = 1, q = 1468;
    std::mt19937 twister32;
    std::mt19937_64 twister64;
    bool ready32 = false, ready64 = false;

    double step()
    {
        const double m = 2147483647.0, s = state;
        if (option <= 2) return state = std::fmod(16807.0 * s, m);
        const double high = option <= 4 ? 12121 : 29013, low = option <= 4 ? 23166 : 8392;
        const double t1 = std::fmod(low * s, m), t2 = std::fmod(32768.0 * s, m);
        return state = std::fmod(high * t2 + t1, m);
    }

    template <class T>
    T shuffled(std::vector<T>& table, double scale)
    {
        while (table.size() < 128) table.push_back(static_cast<T>(step() / 2147483647.0));
        T& entry = table[static_cast<std::size_t>(std::fmod(step(), 128.0))];
        const T r = entry;
        entry = static_cast<T>(state * scale);
        return r;
    }

    template <class T>
    T next()
    {
        const double scale = sizeof(T) == 4 ? 0x1p-31 * (1 - 0x1p-24) : 1 / 2147483647.0;
        double r;
        if (option == 8) {
            if (!std::exchange(ready32, true)) twister32.seed(static_cast<uint32_t>(seed));
            return static_cast<T>((twister32() + 0.5) / 4294967295.0);
        }
        if (option == 9) {
            if (!std::exchange(ready64, true)) twister64.seed(static_cast<uint64_t>(seed));
            return static_cast<T>(std::ldexp(static_cast<double>(twister64() >> 11), -53));
        }
        if (option == 7) {
            if (words.empty()) fill_words();
            state = words[p];
            words[p] ^= words[q];
            p = p % 1563 + 1;
            q = q % 1563 + 1;
            r = state * scale;
        } else {
            r = option % 2 == 1 ? step() * scale
                                : static_cast<double>(shuffled(std::get<std::vector<T>>(tables), scale));
        }
        seed = static_cast<int32_t>(std::lround(state));
        return static_cast<T>(r);
    }

    using Bits = std::array<bool, 1043>;

    void fill_words()
    {
        Bits a{}, c{}, d{}, power{};  // power[e + 1]: coefficient of x^e
        const auto extend = [](Bits& b) {
            for (int k = 522; k <= 1042; ++k) b[k] = b[k - 32] != b[k - 521];
        };
        uint32_t x = static_cast<uint32_t>(seed);
        for (int k = 1; k <= 521; ++k) a[k] = (x *= 69069) != 0 && x < 0x80000000u;
        extend(a);
        power[2] = true;
        for (int i = 1; i <= 520; ++i) {
            Bits square{};
            for (int e = 0; e <= 520; ++e) square[2 * e + (i % 2 == 0) + 1] = power[e + 1];
            for (int e = 520; e >= 0; --e)
                if (std::exchange(square[521 + e + 1], false))
                    for (const int at : {e + 1, e + 490}) square[at] = !square[at];
            power = square;
        }
        const auto jump = [&](const Bits& from, Bits& to) {
            for (int i = 1; i <= 521; ++i)
                for (int j = 1; j <= 521; ++j) to[i] = to[i] != (power[j] && from[j + i - 1]);
            extend(to);
        };
        jump(a, c);
        jump(c, d);
        std::array<bool, 1564> t{};
        for (int i = 1; i <= 521; ++i) t[3 * i - 2] = a[i], t[3 * i - 1] = c[i], t[3 * i] = d[i];
        words.assign(1564, 0);
        for (int w = 1, one = 1, two = 1468; w <= 1563; ++w)
            for (int j = 1; j <= 32; ++j) {
                if (t[one] && j < 32) words[w] += 1 << (31 - j);
                t[one] = t[one] != t[two];
                one = one % 1563 + 1;
                two = two % 1563 + 1;
            }
    }
};

}  // namespace orvel_test
