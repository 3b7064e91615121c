// frame/host.h - settings of the host program, shared by all threads
#pragma once

#include "orvel/host.h"

namespace orvel::frame {

struct Switches {
    int32_t print[7];
    int32_t stop[7];
};

struct StopPolicy {
    orvel_stop_handler handler;  // one of the two
    orvel_stop_text_handler text_handler;
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

}  // namespace orvel::frame
