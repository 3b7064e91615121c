// frame/levels.h - the names of isa/levels.h in this folder
#pragma once

#include "isa/levels.h"

namespace orvel::frame {

using isa::at_level;
using isa::level;
using isa::level_count;
using isa::level_name;
using isa::levels_built;
inline bool force_level(const char* name) { return isa::use_level(name); }

}  // namespace orvel::frame
