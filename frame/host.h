// frame/host.h - settings of the host program, shared by all threads
#pragma once

#include "orvel/host.h"

namespace orvel::frame {

struct Switches {
    int32_t print[7];
    int32_t stop[7];
};

struct StopPolicy {
    orvel_stop_handler handler;
    void* context;
    int32_t status;
};

struct Writer {
    orvel_writer write;  // null when the unit is not bound
    void* context;
};

Switches thread_defaults();
StopPolicy stop_policy();
Writer bound_writer(int32_t unit);

// One switch of ERSET: -1 as is, 0 off, 1 on, 2 the initial value.
constexpr void apply_switch(int32_t& target, int32_t action, int32_t initial)
{
    if (action == 0 || action == 1)
        target = action;
    else if (action == 2)
        target = initial;
}

}  // namespace orvel::frame
