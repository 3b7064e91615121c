// isa/caches.cpp - sizes of the data caches, from the processor or from the system
#include "isa/caches.h"

#include <unistd.h>

#include <algorithm>

#ifdef __x86_64__
#include <cpuid.h>
#endif

namespace orvel::isa {

namespace {

#ifdef __x86_64__

// Both makers describe one cache in each subleaf of a leaf of their own: type and level in EAX, the factors
// of the size, less 1, in EBX and ECX.
Caches told_by_processor()
{
    constexpr unsigned leaves[] = {4, 0x8000001d}, data = 1, unified = 3, most = 8;
    Caches found{};
    for (const unsigned leaf : leaves)
        for (unsigned k = 0; k < most; ++k) {
            unsigned a = 0, b = 0, c = 0, d = 0;
            if (__get_cpuid_count(leaf, k, &a, &b, &c, &d) == 0 || (a & 31) == 0) break;
            if ((a & 31) != data && (a & 31) != unified) continue;
            const int64_t lines = (b & 0xfff) + 1, partitions = (b >> 12 & 0x3ff) + 1, ways = (b >> 22) + 1;
            const int64_t bytes = lines * partitions * ways * (static_cast<int64_t>(c) + 1);
            const unsigned level = a >> 5 & 7;
            if (level == 1) found.first = bytes;
            if (level == 2) found.second = bytes;
            if (level > 2) found.last = bytes;
        }
    return found;
}

#else

Caches told_by_processor() { return {}; }

#endif

// A size that is not in the range of any machine is no size.
int64_t first_credible(int64_t least, int64_t most, std::initializer_list<int64_t> sizes)
{
    for (const int64_t bytes : sizes)
        if (bytes >= least && bytes <= most) return bytes;
    return 0;
}

Caches read_caches()
{
    constexpr int64_t kib = 1024, mib = 1024 * kib;
    const Caches cpu = told_by_processor();
    Caches found;
    found.first = first_credible(8 * kib, mib, {cpu.first, sysconf(_SC_LEVEL1_DCACHE_SIZE), 32 * kib});
    found.second =
        first_credible(64 * kib, 64 * mib, {cpu.second, sysconf(_SC_LEVEL2_CACHE_SIZE), 512 * kib});
    found.last =
        first_credible(found.second, 4096 * mib, {cpu.last, sysconf(_SC_LEVEL3_CACHE_SIZE), found.second});
    return found;
}

}  // namespace

const Caches& caches()
{
    static const Caches read = read_caches();
    return read;
}

}  // namespace orvel::isa
