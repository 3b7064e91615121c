// tests/frame/host_test.cpp - writers, stop handlers, reset, fork, loading and unloading
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "tests/support.h"

using namespace orvel_test;

namespace {

void routine(int32_t type, int32_t code)
{
    E1PSH("ROUTINE ", 8);
    E1MES(&type, &code, "Text.", 5);
    E1POP("ROUTINE ", 8);
}

constexpr const char* warning_7 = "\n *** WARNING  ERROR 7 from ROUTINE.  Text.\n";

// What a thread of its own prints: it gets through when nobody keeps the print lock.
std::string printed_by_another_thread()
{
    Capture page;
    std::thread(routine, 3, 7).join();
    return page.take();
}

class Host : public Quiet {
protected:
    ~Host() override
    {
        orvel_set_stop_handler(nullptr, nullptr);
        orvel_bind_unit(6, nullptr, nullptr);
    }
};

using HostDeathTest = Host;

TEST_F(Host, UnitsAreBoundUpToSixtyFour)
{
    const orvel_writer append = [](void* to, int32_t unit, const char* text, size_t n) {
        *static_cast<std::string*>(to) += std::to_string(unit) + ":" + std::string(text, n);
    };
    std::string first, second;
    for (int32_t unit = 0; unit < 64; ++unit) EXPECT_EQ(orvel_bind_unit(unit, append, &first), 1);
    EXPECT_EQ(orvel_bind_unit(64, append, &first), 0);
    EXPECT_EQ(orvel_bind_unit(64, nullptr, nullptr), 1);
    EXPECT_EQ(orvel_bind_unit(6, append, &second), 1);
    routine(3, 7);
    EXPECT_EQ(orvel_bind_unit(6, nullptr, nullptr), 1);
    EXPECT_EQ(orvel_bind_unit(64, append, &first), 1);
    testing::internal::CaptureStdout();
    routine(3, 7);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), warning_7);
    EXPECT_EQ(first, "");
    EXPECT_EQ(second, std::string("6:") + warning_7);
    for (int32_t unit = 0; unit <= 64; ++unit) orvel_bind_unit(unit, nullptr, nullptr);
}

TEST_F(Host, HandlerThrowsThroughTheRoutines)
{
    Capture page;
    orvel_set_stop_handler([](void* context, int32_t type, int32_t code) {
        throw Outcome{type, code + *static_cast<int32_t*>(context)}; }, &(static int32_t{100}));
}

}  // namespace
