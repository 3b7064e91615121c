// frame/fortran.h - output that the run-time of a Fortran host program still holds back
#pragma once

#include <cstdint>

namespace orvel::frame {

// Has the lines written out that the program has printed on its unit, where that can be done without the
// danger of waiting for ever.
void flush_fortran(int32_t unit);

}  // namespace orvel::frame
