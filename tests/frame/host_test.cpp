// tests/frame/host_test.cpp - writers, stop handlers, reset, fork, loading and unloading
#include <dlfcn.h>
#include <omp.h>
#include <pthread.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csetjmp>
#include <thread>

#include "tests/frame/calls.h"

using namespace orvel_test;
using namespace std::chrono_literals;

namespace {

constexpr float pole = -3.0f, near_pole = -3.0000002f;
const std::string warning_7 = "\n *** WARNING  ERROR 7 from ROUTINE.  Text.\n";

// What a thread of its own prints: it gets through when nobody keeps the print lock.
std::string printed_by_another_thread()
{
    Capture page;
    std::thread(routine, 3, 7).join();
    return page.take();
}

void wait_for(const std::atomic<int>& state, int value)
{
    while (state != value) std::this_thread::yield();
}

using Host = Hosted;
using HostDeathTest = Hosted;

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
    EXPECT_EQ(second, "6:" + warning_7);
    for (int32_t unit = 0; unit <= 64; ++unit) write_with(nullptr, nullptr, unit);
}

TEST_F(Host, HandlerAndWriterMayThrowThroughTheRoutines)
{
    on_stop(throwing);
    {
        Capture page;
        push("CALLER ");
        EXPECT_THROW(ALNGAM(&pole), Outcome);  // stops two levels further down
        EXPECT_EQ(ERCOM1.level, 2);
        pop("CALLER ");
        EXPECT_EQ(stop_of([] { routine(4, 8); }), (Outcome{4, 8}));
        EXPECT_EQ(ERCOM1.level, 1);
        EXPECT_EQ(IERCD(), 8);
    }
    write_with([](void*, int32_t, const char*, size_t) { throw 5; });
    EXPECT_THROW(routine(3, 7), int);  // at the pop
    EXPECT_EQ(ERCOM1.level, 1);
    EXPECT_EQ(outcome(), (Outcome{3, 7}));
    EXPECT_THROW(ALNGAM(&pole), int);  // at the post, two levels down
    EXPECT_EQ(ERCOM1.level, 1);
    EXPECT_EQ(printed_by_another_thread(), warning_7);
}

std::jmp_buf mark;

TEST_F(Host, HandlerAndWriterMayJumpBeforeReset)
{
    const orvel_writer jumping = [](void*, int32_t, const char*, size_t) { std::longjmp(mark, 1); };
    set_switches(5, 0, 1);
    const int device = omp_get_default_device();
    // Many times: a level of printing that was not given back would soon be the deepest one.
    for (int k = 0; k < 20; ++k) {
        write_with(jumping);
        omp_set_default_device(k);  // which printing uses, and gives back
        if (setjmp(mark) == 0) routine(3, 7);
        EXPECT_EQ(ERCOM1.level, 2);
        orvel_reset();
        EXPECT_EQ(omp_get_default_device(), k);
        int may_be_cancelled = -1;
        pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, &may_be_cancelled);
        EXPECT_EQ(may_be_cancelled, PTHREAD_CANCEL_ENABLE);
        Capture page;
        routine(3, 7);
        EXPECT_EQ(page.take(), warning_7);
        EXPECT_EQ(omp_get_default_device(), k);
    }
    omp_set_default_device(device);
    on_stop([](void*, int32_t, int32_t) { std::longjmp(mark, 1); });
    push("CALLER ");
    user("ON");
    if (setjmp(mark) == 0) ALNGAM(&pole);
    EXPECT_EQ(ERCOM1.level, 3);
    user("ON");
    write_with(jumping);
    if (setjmp(mark) == 0) routine(3, 7);
    EXPECT_EQ(ERCOM1.level, 4);  // left in the middle, with the print lock
    orvel_reset();
    EXPECT_EQ(ERCOM1.prttab[4], 0);
    EXPECT_EQ(IERCD(), 0);
    EXPECT_EQ(printed_by_another_thread(), warning_7);
}

TEST_F(HostDeathTest, HandlerThatReturnsEndsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto stop = [] {
        write_with([](void*, int32_t, const char*, size_t) {});
        on_stop([](void*, int32_t type, int32_t code) { dprintf(2, "%d %d.", type, code); });
        routine(4, 31);
        dprintf(2, "returned");
    };
    EXPECT_EXIT(stop(), ::testing::ExitedWithCode(stopped), "4 31\\.$");
}

// Prints a warning of its own in the middle of the first message.
void nested_writer(void* to, int32_t, const char* text, size_t n)
{
    static bool inside = false;
    auto& page = *static_cast<std::string*>(to);
    page.append(text, n / 2);
    if (!inside) {
        inside = true;
        E1PRT();  // the message is out already
        user("ON");
        GAMMA(&near_pole);
        user("OFF");
        inside = false;
        // It leaves a message, a parameter and records of prompt errors.
        const int32_t one = 1;
        E1STI(&one, &one);
        post(1, 1, "Left");
        ERCOM1.parlen = 10, ERCOM1.post6 = ERCOM1.post7 = 1;
    }
    page.append(text + n / 2, n - n / 2);
}

TEST_F(Host, WriterMayCallTheLibrary)
{
    std::string page;
    write_with(nested_writer, &page);
    on_stop(throwing);
    routine(3, 7);
    const std::size_t half = warning_7.size() / 2;
    EXPECT_EQ(page.substr(0, half) + page.substr(page.size() - half), warning_7);
    EXPECT_NE(page.find("WARNING  ERROR 2 from GAMMA."), page.npos);
    EXPECT_EQ(page.find("ROUTINE."), page.rfind("ROUTINE."));
    EXPECT_EQ(outcome(), (Outcome{3, 7}));  // not what the writer's call left
    EXPECT_EQ((std::array{ERCOM1.msglen, ERCOM1.parlen, ERCOM1.post6, ERCOM1.post7}),
              (std::array{0, 1, 0, 0}));
    EXPECT_THROW(routine(5, 7), Outcome);
}

TEST_F(Host, CriticalSectionOfTheCallerIsNoObstacle)
{
    Capture page;
#pragma omp parallel num_threads(3)
#pragma omp critical
    routine(3, 7);
    EXPECT_EQ(page.take(), warning_7 + warning_7 + warning_7);
}

TEST_F(Host, ChildOfAForkPrintsWhileAnotherThreadHeldTheLock)
{
    static std::atomic<int> state;  // 1 when the writer is busy, 2 when it may end
    state = 0;
    write_with([](void*, int32_t, const char*, size_t) {
        state = 1;
        wait_for(state, 2);
    });
    std::thread printer(routine, 3, 1);
    wait_for(state, 1);
    EXPECT_TRUE(in_child(21, [] {
        on_stop([](void*, int32_t, int32_t) { _exit(21); });
        if (printed_by_another_thread() == warning_7) routine(4, 1);
        return false;
    }));
    state = 2;
    printer.join();
}

// The child of a fork in a writer still holds the lock: another thread there has to wait.
TEST_F(Host, ChildOfAForkInAWriterKeepsTheLock)
{
    static std::string text;
    text.clear();
    write_with([](void*, int32_t, const char* from, size_t n) {
        text.append(from, n);
        if (text.size() > n) return;
        EXPECT_TRUE(in_child([=] {
            std::thread other(routine, 3, 7);
            std::this_thread::sleep_for(30ms);
            const bool alone = text == warning_7;
            orvel_reset();  // gives the lock up
            other.join();
            return alone && text == warning_7 + warning_7;
        }));
    });
    routine(3, 7);
}

// Settings are changed all the time while the program forks.
TEST_F(Host, ChildOfAForkChangesSettings)
{
    std::atomic<bool> enough = false;
    std::thread changes([&] {
        while (!enough) orvel_set_thread_defaults(1, 2, 2);
    });
    bool all = true;
    for (int k = 0; k < 60 && all; ++k)
        all = in_child([] { return orvel_set_thread_defaults(1, 2, 2) == 1; });
    EXPECT_TRUE(all);
    enough = true;
    changes.join();
}

// Another thread is in the exit functions when this one forks; the child can stop by itself.
TEST_F(Host, ChildOfAForkStopsWhileAnotherThreadWasStopping)
{
    static std::atomic<pid_t> busy;
    EXPECT_TRUE(in_child([] {
        orvel_set_stop_status(23);
        std::atexit([] {
            busy = getpid();
            while (busy == getpid()) pause();
        });
        std::thread(routine, 4, 1).detach();
        while (busy == 0) std::this_thread::yield();
        return bool{in_child(23, [] { return routine(4, 2), false; })};
    }));
}

// The library is called again while the stack is unwound, and after that.
struct CallsOnTheWay {
    ~CallsOnTheWay() { GAMMA(&near_pole); }
};

TEST_F(Host, HandlerMayEndItsThread)
{
    static std::atomic<int> stops;
    stops = 0;
    Capture page;
    on_stop([](void*, int32_t, int32_t) { ++stops, pthread_exit(nullptr); });
    std::thread([] {
        thread_local CallsOnTheWay at_the_end;
        static_cast<void>(&at_the_end);
        const CallsOnTheWay local;
        ALNGAM(&pole);  // stops in a routine that it calls
        stops = 99;
    }).join();
    EXPECT_EQ(stops, 1);
    const std::string text = page.take();
    EXPECT_EQ(text.substr(0, 23), "\n *** TERMINAL ERROR 6 ");
    const std::size_t on_the_way = text.find("\n *** WARNING  ERROR 2 from GAMMA.");
    ASSERT_NE(on_the_way, text.npos);
    const std::string half = text.substr(on_the_way, (text.size() - on_the_way) / 2);
    EXPECT_EQ(text.substr(on_the_way), half + half);
    EXPECT_EQ(printed_by_another_thread(), warning_7);
}

TEST_F(Host, LevelOutOfRangeStops)
{
    Capture page;
    on_stop(throwing);
    const float one = 1.0f;
    for (int32_t level : {INT32_MAX, INT32_MIN, -1, 0, 50, 51}) {
        for (const float& x : {one, pole}) {
            ERCOM1.level = level;
            EXPECT_THROW(GAMMA(&x), Outcome) << level;
            EXPECT_THROW(ALNGAM(&x), Outcome) << level;
            EXPECT_EQ(ERCOM1.level, level);
        }
        EXPECT_THROW(pop("NOBODY "), Outcome) << level;
        EXPECT_NE(one_line(page.take()).find("Push would cause stack level to exceed 50."),
                  std::string::npos);
        orvel_reset();
    }
}

TEST_F(Host, LibraryComesAndGoesInARunningProgram)
{
    const Folder folder;
    const std::string copy = std::string(folder.name) + "/copy.so";  // not the one linked
    std::filesystem::copy_file(ORVEL_LIBRARY, copy);
    std::atomic<int> stage{0};
    std::atomic<decltype(&GAMMA)> gamma{};
    const auto call = [&] { gamma.load()(&near_pole); };
    std::thread runs_on([&] {
        wait_for(stage, 1);
        call();
        stage = 2;
        wait_for(stage, 3);  // ends after the library is gone
    });
    const auto before = entries("/proc/self/fd");
    leave("fort.9");
    for (int round = 0; round < 2; ++round) {
        void* library = dlopen(copy.c_str(), RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library, nullptr) << dlerror();
        const auto bind = reinterpret_cast<decltype(&orvel_bind_unit)>(dlsym(library, "orvel_bind_unit"));
        gamma = reinterpret_cast<decltype(&GAMMA)>(dlsym(library, "GAMMA"));
        ASSERT_NE(bind, &orvel_bind_unit);
        int messages = 0;
        const orvel_writer count = [](void* to, int32_t, const char*, size_t) { ++*static_cast<int*>(to); };
        bind(6, count, &messages);
        call();
        std::thread(call).join();
        if (round == 0) {
            stage = 1;
            wait_for(stage, 2);
        }
        EXPECT_EQ(messages, round == 0 ? 3 : 2);
        int32_t third = -3, file = 9;
        reinterpret_cast<decltype(&UMACH)>(dlsym(library, "UMACH"))(&third, &file);
        call();
        EXPECT_EQ(dlclose(library), 0);
        std::this_thread::sleep_for(12ms);  // a tick of the coarsest clocks
    }
    EXPECT_EQ(entries("/proc/self/fd"), before);
    const std::string printed = content("fort.9");
    EXPECT_EQ(std::count(printed.begin(), printed.end(), '*'), 18);  // two messages of three lines
    EXPECT_EQ(printed.find("left over"), printed.npos);
    EXPECT_TRUE(in_child([] { return true; }));  // no handler of the library may be left behind
    stage = 3;
    runs_on.join();
}

}  // namespace
