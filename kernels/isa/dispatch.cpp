// kernels/isa/dispatch.cpp - the tables of hot loops of each instruction-set level
#include "frame/levels.h"
#include "kernels/isa/loops.h"

namespace orvel::kernels {

#define ORVEL_KERNEL_LOOPS(name)                                                          \
    namespace name {                                                                      \
    extern const Level1Updates level1_updates;                                            \
    extern const Level1Sums level1_sums;                                                  \
    extern const Level1Searches level1_searches;                                          \
    extern const Level2Loops level2;                                                      \
    extern const RealLevel3<float> gemm_s;                                                \
    extern const RealLevel3<double> gemm_d;                                               \
    extern const ComplexLevel3<float> gemm_c;                                             \
    extern const ComplexLevel3<double> gemm_z;                                            \
    extern const Triangles<float> triangles_s;                                            \
    extern const Triangles<double> triangles_d;                                           \
    }                                                                                     \
    constexpr Loops name##_loops = {                                                      \
        #name,         &name::level1_updates, &name::level1_sums, &name::level1_searches, \
        &name::level2, &name::gemm_s,         &name::gemm_d,      &name::gemm_c,          \
        &name::gemm_z, &name::triangles_s,    &name::triangles_d};
#define ORVEL_KERNEL_TABLE(name) name##_loops,

ORVEL_FOR_EACH_LEVEL(ORVEL_KERNEL_LOOPS)

namespace {
constexpr Loops tables[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_KERNEL_TABLE)};
}  // namespace

const Loops& loops() { return frame::at_level(tables); }

}  // namespace orvel::kernels
