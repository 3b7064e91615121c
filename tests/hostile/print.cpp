// tests/hostile/print.cpp - a call in words, for the one who repeats it
#include <cstdio>
#include <cstring>

#include "isa/levels.h"
#include "tests/hostile/arguments.h"
#include "tests/hostile/surroundings.h"

namespace hostile {

namespace {

void print_element(char type, const unsigned char* p)
{
    double x[2] = {};
    float y[2] = {};
    int64_t whole = 0;
    std::memcpy(x, p, size_of(type));
    std::memcpy(y, p, std::min(size_of(type), sizeof y));
    std::memcpy(&whole, p, std::min<std::size_t>(size_of(type), 8));
    switch (type) {
        case 's':
            std::printf(" %.9g", static_cast<double>(y[0]));
            break;
        case 'd':
            std::printf(" %.17g", x[0]);
            break;
        case 'c':
            std::printf(" (%.9g,%.9g)", static_cast<double>(y[0]), static_cast<double>(y[1]));
            break;
        case 'z':
            std::printf(" (%.17g,%.17g)", x[0], x[1]);
            break;
        case 'i':
            std::printf(" %d", static_cast<int32_t>(whole));
            break;
        case 'l':
            std::printf(" %ld", whole);
            break;
        default:
            std::printf(" %lx", whole);
    }
}

}  // namespace

void print_call(const Routine& routine, const Arguments& arguments, const Surroundings& around)
{
    std::printf(
        "%s at levels %s and %s, rounding %d, quiet %d, context %d, flagged %d, corrupted %d, switches %d, refused %d\n",
        routine.name, orvel::isa::level_name(around.level[0]), orvel::isa::level_name(around.level[1]),
        around.rounding, around.is_quiet, around.has_context, around.is_flagged, around.is_corrupted,
        around.switches, around.refused);
    for (int k = 0; k < routine.count; ++k) {
        const Argument& a = arguments.argument(k);
        if (!arguments.is_data(k)) continue;
        const Storage& s = arguments.storage(k);
        std::printf("  %-8s%s%s%s %ld of %ld, %ld apart:", a.name, arguments.owns(k) ? "" : " shared,",
                    s.is_unreal ? " too large," : "", s.is_sparse ? " sparse," : "", s.blocks, s.length,
                    s.stride);
        for (int64_t j = 0; !s.is_unreal && j < std::min<int64_t>(s.blocks * s.length, 40); ++j)
            print_element(a.type, s.image + static_cast<std::size_t>(j) * s.element);
        std::printf("\n");
    }
    std::fflush(stdout);
}

}  // namespace hostile
