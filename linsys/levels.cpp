// linsys/levels.cpp - the tables of hot loops of each instruction-set level
#include "frame/levels.h"
#include "linsys/isa/loops.h"

namespace orvel::linsys {

#define ORVEL_SOLVER_LOOPS(isa)                \
    namespace isa {                            \
    extern const Loops solver_loops;           \
    extern const ResidualLoops residual_loops; \
    }
#define ORVEL_SOLVER_TABLE(isa) &isa::solver_loops,
#define ORVEL_RESIDUAL_TABLE(isa) &isa::residual_loops,

ORVEL_FOR_EACH_LEVEL(ORVEL_SOLVER_LOOPS)

const Loops& loops()
{
    static constexpr const Loops* tables[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_SOLVER_TABLE)};
    return *tables[frame::level()];
}

const ResidualLoops& residual_loops()
{
    static constexpr const ResidualLoops* tables[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_RESIDUAL_TABLE)};
    return *tables[frame::level()];
}

}  // namespace orvel::linsys
