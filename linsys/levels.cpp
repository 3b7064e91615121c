// linsys/levels.cpp - the tables of hot loops of each instruction-set level
#include "frame/levels.h"
#include "linsys/isa/loops.h"

namespace orvel::linsys {

#define ORVEL_SOLVER_LOOPS(isa)                                                                        \
    namespace isa {                                                                                    \
    extern const Eliminations eliminations;                                                            \
    extern const AllVectorLoops all_vector_loops;                                                      \
    extern const SmallMatrices small_matrices;                                                         \
    extern const ResidualLoops residual_loops;                                                         \
    extern const ExcessLoops excess_loops;                                                             \
    }                                                                                                  \
    constexpr Tables isa##_tables = {&isa::eliminations, &isa::all_vector_loops, &isa::small_matrices, \
                                     &isa::residual_loops, &isa::excess_loops};
#define ORVEL_SOLVER_TABLES(isa) isa##_tables,

namespace {

struct Tables {
    const Eliminations* eliminations;
    const AllVectorLoops* vectors;
    const SmallMatrices* small;
    const ResidualLoops* residuals;
    const ExcessLoops* excess;
};

}  // namespace

ORVEL_FOR_EACH_LEVEL(ORVEL_SOLVER_LOOPS)

namespace {

constexpr Tables tables[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_SOLVER_TABLES)};

}  // namespace

const Eliminations& eliminations() { return *frame::at_level(tables).eliminations; }
const AllVectorLoops& all_vector_loops() { return *frame::at_level(tables).vectors; }
const SmallMatrices& small_matrices() { return *frame::at_level(tables).small; }
const ResidualLoops& residual_loops() { return *frame::at_level(tables).residuals; }
const ExcessLoops& excess_loops() { return *frame::at_level(tables).excess; }

}  // namespace orvel::linsys
