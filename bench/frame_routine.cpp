// bench/frame_routine.cpp - a routine that does nothing but enter and leave its frame, and one without a
// frame
#include "frame/routine.h"

extern "C" [[gnu::visibility("default")]] int32_t bench_in_frame(const int32_t* n)
{
    orvel::Routine<double, "NOTHNG"> me;
    return *n;
}

extern "C" [[gnu::visibility("default")]] int32_t bench_without_frame(const int32_t* n) { return *n; }
