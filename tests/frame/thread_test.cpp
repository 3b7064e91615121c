// tests/frame/thread_test.cpp - state of each thread, messages printed at once, stops at once
#include <atomic>
#include <barrier>
#include <map>
#include <thread>
#include <vector>

#include "tests/frame/calls.h"

using namespace orvel_test;

namespace {

using Threads = Hosted;

template <class F>
void on_threads(int count, F body)
{
    std::vector<std::thread> team;
    for (int k = 0; k < count; ++k) team.emplace_back(body, k);
    for (std::thread& t : team) t.join();
}

// Posts FATAL code k, with the stop off, from two levels below the caller; the message has six lines.
void complain(int32_t k)
{
    const int32_t one = 1;
    set_switches(4, 1, 0);
    push("OUTER ");
    user("ON");
    push("INNER ");
    E1STI(&one, &k);
    post(4, k, "Thread %(I1).");
    pop("INNER ");
    user("OFF");
    pop("OUTER ");
    post(0, 0, "");
}

std::string block(int32_t k)
{
    char cells[80];
    std::snprintf(cells, sizeof cells, "%6d      %6d\n", 4, k);
    const std::string n = std::to_string(k);
    return "\n *** FATAL    ERROR " + n + " from INNER.  Thread " + n + ".\n" +
           "     Here is a traceback of subprogram calls in reverse order:\n"
           "     Routine name                    Error type  Error code\n"
           "     ------------                    ----------  ----------\n" +
           "     INNER" + std::string(27, ' ') + cells + "     OUTER" + std::string(27, ' ') + cells +
           "     USER                                 0           0\n";
}

TEST_F(Threads, KeepTheirOwnState)
{
    std::barrier all(8);
    on_threads(8, [&](int k) {
        const std::string name = "R" + std::to_string(k);
        int32_t third = 3, unit = 0, up = 1, zero = 0;
        all.arrive_and_wait();
        set_switches(3, k % 2, 0);
        use_unit(100 + k);
        for (int n = 0; n <= k; ++n) (N1RNOF(&up), push(name));
        post(3, k);
        all.arrive_and_wait();
        UMACH(&third, &unit);
        EXPECT_EQ(unit, 100 + k);
        EXPECT_EQ(ERCOM1.prttab[2], k % 2);
        EXPECT_EQ(ERCOM1.level, k + 2);
        EXPECT_EQ(N1RTY(&zero) * 10 + N1RCD(&zero), 30 + k);
        EXPECT_EQ(N1RNOF(&(up = 2)), k + 1);
        EXPECT_EQ(std::string(ERCOM2.rname[k + 1], 2), name);
    });
}

TEST_F(Threads, MessagesDoNotInterleave)
{
    // Takes its time in the middle of a message, and no care.
    std::string text;
    const orvel_writer careless = [](void* to, int32_t, const char* from, size_t n) {
        for (size_t k = 0; k < n; ++k) {
            static_cast<std::string*>(to)->push_back(from[k]);
            if (k % 50 == 0) std::this_thread::yield();
        }
    };
    write_with(careless, &text);
    constexpr int rounds = 10;
    on_threads(12, [](int k) {
        for (int n = 0; n < rounds; ++n) complain(k + 1);
    });
#pragma omp parallel for num_threads(4) schedule(static, 1)
    for (int k = 0; k < 4 * rounds; ++k) complain(30 + k % 4);
    complain(9);  // its lock orders the team before this thread, which the sanitizer cannot see by itself
    write_with(nullptr);

    std::map<int, int> counts, expected = {{30, rounds}, {31, rounds}, {32, rounds}, {33, rounds}};
    for (int k = 1; k <= 12; ++k) expected[k] = rounds + (k == 9);
    for (std::size_t at = 0; at < text.size();) {
        const int k = std::atoi(text.c_str() + std::min(at + 20, text.size()));
        ASSERT_EQ(text.substr(at, block(k).size()), block(k));
        ++counts[k];
        at += block(k).size();
    }
    EXPECT_EQ(counts, expected);
}

TEST_F(Threads, DefaultsReachThreadsThatStartLater)
{
    const auto switches = [](int32_t type) { return 10 * ERCOM1.prttab[type - 1] + ERCOM1.stptab[type - 1]; };
    std::barrier both(2);
    std::thread early([&] {
        E1INIT();
        both.arrive_and_wait();
        both.arrive_and_wait();
        EXPECT_EQ(switches(3), 10);
        EXPECT_EQ(switches(4), 11);
    });
    both.arrive_and_wait();
    EXPECT_EQ(orvel_set_thread_defaults(3, 0, 1), 1);
    EXPECT_EQ(orvel_set_thread_defaults(4, -1, 0), 1);
    for (const auto& [type, print, stop] :
         {std::tuple{6, 0, 0}, {-1, 0, 0}, {0, 3, 0}, {0, 0, 3}, {0, -2, 0}, {0, 0, -2}})
        EXPECT_EQ(orvel_set_thread_defaults(type, print, stop), 0);
    both.arrive_and_wait();
    early.join();
    std::thread([&] {
        E1INIT();
        constexpr int32_t started[] = {0, 0, 1, 10, 11, 1, 10}, classic[] = {0, 0, 10, 11, 11, 10, 11};
        for (int32_t type = 1; type <= 7; ++type) EXPECT_EQ(switches(type), started[type - 1]) << type;
        set_switches(0, 2, 2);
        for (int32_t type = 1; type <= 7; ++type) EXPECT_EQ(switches(type), classic[type - 1]) << type;
    }).join();
    orvel_set_thread_defaults(0, 2, 2);
    std::thread([&] { EXPECT_EQ((E1INIT(), switches(3) + switches(7)), 21); }).join();
    EXPECT_EQ(switches(4), 11);
}

TEST_F(Threads, OneOfTwoStopsEndsTheProcess)
{
    EXPECT_TRUE(in_child(8, [] {
        static std::atomic<bool> returned;
        write_with([](void*, int32_t, const char*, size_t) {});
        std::atexit([] {  // long enough for the other one to do what it must not
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            _exit(returned ? 1 : 8);
        });
        std::barrier both(2);
        on_threads(2, [&](int) {
            const int32_t bad = 13;
            both.arrive_and_wait();
            IMACH(&bad);
            returned = true;
        });
        return false;
    }));
}

}  // namespace
