// tests/digest.cpp - a digest of the results of each family on each instruction-set level
//
//     digest [digests.txt]
//
// Computes everything three times: alone; at other distances from a cache line; with all families at once on
// threads of their own, each after itself. Fails where they differ, or where the digests are not the recorded
// ones, which are those of one compiler and C library. Where bits are meant to move, what it prints is the
// new record.
#include "tests/digest.h"

#include <gnu/libc-version.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>
#include <thread>

#include "isa/levels.h"
#include "orvel/orvel.h"

namespace {

std::thread in_thread(const Family& family, int32_t distance, int times, uint64_t& value)
{
    return std::thread([&family, distance, times, &value] {
        for (int k = 0; k < times; ++k) value = value_of(family, distance);
    });
}

// What the digests of one level are, and those that are not the same in other surroundings.
std::map<std::string, uint64_t> digests_of(const std::string& level, int& differences)
{
    std::map<std::string, uint64_t> alone, moved, crowded;
    std::vector<std::thread> crowd;
    for (const Family& family : families) in_thread(family, 0, 1, alone[family.name]).join();
    for (const Family& family : families) in_thread(family, 3, 1, moved[family.name]).join();
    for (const Family& family : families) crowd.push_back(in_thread(family, 1, 2, crowded[family.name]));
    for (std::thread& thread : crowd) thread.join();
    const auto look = [&](const auto& values, const char* on_what) {
        for (const auto& [name, value] : values)
            if (value != alone[name]) {
                ++differences;
                std::fprintf(stderr, "%s %s: depends on %s\n", level.c_str(), name.c_str(), on_what);
            }
    };
    look(moved, "where arrays lie");
    look(crowded, "other threads or earlier calls");
    return alone;
}

// The recorded digests, as they are printed; none where they are those of another C library.
std::map<std::string, std::string> recorded(const char* path, const std::string& made_by)
{
    std::ifstream file(path);
    std::map<std::string, std::string> found;
    std::string line;
    if (!std::getline(file, line)) std::fprintf(stderr, "%s cannot be read\n", path), std::exit(2);
    if (line != made_by) {
        std::fprintf(stderr, "not compared with the record: that is of %s\n", line.c_str());
        return {};
    }
    while (std::getline(file, line))
        found[line.substr(0, line.rfind(' '))] = line.substr(line.rfind(' ') + 1);
    return found;
}

}  // namespace

int main(int argc, char** argv)
{
    orvel_set_thread_defaults(0, 0, 0);
    const std::string made_by =
        std::string("g++ " __VERSION__ " and glibc ") + gnu_get_libc_version() + ", processors with FMA";
    const auto record = argc > 1 ? recorded(argv[1], made_by) : std::map<std::string, std::string>();
    std::printf("%s\n", made_by.c_str());
    int differences = 0;
    for (int k = 0; k < orvel::isa::level_count(); ++k) {
        const std::string level = orvel::isa::level_name(k);
        orvel::isa::use_level(level.c_str());
        for (const auto& [family, value] : digests_of(level, differences)) {
            char text[20];
            std::snprintf(text, sizeof text, "%016lx", value);
            const std::string name = level + " " + family;
            std::printf("%s %s\n", name.c_str(), text);
            if (record.empty() || (record.contains(name) && record.at(name) == text)) continue;
            ++differences;
            std::fprintf(stderr, "%s: not the recorded digest\n", name.c_str());
        }
    }
    return differences == 0 ? 0 : 1;
}
