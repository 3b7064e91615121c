// frame/switches.h - print and stop switches of the error types
#pragma once

#include <cstdint>

namespace orvel::frame {

// The actions of ERSET on the switches of a type, or of all for type 0: -1 as is, 0 off, 1 on, 2 the initial
// value. Types 3 and 4 stand for 6 and 7, too.
inline bool is_action(int32_t action) { return action >= -1 && action <= 2; }
void set_classic_switches(int32_t type, int32_t print_action, int32_t stop_action, int32_t (&print)[7],
                          int32_t (&stop)[7]);

void erset(const int32_t* iersvr, const int32_t* ipact, const int32_t* isact);

}  // namespace orvel::frame
