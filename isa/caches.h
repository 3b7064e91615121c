// isa/caches.h - sizes of the data caches, from which loops over blocks take theirs
#pragma once

#include <stdint.h>

namespace orvel::isa {

// Bytes that one thread finds in the first level, in the second, and in the last one of all.
struct Caches {
    int64_t first, second, last;
};

// Those of this machine, read once; typical ones where it does not tell. No result depends on them.
const Caches& caches();

}  // namespace orvel::isa
