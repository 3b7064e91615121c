// frame/workspace.cpp - entry points of programs that used to size a workspace pool
#include "frame/export.h"
#include "orvel/frame.h"

namespace {

void no_pool(const int32_t*) {}

}  // namespace

ORVEL_EXPORT(IWKIN, iwkin_, 1, no_pool);
ORVEL_EXPORT(IWKCIN, iwkcin_, 1, no_pool);
