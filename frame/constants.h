// frame/constants.h - machine constants by index, for library code
#pragma once

#include <bit>
#include <cstdint>

namespace orvel {

// The entries of AMACH and DMACH, 1 to 8; entry 0 is not used.
inline constexpr float single_constants[9] = {
    0.0f,
    std::bit_cast<float>(0x00800000),  // smallest normalised number
    std::bit_cast<float>(0x7F7FFFFF),  // largest number
    std::bit_cast<float>(0x33800000),  // smallest relative spacing
    std::bit_cast<float>(0x34000000),  // largest relative spacing
    std::bit_cast<float>(0x3E9A209B),  // common logarithm of 2
    std::bit_cast<float>(0x7FC00000),  // quiet NaN
    std::bit_cast<float>(0x7F800000),  // infinity
    std::bit_cast<float>(0xFF800000),  // negative infinity
};

inline constexpr double double_constants[9] = {
    0.0,
    std::bit_cast<double>(0x0010000000000000),
    std::bit_cast<double>(0x7FEFFFFFFFFFFFFF),
    std::bit_cast<double>(0x3CA0000000000000),
    std::bit_cast<double>(0x3CB0000000000000),
    std::bit_cast<double>(0x3FD34413509F79FF),
    std::bit_cast<double>(0x7FF8000000000000),
    std::bit_cast<double>(0x7FF0000000000000),
    std::bit_cast<double>(0xFFF0000000000000),
};

// machine<T>(k): AMACH(k) or DMACH(k) at compile time.
template <class T>
constexpr T machine(int k);
template <>
constexpr float machine<float>(int k)
{
    return single_constants[k];
}
template <>
constexpr double machine<double>(int k)
{
    return double_constants[k];
}

}  // namespace orvel
