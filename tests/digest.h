// tests/digest.h - digests of the results of families of routines
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

struct Family {
    const char* name;
    std::function<void()> run;
};
extern const std::vector<Family> families;

// A digest of the results of a family with arrays so many elements behind a boundary, on the calling thread;
// what the thread has computed before shall not matter.
uint64_t value_of(const Family& family, int32_t distance);
