// tests/refusing_memory.h - requests for scratch that fail when a test says so
//
// Included by one file of a test program: it takes the place of the allocator that the library calls.
#pragma once

#include <dlfcn.h>

#include <cstddef>

namespace orvel_test {

inline constexpr int every = -1;
inline int requests = 0, failing = 0;  // counts requests; the failing one, or every one, is refused
inline std::size_t last_size = 0;

inline void refuse(int request)
{
    requests = 0;
    failing = request;
}

}  // namespace orvel_test

extern "C" void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    static auto* const next =
        reinterpret_cast<void* (*)(std::size_t, std::size_t)>(dlsym(RTLD_NEXT, "aligned_alloc"));
    using namespace orvel_test;
    last_size = size;
    return ++requests == failing || failing == every || size > (std::size_t{1} << 40) ? nullptr
                                                                                      : next(alignment, size);
}
