// tests/frame/fortran_test.cpp - messages among the lines of a Fortran program, in the order in which both
// were printed
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>
#include <vector>

#include "tests/support.h"

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

int complaint(int k)
{
    complain(k);
    return k;
}

namespace {

using namespace orvel_test;
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

// In a folder of its own; a program that hangs is ended.
class Fortran : public Quiet {
protected:
    Fortran() { std::filesystem::current_path(mkdtemp(folder_)); }
    ~Fortran() override
    {
        std::filesystem::current_path(home_);
        std::filesystem::remove_all(folder_);
    }

    static string content(const char* name)
    {
        std::ifstream file(name);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // What a program prints that does this, and with it 0 when it comes to its end.
    template <class F>
    static string printed(F body)
    {
        const pid_t child = fork();
        if (child == 0) {
            alarm(100);
            if (std::freopen("output", "w", stdout) == nullptr) _exit(1);
            body();
            std::exit(0);
        }
        int status = -1;
        waitpid(child, &status, 0);
        return content("output") + std::to_string(status);
    }

private:
    const std::filesystem::path home_ = std::filesystem::current_path();
    char folder_[32] = "/tmp/orvel_fortran_XXXXXX";
};

TEST_F(Fortran, LinesAndMessagesOfOneThreadNeedNoOther)
{
    const string text = printed([] {
        print_lines(300);
        using std::filesystem::directory_iterator;
        if (std::distance(directory_iterator("/proc/self/task"), directory_iterator()) != 1) _exit(1);
    });
    EXPECT_EQ(text, lines(300) + "0");
}

std::atomic<int> alarms, elsewhere;
void count_alarm(int) { ++(syscall(SYS_gettid) == getpid() ? alarms : elsewhere); }

// On a busy machine, with a timer whose alarms go to whichever thread is running.
TEST_F(Fortran, LinesAndMessagesKeepTheirOrderWhereThereAreThreads)
{
    std::vector<pid_t> busy(2 * std::thread::hardware_concurrency());
    for (pid_t& id : busy)
        if ((id = fork()) == 0)
            for (alarm(100);;) {
            }
    const string text = printed([] {
        std::thread([] {}).join();  // from now on the program is one of several threads
        signal(SIGUSR1, count_alarm);
        sigevent event{};
        event.sigev_notify = SIGEV_SIGNAL;
        event.sigev_signo = SIGUSR1;
        timer_t timer{};
        timer_create(CLOCK_MONOTONIC, &event, &timer);
        const itimerspec often{{0, 100'000}, {0, 100'000}};
        timer_settime(timer, 0, &often, nullptr);
        print_lines(1000);
        timer_delete(timer);
        if (alarms == 0 || elsewhere != 0) _exit(1);
    });
    for (const pid_t id : busy) {
        kill(id, SIGKILL);
        waitpid(id, nullptr, 0);
    }
    EXPECT_EQ(text, lines(1000) + "0");
}

// The line of a statement is printed when it ends; the message inside is not held up by it, nor are later
// ones.
TEST_F(Fortran, StatementsMayCallWhatPrints)
{
    for (const bool threads : {false, true}) {
        const string text = printed([=] {
            if (threads) std::thread([] {}).join();
            print_within_statements();
            print_lines(3);
        });
        EXPECT_EQ(text, "first\n" + message(1) + "second\n" + message(2) + message(3) + "third 3\n" +
                            message(4) + "last\n" + lines(3) + "0");
    }
}

// Lines of the program stay, wherever they are when the message comes.
TEST_F(Fortran, FileIsSharedWithTheProgram)
{
    for (const bool closed : {false, true}) {
        const int32_t unit = closed ? 31 : 32;
        const string name = "fort." + std::to_string(unit);
        EXPECT_EQ(printed([=] {
                      int32_t third = -3, number = unit;
                      UMACH(&third, &number);
                      write_file(unit, closed);
                      complain(1);
                      complain(2);
                  }),
                  "0");
        EXPECT_EQ(content(name.c_str()), "of the program\n" + message(1) + message(2)) << name;
    }
}

}  // namespace
