// tests/frame/printing_test.cpp - the print lock among writers, streams and threads; the stack that printing
// takes
#include <fcntl.h>
#include <omp.h>
#include <pthread.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <barrier>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <thread>
#include <vector>

#include "tests/support.h"

namespace {

using namespace orvel_test;
using std::string;
using namespace std::chrono_literals;

// Prints when it posts, whoever the caller is.
void routine(int32_t code)
{
    const int32_t prompt_warning = 6;
    E1PSH("ROUTINE ", 8);
    ERCOM1.trctab[prompt_warning - 1] = 0;
    E1MES(&prompt_warning, &code, "Text.", 5);
    E1POP("ROUTINE ", 8);
}

string message(int32_t code)
{
    return "\n *** WARNING  ERROR " + std::to_string(code) + " from ROUTINE.  Text.\n";
}

std::size_t count(const string& text, const string& part)
{
    std::size_t n = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != text.npos; at += part.size()) ++n;
    return n;
}

class Printing : public Quiet {
protected:
    ~Printing() override { orvel_bind_unit(6, nullptr, nullptr); }

    // Exit status of a child that does this; a hang ends it.
    template <class F>
    static int status_of(F body)
    {
        std::fflush(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            alarm(60);
            body();
            _exit(99);
        }
        int status = -1;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

TEST_F(Printing, NobodyIsInAWriterThatWasReplaced)
{
    static std::atomic<int> inside;
    static std::atomic<bool> go_on, given_back;
    const orvel_writer slow = [](void*, int32_t, const char*, size_t) {
        ++inside;
        while (!go_on) std::this_thread::yield();
        orvel_bind_unit(6, nullptr, nullptr);  // a writer itself need not wait for its end
        --inside;
    };
    for (const orvel_writer next : {orvel_writer{}, slow}) {  // the other context is another writer
        inside = 0, go_on = given_back = false;
        orvel_bind_unit(6, slow, nullptr);
        std::thread prints(routine, 1);
        while (inside == 0) std::this_thread::yield();
        std::thread binds([=] {
            orvel_bind_unit(6, next, &inside);
            given_back = true;
            EXPECT_EQ(inside, 0);
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
                routine(10 * (depth + 1) + omp_get_thread_num());
#pragma omp barrier
                routine(10 * (depth + 1) + omp_get_thread_num());
            }
        } else {
            EXPECT_EQ(++me.at_once, 1);
            std::this_thread::yield();
            me.append(text, n);
            --me.at_once;
            return;
        }
        me.append(text, n);
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
    EXPECT_EQ(status_of([] {
                  const int device = omp_get_default_device();
                  Nested nested;
                  orvel_bind_unit(6, Nested::write, &nested);
                  std::thread other([] { routine(7); });  // of no region: waits for its turn
                  routine(1);
                  other.join();
                  const std::lock_guard lock(nested.mutex);
                  bool right = count(nested.text, message(1)) == 1 && count(nested.text, message(7)) == 1;
                  for (int32_t k : {10, 11, 12, 20, 21, 22})
                      right = right && count(nested.text, message(k)) == 2;
                  right = right && count(nested.text, "\n") == 2 * 14;
                  _exit(right && omp_get_default_device() == device ? 0 : 1);
              }),
              0);
}

// Every message makes another one: the last of them goes to standard error, and that is the end.
TEST_F(Printing, WritersThatAlwaysPrintComeToAnEnd)
{
    static int calls;
    calls = 1;
    orvel_bind_unit(
        6,
        [](void*, int32_t, const char*, size_t) {
            omp_set_default_device(0);
            routine(++calls);
        },
        nullptr);
    testing::internal::CaptureStderr();
    routine(calls);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), message(calls));
    EXPECT_LT(calls, 20);
    EXPECT_EQ(ERCOM1.level, 1);
}

// One thread holds the lock of the stream and posts, the other prints.
TEST_F(Printing, LockOfTheStreamMayBeHeld)
{
    constexpr int rounds = 300;
    for (const bool in_memory : {false, true})
        EXPECT_EQ(
            status_of([=] {
                char* text = nullptr;
                size_t size = 0;
                std::FILE* const file = std::tmpfile();
                stdout = in_memory ? open_memstream(&text, &size) : file;
                std::thread other([] {
                    for (int k = 0; k < rounds; ++k) routine(1);
                });
                for (int k = 0; k < rounds; ++k) {
                    flockfile(stdout);
                    std::fputs("before", stdout);
                    std::this_thread::yield();
                    routine(2);
                    funlockfile(stdout);
                }
                other.join();
                string all;
                if (in_memory) {
                    all = string(text, size);
                } else {
                    all.resize(1 << 20);
                    all.resize(static_cast<std::size_t>(pread(fileno(file), all.data(), all.size(), 0)));
                }
                // Between the flush of one's own text and the message the other may print.
                const bool right = count(all, message(1)) == rounds && count(all, message(2)) == rounds &&
                                   count(all, "before") == rounds &&
                                   (!in_memory || count(all, "before" + message(2)) == rounds);
                _exit(right ? 0 : 1);
            }),
            0);
}

// The same below a writer: what the other thread has is not waited for.
TEST_F(Printing, WriterDoesNotWaitForTheStream)
{
    EXPECT_EQ(status_of([] {
                  static std::atomic<bool> inside, held;
                  dup2(open("/dev/null", O_WRONLY), 1);
                  orvel_bind_unit(
                      9,
                      [](void*, int32_t, const char*, size_t) {
                          inside = true;
                          while (!held) std::this_thread::yield();
                          std::this_thread::sleep_for(20ms);
                          int32_t third = -3, unit = 6;
                          UMACH(&third, &unit);
                          routine(2);
                      },
                      nullptr);
                  std::thread holder([] {
                      while (!inside) std::this_thread::yield();
                      flockfile(stdout);
                      held = true;
                      routine(3);
                      funlockfile(stdout);
                  });
                  int32_t third = -3, unit = 9;
                  UMACH(&third, &unit);
                  routine(1);
                  holder.join();
                  _exit(0);
              }),
              0);
}

// A pipe that is full, whether it can be waited for or not, with signals all the time.
TEST_F(Printing, SlowReaderGetsTheWholeMessage)
{
    for (const int how : {0, O_NONBLOCK})
        EXPECT_EQ(status_of([=] {
                      int ends[2];
                      if (pipe2(ends, how) != 0) _exit(1);
                      const int room = fcntl(ends[1], F_GETPIPE_SZ);
                      const string before(static_cast<std::size_t>(room), '-');
                      if (::write(ends[1], before.data(), before.size()) != room) _exit(1);
                      std::fflush(stdout);
                      dup2(ends[1], 1);
                      struct sigaction interrupt {};
                      interrupt.sa_handler = [](int) {};
                      sigaction(SIGUSR1, &interrupt, nullptr);
                      static std::atomic<bool> done;
                      static const pthread_t printer = pthread_self();
                      string text;
                      std::thread reader([&] {
                          for (int k = 0; k < 20; ++k) {
                              std::this_thread::sleep_for(1ms);
                              pthread_kill(printer, SIGUSR1);
                          }
                          char part[4096];
                          for (;;) {
                              const ssize_t n = read(ends[0], part, sizeof part);
                              if (n > 0) text.append(part, static_cast<std::size_t>(n));
                              if (n <= 0 && done) return;
                              if (text.size() == before.size() + message(1).size()) return;
                          }
                      });
                      routine(1);
                      done = true;
                      reader.join();
                      _exit(text == before + message(1) ? 0 : 1);
                  }),
                  0);
}

// A handler that interrupts a message prints one of its own, which is another page.
TEST_F(Printing, SignalHandlerMayPrint)
{
    EXPECT_EQ(status_of([] {
                  int ends[2];
                  if (pipe(ends) != 0) _exit(1);
                  close(ends[0]);
                  std::fflush(stdout);
                  dup2(ends[1], 1);
                  static char printed[200];
                  orvel_bind_unit(
                      9, [](void*, int32_t, const char* text, size_t n) { std::memcpy(printed, text, n); },
                      nullptr);
                  signal(SIGPIPE, [](int) {
                      int32_t third = -3, unit = 9;
                      UMACH(&third, &unit);
                      routine(2);
                  });
                  routine(1);
                  _exit(printed == message(2) ? 0 : 1);
              }),
              0);
}

TEST_F(Printing, StopInAWriterGivesTheLockUp)
{
    EXPECT_EQ(status_of([] {
                  orvel_set_stop_status(5);
                  std::atexit([] {
                      orvel_bind_unit(6, nullptr, nullptr);
                      std::thread(routine, 1).join();
                      const int32_t bad = 13;
                      static int stops;
                      if (++stops == 1) IMACH(&bad);  // once more, by the thread that is stopping
                  });
                  orvel_bind_unit(
                      6,
                      [](void*, int32_t, const char*, size_t) {
                          static int calls;
                          const int32_t bad = 13;
                          if (++calls == 1) IMACH(&bad);
                      },
                      nullptr);
                  dup2(open("/dev/null", O_WRONLY), 1);
                  routine(1);
              }),
              5);
}

TEST_F(Printing, CancelledThreadEndsItsMessage)
{
    char name[] = "/tmp/orvel_cancelled_XXXXXX";
    const int file = mkstemp(name), standard = dup(1);
    std::fflush(stdout);
    dup2(file, 1);
    pthread_t thread;
    pthread_create(
        &thread, nullptr,
        [](void* end) -> void* {
            pthread_cancel(pthread_self());
            routine(1);
            routine(2);
            pthread_testcancel();
            return end;
        },
        name);
    void* result = nullptr;
    pthread_join(thread, &result);
    routine(3);
    dup2(standard, 1);
    std::ifstream printed(name);
    EXPECT_EQ(string(std::istreambuf_iterator<char>(printed), {}), message(1) + message(2) + message(3));
    EXPECT_EQ(result, PTHREAD_CANCELED);
    for (int descriptor : {file, standard}) close(descriptor);
    std::filesystem::remove(name);
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// The longest message with the longest traceback, to a stream and to a file.
void print_much()
{
    const int32_t code = 1, one = 1, all = 0, off = 0;
    const double number = 1e300 / 3;
    ERSET(&all, &one, &off);
    for (int k = 0; k < 40; ++k) E1PSH("ROUTINE ", 8);
    E1STD(&one, &number);
    const string text = "%(D1)" + string(500, 'x') + "%/%/ %/" + string(400, ' ');
    for (int32_t type : {3, 5}) E1MES(&type, &code, text.data(), text.size());
    E1MES(&all, &all, "", 0);
    for (int k = 0; k < 40; ++k) E1POP("ROUTINE ", 8);
}

[[gnu::noinline]] void* measure(void* deepest)
{
    constexpr std::size_t room = 64 * 1024, unused = 0x5A;
    print_much();  // symbols are looked up at the first call, on the same stack
    auto* const low = static_cast<unsigned char*>(__builtin_frame_address(0)) - room;
    volatile unsigned char* p = low;
    for (std::size_t k = 0; k < room - 512; ++k) p[k] = unused;
    print_much();
    std::size_t k = 0;
    while (k < room - 512 && p[k] == unused) ++k;
    *static_cast<std::size_t*>(deepest) = room - k;
    return nullptr;
}

TEST_F(Printing, TakesFourKilobytesOfStack)
{
    testing::internal::CaptureStdout();
    std::size_t used = 0;
    pthread_t thread;
    pthread_create(&thread, nullptr, measure, &used);
    pthread_join(thread, nullptr);
    EXPECT_GT(testing::internal::GetCapturedStdout().size(), 2 * 4500u);
    EXPECT_LE(used, 4096u);
    EXPECT_GT(used, 512u);
    RecordProperty("bytes", static_cast<int>(used));
}
#endif

}  // namespace
