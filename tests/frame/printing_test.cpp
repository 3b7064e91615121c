// tests/frame/printing_test.cpp - the print lock among writers, streams and threads; the stack that printing
// takes
#include <fcntl.h>
#include <omp.h>
#include <pthread.h>
#include <signal.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <mutex>
#include <thread>

#include "tests/frame/calls.h"

namespace {

using namespace orvel_test;
using std::string;
using namespace std::chrono_literals;

// Prints when it posts, whoever the caller is.
void print(int32_t code)
{
    ERCOM1.trctab[5] = 0;
    routine(6, code);
}

string message(int32_t code)
{
    return "\n *** WARNING  ERROR " + std::to_string(code) + " from ROUTINE.  Text.\n";
}

int count(const string& text, const string& part)
{
    int n = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != text.npos; at += part.size()) ++n;
    return n;
}

void wait_for(const std::atomic<bool>& event)
{
    while (!event) std::this_thread::yield();
}

using Printing = Hosted;

TEST_F(Printing, NobodyIsInAWriterThatWasReplaced)
{
    static std::atomic<bool> inside, go_on, given_back;
    const orvel_writer slow = [](void*, int32_t, const char*, size_t) {
        inside = true;
        wait_for(go_on);
        write_with(nullptr);  // a writer itself need not wait for its end
        inside = false;
    };
    for (const orvel_writer next : {orvel_writer{}, slow}) {  // the other context is another writer
        inside = go_on = given_back = false;
        write_with(slow);
        std::thread prints(print, 1);
        wait_for(inside);
        std::thread binds([=] {
            write_with(next, &inside);
            given_back = true;
            EXPECT_FALSE(inside);
        });
        std::this_thread::sleep_for(50ms);
        EXPECT_FALSE(given_back);
        go_on = true;
        binds.join();
        prints.join();
    }
}

// Opens a parallel region at the first message, whose threads print; one of them does the same again.
struct Nested {
    std::atomic<int> depth = 0;
    std::atomic<int> at_once = 0;
    string text;

    static void write(void* self, int32_t, const char* text, size_t n)
    {
        auto& me = *static_cast<Nested*>(self);
        const int depth = me.depth;
        if (depth < 2) {
            me.depth = depth + 1;
            omp_set_max_active_levels(3);
#pragma omp parallel num_threads(3)
            {
                print(10 * (depth + 1) + omp_get_thread_num());
#pragma omp barrier
                print(10 * (depth + 1) + omp_get_thread_num());
            }
            return me.append(text, n);
        }
        EXPECT_EQ(++me.at_once, 1);
        std::this_thread::yield();
        me.append(text, n);
        --me.at_once;
    }

    // A sanitizer does not see the order that the end of a region makes.
    std::mutex mutex;
    void append(const char* more, size_t n)
    {
        const std::lock_guard lock(mutex);
        text.append(more, n);
    }
};

TEST_F(Printing, WriterMayPrintFromAParallelRegion)
{
    EXPECT_TRUE(in_child([] {
        const int device = omp_get_default_device();
        Nested nested;
        write_with(Nested::write, &nested);
        std::thread other(print, 7);  // of no region: waits for its turn
        print(1);
        other.join();
        const std::lock_guard lock(nested.mutex);
        bool right = count(nested.text, message(1)) == 1 && count(nested.text, message(7)) == 1;
        for (int32_t k : {10, 11, 12, 20, 21, 22}) right = right && count(nested.text, message(k)) == 2;
        return right && count(nested.text, "\n") == 2 * 14 && omp_get_default_device() == device;
    }));
}

// Every message makes another one: the last of them goes to standard error, and that is the end.
TEST_F(Printing, WritersThatAlwaysPrintComeToAnEnd)
{
    static int calls;
    calls = 1;
    write_with([](void*, int32_t, const char*, size_t) {
        omp_set_default_device(0);
        print(++calls);
    });
    testing::internal::CaptureStderr();
    print(calls);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), message(calls));
    EXPECT_LT(calls, 20);
    EXPECT_EQ(ERCOM1.level, 1);
}

// One thread holds the lock of the stream and posts, the other prints.
TEST_F(Printing, LockOfTheStreamMayBeHeld)
{
    const Folder folder;
    constexpr int rounds = 300;
    for (const bool in_memory : {false, true})
        EXPECT_TRUE(in_child([=] {
            char* text = nullptr;
            size_t size = 0;
            stdout = in_memory ? open_memstream(&text, &size) : std::fopen("output", "w");
            std::thread other([] {
                for (int k = 0; k < rounds; ++k) print(1);
            });
            for (int k = 0; k < rounds; ++k) {
                flockfile(stdout);
                std::fputs("before", stdout);
                std::this_thread::yield();
                print(2);
                funlockfile(stdout);
            }
            other.join();
            const string all = in_memory ? string(text, size) : content("output");
            // Between the flush of one's own text and the message the other may print.
            return count(all, message(1)) == rounds && count(all, message(2)) == rounds &&
                   count(all, "before" + (in_memory ? message(2) : "")) == rounds;
        }));
}

// The same below a writer: what the other thread has is not waited for.
TEST_F(Printing, WriterDoesNotWaitForTheStream)
{
    EXPECT_TRUE(in_child([] {
        static std::atomic<bool> inside, held;
        dup2(open("/dev/null", O_WRONLY), 1);
        const orvel_writer prints_elsewhere = [](void*, int32_t, const char*, size_t) {
            inside = true;
            wait_for(held);
            std::this_thread::sleep_for(20ms);
            use_unit(6);
            print(2);
        };
        write_with(prints_elsewhere, nullptr, 9);
        std::thread holder([] {
            wait_for(inside);
            flockfile(stdout);
            held = true;
            print(3);
            funlockfile(stdout);
        });
        use_unit(9);
        print(1);
        holder.join();
        return true;
    }));
}

// A pipe that is full, whether it can be waited for or not, with signals all the time.
TEST_F(Printing, SlowReaderGetsTheWholeMessage)
{
    for (const int how : {0, O_NONBLOCK})
        EXPECT_TRUE(in_child([=] {
            int ends[2];
            if (pipe(ends) != 0) return false;
            const string before(static_cast<std::size_t>(fcntl(ends[1], F_GETPIPE_SZ)), '-');
            if (::write(ends[1], before.data(), before.size()) < 0) return false;
            dup2(ends[1], 1);
            close(ends[1]);
            fcntl(1, F_SETFL, O_WRONLY | how);
            struct sigaction interrupt {};
            interrupt.sa_handler = [](int) {};
            sigaction(SIGUSR1, &interrupt, nullptr);
            string text;
            std::thread reader([&, printer = pthread_self()] {
                for (int k = 0; k < 20; ++k) {
                    std::this_thread::sleep_for(1ms);
                    pthread_kill(printer, SIGUSR1);
                }
                char part[4096];
                for (ssize_t n; (n = read(ends[0], part, sizeof part)) > 0;)
                    text.append(part, static_cast<std::size_t>(n));
            });
            print(1);
            close(1);
            reader.join();
            return text == before + message(1);
        }));
}

// A handler that interrupts a message prints one of its own, which is another page.
TEST_F(Printing, SignalHandlerMayPrint)
{
    EXPECT_TRUE(in_child([] {
        int ends[2];
        if (pipe(ends) != 0) return false;
        close(ends[0]);
        dup2(ends[1], 1);
        static char printed[200];
        const orvel_writer keep = [](void*, int32_t, const char* text, size_t n) {
            std::memcpy(printed, text, n);
        };
        write_with(keep, nullptr, 9);
        use_unit(9), print(2), use_unit(6);  // what OpenMP allocates for a thread's first writer is there
        std::memset(printed, 0, sizeof printed);
        signal(SIGPIPE, [](int) { use_unit(9), print(2); });
        print(1);
        return printed == message(2);
    }));
}

TEST_F(Printing, StopInAWriterGivesTheLockUp)
{
    EXPECT_TRUE(in_child(5, [] {
        static const int32_t bad = 13;
        orvel_set_stop_status(5);
        std::atexit([] {
            write_with(nullptr);
            std::thread(print, 1).join();
            static int stops;
            if (++stops == 1) IMACH(&bad);  // once more, by the thread that is stopping
        });
        write_with([](void*, int32_t, const char*, size_t) {
            static int calls;
            if (++calls == 1) IMACH(&bad);
        });
        dup2(open("/dev/null", O_WRONLY), 1);
        print(1);
        return false;
    }));
}

TEST_F(Printing, CancelledThreadEndsItsMessage)
{
    bool cancelled = true;
    testing::internal::CaptureStdout();
    std::thread([&] {
        pthread_cancel(pthread_self());
        print(1);
        print(2);
        pthread_testcancel();
        cancelled = false;
    }).join();
    print(3);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), message(1) + message(2) + message(3));
    EXPECT_TRUE(cancelled);
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// The longest message with the longest traceback, to a stream and to a file.
void print_much()
{
    const int32_t one = 1;
    const double number = 1e300 / 3;
    set_switches(0, 1, 0);
    for (int k = 0; k < 40; ++k) push("ROUTINE ");
    E1STD(&one, &number);
    const string text = "%(D1)" + string(500, 'x') + "%/%/ %/" + string(400, ' ');
    for (int32_t type : {3, 5}) post(type, 1, text);
    post(0, 0, "");
    for (int k = 0; k < 40; ++k) pop("ROUTINE ");
}

[[gnu::noinline]] std::size_t stack_used()
{
    constexpr std::size_t room = 64 * 1024, unused = 0x5A;
    print_much();  // symbols are looked up at the first call, on the same stack
    auto* const low = static_cast<unsigned char*>(__builtin_frame_address(0)) - room;
    volatile unsigned char* p = low;
    for (std::size_t k = 0; k < room - 512; ++k) p[k] = unused;
    print_much();
    std::size_t k = 0;
    while (k < room - 512 && p[k] == unused) ++k;
    return room - k;
}

TEST_F(Printing, TakesFourKilobytesOfStack)
{
    testing::internal::CaptureStdout();
    std::size_t used = 0;
    std::thread([&] { used = stack_used(); }).join();
    EXPECT_GT(testing::internal::GetCapturedStdout().size(), 2 * 4500u);
    EXPECT_LE(used, 4096u);
    EXPECT_GT(used, 512u);
    RecordProperty("bytes", static_cast<int>(used));
}
#endif

}  // namespace
