// random/jump_polynomial.h - x^E modulo x^521 + x^489 + 1, E = 2^520 + (4^260 - 1) / 3, from the lowest
// coefficient; printed by tools/jump_polynomial.py
// clang-format off
#pragma once

#include <array>
#include <cstdint>

namespace orvel::random {

inline constexpr std::array<uint64_t, 9> jump_polynomial = {
    0x27342842ef36098f,
    0x0fa929fb813e818a,
    0x076a7b723292141a,
    0x570a4398a379a5b4,
    0x7d4567629c105808,
    0xfb530505e70bfbfb,
    0xe62b2a62ebfc9b2e,
    0x7a7245efeb096b72,
    0x00000000000001d1,
};

}  // namespace orvel::random
