// tests/frame/files_test.cpp - units that are files: what is kept, what is dropped, what is no file
#include <fcntl.h>
#include <omp.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <thread>

#include "tests/frame/calls.h"

namespace {

using namespace orvel_test;
using std::string;

const string text =
    "\n *** TERMINAL ERROR 1 from ERSET.  Invalid error severity level indicator. \n"
    " ***          IERSVR must be 0 to 5.  IERSVR = 6\n";

string name_of(int32_t unit) { return "fort." + std::to_string(unit); }

void complain(int32_t unit)
{
    use_unit(unit);
    set_switches(6, 0, 0);
}

// What goes to standard error of a message to the unit.
string complaint(int32_t unit)
{
    testing::internal::CaptureStderr();
    complain(unit);
    return testing::internal::GetCapturedStderr();
}

// In a folder of its own, with messages and without stops.
class Files : public Hosted {
protected:
    Files() { set_switches(5, -1, 0); }
    const Folder folder_;
};

TEST_F(Files, WhatWasWrittenBeforeTheProgramIsDropped)
{
    constexpr int32_t first = 1000, count = 40;  // more than are kept open
    for (int32_t unit = first; unit < first + count; ++unit) {
        leave(name_of(unit));
        if (unit % 2 != 0) std::ofstream(name_of(unit)) << "of the program";
    }
    const auto before = entries("/proc/self/fd");
    for (int round = 0; round < 2; ++round)
        for (int32_t unit = first; unit < first + count; ++unit) EXPECT_EQ(complaint(unit), "");
    EXPECT_LT(entries("/proc/self/fd"), before + count);
    for (int32_t unit = first; unit < first + count; ++unit)
        EXPECT_EQ(content(name_of(unit)), (unit % 2 == 0 ? "" : "of the program") + text + text) << unit;

    leave("fort.9");
    std::ofstream open_now("fort.9", std::ios::app);  // whatever its time is, it is in use
    EXPECT_EQ(complaint(9), "");
    EXPECT_EQ(content("fort.9"), "left over" + text);
}

TEST_F(Files, OnlyFilesAndTerminalsAreWrittenTo)
{
    std::filesystem::create_directory("fort.11");
    ASSERT_EQ(mkfifo("fort.12", 0600), 0);  // without a reader, an open would wait for one
    ASSERT_EQ(mkfifo("fort.13", 0600), 0);
    const int reader = open("fort.13", O_RDONLY | O_NONBLOCK);
    std::filesystem::create_symlink("/dev/full", "fort.14");
    std::filesystem::create_symlink("/dev/null", "fort.15");
    alarm(60);
    for (int32_t unit : {0, 5, 11, 12, 13, 14}) EXPECT_EQ(complaint(unit), text) << unit;
    EXPECT_EQ(complaint(15), "");
    setenv("TAL_F90_MSG", folder_.name, 1);
    ASSERT_EQ(mkfifo("messages.daf", 0600), 0);
    Capture page;
    use_unit(6);
    const int32_t n = 7;
    const orvel_s_epack packet[7] = {{1, 0}, {3, 0}, {1, 0}, {-1, 0}, {-1, 0}, {0, 0}, {0, 0}};
    S_ERROR_POST(packet, &n);
    EXPECT_EQ(outcome(), (Outcome{5, 2}));
    alarm(0);
    close(reader);
}

TEST_F(Files, DescriptorsOfTheHostAreNotTakenFor)
{
    // A program that was started without its streams: what it prints must not land in a file of the
    // library's.
    EXPECT_TRUE(in_child([] {
        for (int k = 1; k < 256; ++k) close(k);
        complain(20);
        return ::write(1, "host", 4) < 0 && ::write(2, "host", 4) < 0 && content("fort.20") == text &&
               fcntl(3, F_GETFD) == FD_CLOEXEC;
    }));
    // One that closes all descriptors, as services do, and opens a file of its own.
    EXPECT_TRUE(in_child([] {
        for (int k = 3; k < 256; ++k) close(k);
        for (int32_t unit : {21, 22, 23}) complain(unit);
        close(4);
        const int own = open("own", O_WRONLY | O_CREAT | O_APPEND, 0600);
        for (int32_t unit : {21, 22, 23, 22}) complain(unit);
        return own == 4 && content("own").empty() && content("fort.21") == text + text &&
               content("fort.22") == text + text + text && content("fort.23") == text + text;
    }));
    EXPECT_TRUE(in_child([] {  // none left; an OpenMP run-time may want one when it starts
        omp_get_max_threads();
        dup2(open("errors", O_WRONLY | O_CREAT, 0600), 2);
        for (int k = 3; k < 256; ++k) close(k);
        rlimit room{};
        getrlimit(RLIMIT_NOFILE, &room);
        const rlimit three{3, room.rlim_max};
        setrlimit(RLIMIT_NOFILE, &three);
        complain(24);
        setrlimit(RLIMIT_NOFILE, &room);
        return content("errors") == text;
    }));
}

// The test starts itself as another program, whose unit holds what was written a moment before.
TEST_F(Files, ProgramsThatFollowEachOtherStartAnew)
{
    constexpr const char* second = "ORVEL_SECOND_PROGRAM";
    if (getenv(second) != nullptr) {
        std::filesystem::current_path(folder_.home);
        return complain(9);
    }
    EXPECT_TRUE(in_child([] {
        std::ofstream("fort.9") << "of the program before";
        std::this_thread::sleep_for(std::chrono::milliseconds(12));  // a tick of the coarsest clocks
        setenv(second, "", 1);
        dup2(open("output", O_WRONLY | O_CREAT, 0600), 1);
        return execl("/proc/self/exe", "program", "--gtest_filter=Files.Programs*", nullptr) == 0;
    }));
    EXPECT_EQ(content("fort.9"), text);
}

}  // namespace
