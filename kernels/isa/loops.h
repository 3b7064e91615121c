// kernels/isa/loops.h - tables of the hot loops, one set for each instruction-set level
//
// The files beside this one are compiled once per level. They include nothing but this header and <stdint.h>,
// keep everything in unnamed namespaces, and so leave no symbol that the linker could merge with code of
// another level.
#pragma once

#include <stdint.h>

namespace orvel::kernels {

// Loops over contiguous vectors of n > 0 elements. R is float or double.
template <class R>
struct RealLevel1 {
    R (*dot)(int64_t n, const R* x, const R* y);
    void (*axpy)(int64_t n, R a, const R* x, R* y);
};

// The same for complex vectors, given as their interleaved real and imaginary parts.
template <class R>
struct ComplexLevel1 {
    void (*axpy)(int64_t n, const R* a, const R* x, R* y);
};

struct Level1Loops {
    RealLevel1<float> s;
    RealLevel1<double> d;
    ComplexLevel1<float> c;
    ComplexLevel1<double> z;
};

struct Loops {
    const char* level;
    const Level1Loops* level1;
};

// The loops of the best level that the machine has; chosen at the first call.
const Loops& loops();

// For tests: the levels that this machine has, lowest first, and a way to force one. A null name goes back to
// the best. Returns whether the level exists here.
int level_count();
const char* level_name(int k);
bool force_level(const char* name);

}  // namespace orvel::kernels
