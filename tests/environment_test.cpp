// tests/environment_test.cpp - little memory, output that goes nowhere, a library that comes and goes
#include <dlfcn.h>
#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include "tests/frame/calls.h"
#include "tests/frame/process.h"
#include "tests/interface/calls.h"

using namespace orvel_test;

namespace {

bool messages_do_no_harm()
{
    const int32_t none = 0, month = 1, year = 2000;
    set_switches(0, 1, 0);
    for (int k = 0; k < 3; ++k) NDAYS(&none, &month, &year);
    return outcome() == Outcome{5, 2} && ERCOM1.level == 1;
}

TEST(Environment, OutputThatGoesNowhere)
{
    EXPECT_TRUE(in_child([] { return close(1) == 0 && messages_do_no_harm(); }));
    EXPECT_TRUE(in_child([] {
        const int full = open("/dev/full", O_WRONLY);
        return full >= 0 && dup2(full, 1) == 1 && messages_do_no_harm();
    }));
    EXPECT_TRUE(in_child([] {
        int ends[2];
        signal(SIGPIPE, SIG_IGN);
        return pipe(ends) == 0 && dup2(ends[1], 1) == 1 && close(ends[0]) == 0 && messages_do_no_harm();
    }));
}

// All of a small process: what does not fit is said, and everything else goes on.
TEST(Environment, TwoHundredMegabytes)
{
    EXPECT_TRUE(in_child([] {
        constexpr rlim_t most = rlim_t{200} << 20;
        const rlimit limit = {most, most};
        if (setrlimit(RLIMIT_AS, &limit) != 0) return false;
        orvel_bind_unit(
            6, [](void*, int32_t, const char*, size_t) {}, nullptr);
        set_switches(0, 1, 0);
        const int32_t n = 4000, path = 1;
        const auto size = static_cast<std::size_t>(n);
        const std::vector<double> a(size * size, 1.0), b(size, 1.0);
        std::vector<double> x(size, 7.0);
        DLSARG(&n, a.data(), &n, b.data(), &path, x.data());
        const bool is_said = outcome() == Outcome{5, 2} && x[0] == 7.0;
        for (const RoutineEntry& routine : routines)
            if (is_callable(routine)) OrdinaryCall(routine, 1).run();
        return is_said && ERCOM1.level == 1;
    }));
}

TEST(Environment, LibraryIsLoadedAThousandTimes)
{
    const Folder folder;
    const std::string copy = std::string(folder.name) + "/copy.so";  // not the one that is linked
    std::filesystem::copy_file(ORVEL_LIBRARY, copy);
    const auto mappings = [] {
        std::ifstream file("/proc/self/maps");
        return std::count(std::istreambuf_iterator<char>(file), {}, '\n');
    };
    const auto load = [&](int count) {
        for (int k = 0; k < count; ++k) {
            void* const library = dlopen(copy.c_str(), RTLD_NOW | RTLD_LOCAL);
            ASSERT_NE(library, nullptr) << dlerror();
            const double x = 5;
            EXPECT_NEAR(reinterpret_cast<decltype(&DGAMMA)>(dlsym(library, "DGAMMA"))(&x), 24, 1e-12);
            EXPECT_EQ(dlclose(library), 0);
        }
    };
    load(50);
    const auto maps = mappings();
    const std::size_t in_use = mallinfo2().uordblks;
    load(1000);
    EXPECT_LE(mappings(), maps + 1);
    EXPECT_LE(mallinfo2().uordblks, in_use + 16384);
}

}  // namespace
