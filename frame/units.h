// frame/units.h - where the output for a unit number goes
#pragma once

#include <cstdint>
#include <string_view>

namespace orvel::frame {

// Writes whole lines to a unit: to the writer bound to it, to standard output (6), standard error (0) or the
// file fort.N. Nothing stays in a buffer. The caller holds the print lock.
void write_unit(int32_t unit, std::string_view text);

}  // namespace orvel::frame
