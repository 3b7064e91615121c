// random/levels.cpp - the tables of hot loops of each instruction-set level
#include "frame/levels.h"
#include "random/isa/loops.h"

namespace orvel::random {

#define ORVEL_RANDOM_LOOPS(isa) extern const Loops loops_##isa;
#define ORVEL_RANDOM_TABLE(isa) &loops_##isa,

ORVEL_FOR_EACH_LEVEL(ORVEL_RANDOM_LOOPS)

const Loops& loops()
{
    static constexpr const Loops* tables[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_RANDOM_TABLE)};
    return *frame::at_level(tables);
}

}  // namespace orvel::random
