// tests/frame/fortran_test.cpp - messages among the lines of a Fortran program, in the order in which both
// were printed
#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/syscall.h>

#include <atomic>
#include <ctime>
#include <map>
#include <thread>
#include <vector>

#include "orvel/orvel.h"
#include "tests/frame/process.h"

using namespace orvel_test;

extern "C" {
void print_lines(int count);
void print_within_statements();
void write_file(int unit, int close_it);
void complain(int k);
int complaint(int k);
}

void complain(int k)
{
    const int32_t one = 1, warning = 3;
    E1PSH("HOST ", 5);
    E1STI(&one, &k);
    E1MES(&warning, &k, "Text %(I1).", 11);
    E1POP("HOST ", 5);
}

bool by_threads = false;
int fork_at = 0;

// The child of a thread that is in no statement, while this one is: the lock of its unit is lost there.
void fork_within_statement()
{
    std::thread([] {
        if (!in_child([] { return complain(1), true; })) _exit(98);
    }).join();
}

// In a statement that holds the lock of its unit, perhaps from another thread.
int complaint(int k)
{
    if (fork_at == k)
        fork_within_statement();
    else if (by_threads)
        std::thread(complain, k).join();
    else
        complain(k);
    return k;
}

namespace {

using std::string;

string message(int k)
{
    return "\n *** WARNING  ERROR " + std::to_string(k) + " from HOST.  Text " + std::to_string(k) + ".\n";
}

string lines(int count)
{
    string text;
    for (int k = 1; k <= count; ++k) text += "line " + std::to_string(k) + "\n" + message(k);
    return text;
}

// ---- programs: started anew, so that the run-time finds its output where it is ----------------------------

int alone()
{
    print_lines(300);
    return static_cast<int>(entries("/proc/self/task")) - 1;
}

std::atomic<int> alarms, elsewhere;
void count_alarm(int) { ++(syscall(SYS_gettid) == getpid() ? alarms : elsewhere); }

// With a timer whose alarms go to whichever thread is running.
int with_threads()
{
    std::thread([] {}).join();  // from now on the program is one of several threads
    signal(SIGUSR1, count_alarm);
    sigevent event{};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = SIGUSR1;
    timer_t timer{};
    timer_create(CLOCK_MONOTONIC, &event, &timer);
    const itimerspec often{{0, 100'000}, {0, 100'000}};
    timer_settime(timer, 0, &often, nullptr);
    print_lines(400);
    timer_delete(timer);
    sigset_t blocked;
    pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    return alarms > 0 && elsewhere == 0 && !sigismember(&blocked, SIGUSR1) ? 0 : 1;
}

int in_statements()
{
    complain(5);
    print_within_statements();
    print_lines(3);
    return 0;
}

// The stack that is kept for the next thread is too small for the one that flushes, and there is no memory
// for another.
int without_room()
{
    pthread_attr_t small;
    pthread_attr_init(&small);
    pthread_attr_setstacksize(&small, 65536);
    pthread_t thread{};
    pthread_create(
        &thread, &small, [](void*) -> void* { return nullptr; }, nullptr);
    pthread_join(thread, nullptr);
    rlimit room{};
    getrlimit(RLIMIT_AS, &room);
    const rlimit none{1, room.rlim_max};
    setrlimit(RLIMIT_AS, &none);
    complain(5);
    setrlimit(RLIMIT_AS, &room);
    print_lines(3);
    return 0;
}

int to_file(bool closed)
{
    const int32_t third = -3;
    int32_t unit = 9;
    UMACH(&third, &unit);
    write_file(unit, closed);
    complain(1);
    complain(2);
    return 0;
}

// Without a status of its own, a stop is a normal end.
int stops()
{
    const int32_t bad = 13;
    print_lines(2);
    IMACH(&bad);
    return 99;
}

const std::map<string, int (*)()> programs = {
    {"alone", alone},
    {"with_threads", with_threads},
    {"in_statements", in_statements},
    {"in_statements_with_threads", [] { return by_threads = true, in_statements(); }},
    {"without_room", without_room},
    {"to_open_file", [] { return to_file(false); }},
    {"to_closed_file", [] { return to_file(true); }},
    {"fork_in_statement", [] { return fork_at = 3, print_within_statements(), 0; }},
    {"stops", stops}};

// ---- what they print -------------------------------------------------------------------------------------

class Fortran : public ::testing::Test {
protected:
    // The output of the program, which must end well.
    static string printed(const char* program)
    {
        EXPECT_TRUE(in_child([=] {
            dup2(open("output", O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
            return execl("/proc/self/exe", "program", program, nullptr) == 0;
        }));
        return content("output");
    }

private:
    const Folder folder_;
};

// The line of a statement is printed when it ends; no message is held up by it, nor in a child where the lock
// of its unit is lost.
TEST_F(Fortran, MessagesStandWhereTheProgramMadeThem)
{
    const string first = "first\n" + message(1) + "second\n" + message(2),
                 last = "third 3\n" + message(4) + "last\n",
                 within = message(5) + first + message(3) + last + lines(3);
    for (const auto& [program, text] :
         {std::pair{"alone", lines(300)},  // needs no thread
          {"in_statements", within},
          {"in_statements_with_threads", within},
          {"fork_in_statement", first + message(1) + last},
          {"stops", lines(2) + "\n *** TERMINAL ERROR 5 from IMACH.  The argument\n"
                               " ***          must be between 1 and 12 inclusive.\n"
                               " ***          N =     13.\n\n"}})
        EXPECT_EQ(printed(program), text) << program;
}

#if !defined __SANITIZE_THREAD__ && !defined __SANITIZE_ADDRESS__  // which need memory of their own
TEST_F(Fortran, MessagesWithoutAThreadToFlush) { EXPECT_EQ(printed("without_room"), message(5) + lines(3)); }
#endif

TEST_F(Fortran, LinesAndMessagesKeepTheirOrderOnABusyMachine)
{
    std::vector<pid_t> busy(4 * std::thread::hardware_concurrency());
    for (pid_t& id : busy)
        if ((id = fork()) == 0)
            for (alarm(100);;) {
            }
    EXPECT_EQ(printed("with_threads"), lines(400));
    for (const pid_t id : busy) {
        kill(id, SIGKILL);
        waitpid(id, nullptr, 0);
    }
}

// Lines of the program stay, wherever they are when the message comes.
TEST_F(Fortran, FileIsSharedWithTheProgram)
{
    for (const char* program : {"to_open_file", "to_closed_file"}) {
        EXPECT_EQ(printed(program), "");
        EXPECT_EQ(content("fort.9"), "of the program\n" + message(1) + message(2)) << program;
        std::filesystem::remove("fort.9");
    }
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && programs.contains(argv[1])) return programs.at(argv[1])();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
