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

const Eliminations& eliminations() { return *tables[frame::level()].eliminations; }
const AllVectorLoops& all_vector_loops() { return *tables[frame::level()].vectors; }
const SmallMatrices& small_matrices() { return *tables[frame::level()].small; }
const ResidualLoops& residual_loops() { return *tables[frame::level()].residuals; }
const ExcessLoops& excess_loops() { return *tables[frame::level()].excess; }

}  // namespace orvel::linsys
