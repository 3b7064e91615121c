// tests/frame/host_test.cpp - writers, stop handlers, reset, fork, loading and unloading
#include <dlfcn.h>
#include <omp.h>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
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
    const int device = omp_get_default_device();
    orvel_set_stop_handler([](void*, int32_t, int32_t) { std::longjmp(mark, 1); }, nullptr);
    // Many times: a level of printing that was not given back would soon be the deepest one.
    for (int k = 0; k < 20; ++k) {
        orvel_bind_unit(
            6, [](void*, int32_t, const char*, size_t) { std::longjmp(mark, 1); }, nullptr);
        omp_set_default_device(k);  // which printing uses, and gives back
        if (setjmp(mark) == 0) routine(3, 7);
        EXPECT_EQ(ERCOM1.level, 2);
        orvel_reset();
        EXPECT_EQ(omp_get_default_device(), k);
        Capture page;
        routine(3, 7);
        EXPECT_EQ(page.take(), warning_7);
        EXPECT_EQ(omp_get_default_device(), k);
    }
    omp_set_default_device(device);
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
    EXPECT_EXIT(stop(), ::testing::ExitedWithCode(stopped), "4 31\\.$");
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
        E1PRT();  // the message is out already
        E1USR("ON", 2);
        const float near_pole = -3.0000002f;
        GAMMA(&near_pole);
        E1USR("OFF", 3);
        inside = false;
        // It leaves a message, a parameter and records of prompt errors.
        const int32_t one = 1;
        E1STI(&one, &one);
        E1MES(&one, &one, "Left", 4);
        ERCOM1.parlen = 10, ERCOM1.post6 = ERCOM1.post7 = 1;
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

// The child of a fork in a writer still holds the lock: another thread there has to wait.
TEST_F(Host, ChildOfAForkInAWriterKeepsTheLock)
{
    static std::string text;
    static std::thread other;
    static int status;
    text.clear(), status = -1;
    orvel_bind_unit(
        6,
        [](void*, int32_t, const char* from, size_t n) {
            if (!text.empty()) {
                text.append(from, n);
            } else if (const pid_t child = fork(); child != 0) {
                waitpid(child, &status, 0);
            } else {
                alarm(50);
                text.append(from, 1);
                other = std::thread(routine, 3, 7);
                std::this_thread::sleep_for(std::chrono::milliseconds(30));
                text.append(from + 1, n - 1);
            }
        },
        nullptr);
    routine(3, 7);
    if (status == -1) {
        other.join();
        _exit(text == std::string(warning_7) + warning_7 ? 0 : 1);
    }
    EXPECT_EQ(status, 0);
}

// Settings are changed all the time while the program forks.
TEST_F(Host, ChildOfAForkChangesSettings)
{
    std::atomic<bool> enough = false;
    std::thread changes([&] {
        while (!enough) orvel_set_thread_defaults(1, 2, 2);
    });
    for (int k = 0; k < 60; ++k) {
        const pid_t child = fork();
        if (child == 0) {
            alarm(20);
            orvel_set_thread_defaults(1, 2, 2);
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_EQ(status, 0);
    }
    enough = true;
    changes.join();
}

// Another thread is in the exit functions when this one forks; the child can stop by itself.
TEST_F(Host, ChildOfAForkStopsWhileAnotherThreadWasStopping)
{
    static std::atomic<pid_t> busy;
    const pid_t program = fork();
    if (program == 0) {
        alarm(30);
        orvel_set_stop_status(23);
        std::atexit([] {
            busy = getpid();
            while (busy == getpid()) pause();
        });
        set_switches(4, 0, 1);
        std::thread(routine, 4, 1).detach();
        while (busy == 0) std::this_thread::yield();
        const pid_t child = fork();
        if (child == 0) {
            alarm(20);
            set_switches(4, 0, 1);
            routine(4, 2);
        }
        int status = 0;
        waitpid(child, &status, 0);
        _exit(WIFEXITED(status) ? WEXITSTATUS(status) : 1);
    }
    int status = 0;
    waitpid(program, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 23);
}

// The library is called again while the stack is unwound, and after that.
struct CallsOnTheWay {
    ~CallsOnTheWay()
    {
        const float near_pole = -3.0000002f;
        GAMMA(&near_pole);
    }
};

TEST_F(Host, HandlerMayEndItsThread)
{
    static std::atomic<int> stops;
    stops = 0;
    Capture page;
    orvel_set_stop_handler([](void*, int32_t, int32_t) { ++stops, pthread_exit(&stops); }, nullptr);
    pthread_t thread;
    pthread_create(
        &thread, nullptr,
        [](void*) -> void* {
            thread_local CallsOnTheWay at_the_end;
            static_cast<void>(&at_the_end);
            const CallsOnTheWay local;
            const float pole = -3.0f;
            ALNGAM(&pole);  // stops in a routine that it calls
            return nullptr;
        },
        nullptr);
    void* result = nullptr;
    pthread_join(thread, &result);
    EXPECT_EQ(result, &stops);
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
    orvel_set_stop_handler(throwing, nullptr);
    const float one = 1.0f, pole = -3.0f;
    for (int32_t level : {INT32_MAX, INT32_MIN, -1, 0, 50, 51}) {
        for (const float& x : {one, pole}) {
            ERCOM1.level = level;
            EXPECT_THROW(GAMMA(&x), Outcome) << level;
            EXPECT_THROW(ALNGAM(&x), Outcome) << level;
            EXPECT_EQ(ERCOM1.level, level);
        }
        EXPECT_THROW(E1POP("NOBODY ", 7), Outcome) << level;
        EXPECT_NE(one_line(page.take()).find("Push would cause stack level to exceed 50."),
                  std::string::npos);
        orvel_reset();
    }
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
    const std::filesystem::path home = std::filesystem::current_path();
    char folder[] = "/tmp/orvel_loaded_XXXXXX";
    std::filesystem::current_path(mkdtemp(folder));
    const auto descriptors = [] {
        using std::filesystem::directory_iterator;
        return std::distance(directory_iterator("/proc/self/fd"), directory_iterator());
    };
    const auto before = descriptors();
    std::ofstream("fort.9") << "***";  // left over
    std::filesystem::last_write_time("fort.9",
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
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
        int32_t third = -3, file = 9;
        reinterpret_cast<decltype(&UMACH)>(dlsym(library, "UMACH"))(&third, &file);
        call();
        EXPECT_EQ(dlclose(library), 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(12));  // a tick of the coarsest clocks
    }
    EXPECT_EQ(descriptors(), before);
    std::ifstream file("fort.9");
    EXPECT_EQ(std::count(std::istreambuf_iterator<char>(file), {}, '*'), 18);  // two messages of three lines
    std::filesystem::current_path(home);
    std::filesystem::remove_all(folder);
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
