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

// Stops become exceptions.
void throwing(void*, int32_t type, int32_t code) { throw Outcome{type, code}; }

TEST_F(Host, HandlerMayThrowThroughTheRoutines)
{
    Capture page;
    orvel_set_stop_handler(throwing, nullptr);
    const float pole = -3.0f;
    E1PSH("CALLER ", 7);
    EXPECT_THROW(ALNGAM(&pole), Outcome);  // stops two levels further down
    EXPECT_EQ(ERCOM1.level, 2);
    E1POP("CALLER ", 7);
    EXPECT_THROW(routine(4, 8), Outcome);
    EXPECT_EQ(ERCOM1.level, 1);
    EXPECT_EQ(IERCD(), 8);
    EXPECT_EQ(printed_by_another_thread(), warning_7);
}

std::jmp_buf mark;

TEST_F(Host, HandlerAndWriterMayJumpBeforeReset)
{
    set_switches(5, 0, 1);
    const float pole = -3.0f;
    orvel_set_stop_handler([](void*, int32_t, int32_t) { std::longjmp(mark, 1); }, nullptr);
    E1PSH("CALLER ", 7);
    E1USR("ON", 2);
    if (setjmp(mark) == 0) ALNGAM(&pole);
    EXPECT_EQ(ERCOM1.level, 3);
    E1USR("ON", 2);
    orvel_bind_unit(
        6, [](void*, int32_t, const char*, size_t) { std::longjmp(mark, 1); }, nullptr);
    if (setjmp(mark) == 0) routine(3, 7);
    EXPECT_EQ(ERCOM1.level, 4);  // left in the middle, with the print lock
    orvel_reset();
    EXPECT_EQ(ERCOM1.level + ERCOM1.msglen + ERCOM1.ertype[0] + ERCOM4.user[1], 1);
    EXPECT_EQ(ERCOM1.prttab[4], 0);
    EXPECT_EQ(IERCD(), 0);
    EXPECT_EQ(printed_by_another_thread(), warning_7);
}

TEST_F(HostDeathTest, HandlerThatReturnsEndsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto stop = [] {
        orvel_bind_unit(
            6, [](void*, int32_t, const char*, size_t) {}, nullptr);
        orvel_set_stop_handler([](void*, int32_t type, int32_t code) { dprintf(2, "%d %d.", type, code); },
                               nullptr);
        routine(4, 31);
        dprintf(2, "returned");
    };
    EXPECT_EXIT(stop(), ::testing::ExitedWithCode(0), "4 31\\.$");
}

TEST_F(Host, WriterMayThrow)
{
    orvel_bind_unit(
        6, [](void*, int32_t, const char*, size_t) { throw 5; }, nullptr);
    EXPECT_THROW(routine(3, 7), int);  // at the pop
    EXPECT_EQ(ERCOM1.level, 1);
    EXPECT_EQ(outcome(), (Outcome{3, 7}));
    const float pole = -3.0f;
    EXPECT_THROW(ALNGAM(&pole), int);  // at the post, two levels down
    EXPECT_EQ(ERCOM1.level, 1);
    EXPECT_EQ(printed_by_another_thread(), warning_7);
}

// Prints a warning of its own in the middle of the first message.
void nested_writer(void* to, int32_t, const char* text, size_t n)
{
    static bool inside = false;
    auto& page = *static_cast<std::string*>(to);
    page.append(text, n / 2);
    if (!inside) {
        inside = true;
        E1USR("ON", 2);
        const float near_pole = -3.0000002f;
        GAMMA(&near_pole);
        E1USR("OFF", 3);
        inside = false;
    }
    page.append(text + n / 2, n - n / 2);
}

TEST_F(Host, WriterMayCallTheLibrary)
{
    std::string page;
    orvel_bind_unit(6, nested_writer, &page);
    orvel_set_stop_handler(throwing, nullptr);
    routine(3, 7);
    const std::size_t half = std::string(warning_7).size() / 2;
    EXPECT_EQ(page.substr(0, half) + page.substr(page.size() - half), warning_7);
    EXPECT_NE(page.find("WARNING  ERROR 2 from GAMMA."), page.npos);
    EXPECT_EQ(outcome(), (Outcome{3, 7}));  // not what the writer's call left
    EXPECT_THROW(routine(5, 7), Outcome);
}

TEST_F(Host, CriticalSectionOfTheCallerIsNoObstacle)
{
    Capture page;
#pragma omp parallel num_threads(3)
#pragma omp critical
    routine(3, 7);
    EXPECT_EQ(page.take(), std::string(warning_7) + warning_7 + warning_7);
}

TEST_F(Host, ChildOfAForkPrintsWhileAnotherThreadHeldTheLock)
{
    static std::atomic<int> state;  // 1 when the writer is busy, 2 when it may end
    state = 0;
    orvel_bind_unit(
        6,
        [](void*, int32_t, const char*, size_t) {
            state = 1;
            while (state != 2) std::this_thread::yield();
        },
        nullptr);
    std::thread printer(routine, 3, 1);
    while (state != 1) std::this_thread::yield();
    const pid_t child = fork();
    if (child == 0) {
        alarm(30);
        Capture page;
        routine(3, 7);
        const bool right = page.take() == warning_7 && printed_by_another_thread() == warning_7;
        orvel_set_stop_handler([](void*, int32_t, int32_t) { _exit(21); }, nullptr);
        set_switches(4, 0, 1);
        if (right) routine(4, 1);
        _exit(22);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 21);
    state = 2;
    printer.join();
}

TEST_F(Host, LibraryComesAndGoesInARunningProgram)
{
    const std::string copy = "/tmp/orvel_copy_" + std::to_string(getpid()) + ".so";  // not the one linked
    std::filesystem::copy_file(ORVEL_LIBRARY, copy, std::filesystem::copy_options::overwrite_existing);
    std::atomic<int> stage{0};
    std::atomic<decltype(&GAMMA)> gamma{};
    const auto call = [&] {
        const float near_pole = -3.0000002f;
        gamma.load()(&near_pole);
    };
    std::thread runs_on([&] {
        while (stage != 1) std::this_thread::yield();
        call();
        stage = 2;
        while (stage != 3) std::this_thread::yield();  // ends after the library is gone
    });
    for (int round = 0; round < 2; ++round) {
        void* library = dlopen(copy.c_str(), RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library, nullptr) << dlerror();
        const auto bind = reinterpret_cast<decltype(&orvel_bind_unit)>(dlsym(library, "orvel_bind_unit"));
        gamma = reinterpret_cast<decltype(&GAMMA)>(dlsym(library, "GAMMA"));
        ASSERT_NE(bind, &orvel_bind_unit);
        int messages = 0;
        bind(
            6, [](void* count, int32_t, const char*, size_t) { ++*static_cast<int*>(count); }, &messages);
        call();
        std::thread(call).join();
        if (round == 0) {
            stage = 1;
            while (stage != 2) std::this_thread::yield();
        }
        EXPECT_EQ(messages, round == 0 ? 3 : 2);
        EXPECT_EQ(dlclose(library), 0);
    }
    const pid_t child = fork();  // no handler of the library may be left behind
    if (child == 0) _exit(0);
    int status = 1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    stage = 3;
    runs_on.join();
    std::filesystem::remove(copy);
}

}  // namespace
