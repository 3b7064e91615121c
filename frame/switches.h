// frame/switches.h - ERSET for other routines of the library
#pragma once

#include <cstdint>

namespace orvel::frame {

void erset(const int32_t* iersvr, const int32_t* ipact, const int32_t* isact);

}  // namespace orvel::frame
