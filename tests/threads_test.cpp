// tests/threads_test.cpp - every routine on many threads at once, threads that come and go, forks meanwhile
#include <gtest/gtest.h>
#include <malloc.h>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <barrier>
#include <cstdio>
#include <fstream>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "orvel/orvel.h"
#include "tests/frame/process.h"
#include "tests/interface/calls.h"

namespace {

using namespace orvel_test;

#if defined __SANITIZE_THREAD__
constexpr int team_size = 8, rounds = 4, messages = 200, forks = 0;
#elif defined __SANITIZE_ADDRESS__
constexpr int team_size = 16, rounds = 4, messages = 200, forks = 100;
#else
constexpr int team_size = 64, rounds = 8, messages = 1000, forks = 300;
#endif

template <class Body>
void on_team(int count, Body body)
{
    std::vector<std::thread> team;
    for (int k = 0; k < count; ++k) team.emplace_back(body, k);
    for (std::thread& t : team) t.join();
}

// Nothing is printed and nothing stops.
class EveryRoutine : public testing::Test {
protected:
    EveryRoutine()
    {
        orvel_set_thread_defaults(0, -1, 0);
        orvel_bind_unit(
            6, [](void*, int32_t, const char*, size_t) {}, nullptr);
    }
    ~EveryRoutine() override
    {
        orvel_bind_unit(6, nullptr, nullptr);
        orvel_set_thread_defaults(0, 2, 2);
    }
};

// Digests of the results of all routines, in order, on a thread that has not called the library before.
std::vector<uint64_t> digests()
{
    constexpr std::string_view clocks[] = {"TDATE", "TIMDY", "CPSEC", "R1CLK"};
    const int32_t seed = 123457;
    RNSET(&seed);
    std::vector<uint64_t> all;
    for (int round = 0; round < rounds; ++round)
        for (const RoutineEntry& routine : routines) {
            if (!is_callable(routine) || std::count(std::begin(clocks), std::end(clocks), routine.name) != 0)
                continue;
            OrdinaryCall call(routine, static_cast<unsigned>(round));
            call.run();
            uint64_t digest = 14695981039346656037u;
            call.visit_results([&](const auto& bytes) {
                for (const unsigned char byte : bytes) digest = (digest ^ byte) * 1099511628211u;
            });
            all.push_back(digest);
        }
    return all;
}

void post_one(int32_t code)
{
    const int32_t none = 0, month = code, year = 2000;
    NDAYS(&none, &month, &year);
}

TEST_F(EveryRoutine, GivesEachOfManyThreadsTheBitsOfOne)
{
    std::vector<uint64_t> alone;
    on_team(1, [&](int) { alone = digests(); });
    std::barrier all(team_size);
    std::atomic<int> others = 0;
    on_team(team_size, [&](int) {
        all.arrive_and_wait();
        others += digests() != alone;
    });
    EXPECT_EQ(others, 0);
    EXPECT_GT(alone.size(), 500u);
}

TEST_F(EveryRoutine, MessagesOfAllThreadsAreWholeInAFile)
{
    const Folder folder;
    on_team(team_size, [](int k) {
        int32_t unit = 99;
        const int32_t set = -3;
        UMACH(&set, &unit);
        for (int32_t m = 0; m < messages; ++m) post_one(13 + k * messages + m);
    });
    std::ifstream file("fort.99");
    std::map<std::string, int> lines;
    for (std::string line; std::getline(file, line);) ++lines[line];
    // Each message has its own first line, and they share the others: a blank one, and one of the day.
    EXPECT_EQ(lines[""], team_size * messages * 2);
    int months = 0;
    for (const auto& [line, count] : lines)
        if (line.find("MONTH = ") != std::string::npos) months += count;
    EXPECT_EQ(months, team_size * messages);
}

TEST_F(EveryRoutine, ForksMeanwhileEnd)
{
    std::atomic<bool> is_over = false;
    orvel_set_stop_handler([](void*, int32_t type, int32_t) { throw type; }, nullptr);
    std::thread others[] = {std::thread([&] {
                                while (!is_over) post_one(0);
                            }),
                            std::thread([&] {
                                const int32_t all = 0, keep = -1, on = 1;
                                ERSET(&all, &keep, &on);
                                while (!is_over) EXPECT_THROW(post_one(0), int32_t);
                            }),
                            std::thread([&] {
                                while (!is_over) std::fflush(nullptr);
                            })};
    int bad = 0;
    for (int k = 0; k < forks; ++k) {
        const pid_t child = fork();
        if (child == 0) {
            post_one(0);
            const int32_t above = 1;
            _exit(N1RTY(&above) == 5 ? 0 : 1);
        }
        int status = -1;
        waitpid(child, &status, 0);
        bad += status != 0;
    }
    is_over = true;
    for (std::thread& t : others) t.join();
    orvel_set_stop_handler(nullptr, nullptr);
    EXPECT_EQ(bad, 0);
}

#if !defined __SANITIZE_THREAD__ && !defined __SANITIZE_ADDRESS__
// What a thread has, goes with it. Sanitizers keep more than that.
TEST_F(EveryRoutine, ShortThreadsLeaveNothing)
{
    const auto resident = [] {
        std::ifstream file("/proc/self/statm");
        long all = 0, pages = 0;
        file >> all >> pages;
        return pages;
    };
    constexpr int short_threads = 20000;
    const auto come_and_go = [](int count) {
        for (int k = 0; k < count; ++k)
            std::thread([] {
                const int32_t n = 12;
                double r[12];
                DRNUN(&n, r);
                post_one(0);
            }).join();
    };
    come_and_go(short_threads / 10);
    const long before = resident();
    const std::size_t in_use = mallinfo2().uordblks;
    come_and_go(short_threads);
    EXPECT_LE(mallinfo2().uordblks, in_use + 4096);
    EXPECT_LE(resident(), before + 512);  // 2 MB: nothing that grows with the number of threads
}

void* on_stack_of(std::size_t bytes, void* (*run)(void*), void* given)
{
    pthread_attr_t attributes;
    pthread_t thread;
    void* result = nullptr;
    pthread_attr_init(&attributes);
    EXPECT_EQ(pthread_attr_setstacksize(&attributes, bytes), 0);
    EXPECT_EQ(pthread_create(&thread, &attributes, run, given), 0);
    pthread_join(thread, &result);
    pthread_attr_destroy(&attributes);
    return result;
}

// 64 KB beside what the thread-local storage of all libraries takes of the stack.
TEST_F(EveryRoutine, RunsOnAStackOf64KB)
{
    const auto taken = [](void*) -> void* {
        pthread_attr_t attributes;
        void* lowest = nullptr;
        std::size_t size = 0;
        pthread_getattr_np(pthread_self(), &attributes);
        pthread_attr_getstack(&attributes, &lowest, &size);
        pthread_attr_destroy(&attributes);
        return reinterpret_cast<void*>(static_cast<char*>(lowest) + size -
                                       static_cast<char*>(__builtin_frame_address(0)));
    };
    const auto run = [](void* call) -> void* {
        static_cast<OrdinaryCall*>(call)->run();
        return nullptr;
    };
    const auto beside = reinterpret_cast<std::size_t>(on_stack_of(1 << 20, taken, nullptr));
    for (const RoutineEntry& routine : routines) {
        if (!is_callable(routine)) continue;
        OrdinaryCall call(routine, 1);
        on_stack_of((64 << 10) + (beside + 4095) / 4096 * 4096, run, &call);
    }
}
#endif

}  // namespace
