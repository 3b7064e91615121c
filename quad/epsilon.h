// quad/epsilon.h - limit of a sequence by the epsilon algorithm
#pragma once

#include <cstdint>

namespace orvel::quad {

inline constexpr int32_t most_elements = 50;

// Behind Q4AWO: n is the number of elements in use, one of them new; it is reduced where the table is cut
// off.
template <class T>
void q4awo(int32_t& n, T* table, T& result, T& error, T* last_results, int32_t& calls);

}  // namespace orvel::quad
