// tests/frame/process.h - children, folders and files of tests
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace orvel_test {

// Whether a child that does this ends by itself with the status, which is 0 when the body returns true.
template <class F>
testing::AssertionResult in_child(int expected, F body)
{
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        alarm(60);  // a hang ends it
        _exit(body() ? 0 : 98);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return testing::AssertionResult(WIFEXITED(status) && WEXITSTATUS(status) == expected)
           << "wait status " << status;
}

template <class F>
testing::AssertionResult in_child(F body)
{
    return in_child(0, body);
}

// The current folder while it lives.
class Folder {
public:
    Folder() { std::filesystem::current_path(mkdtemp(name)); }
    ~Folder()
    {
        std::filesystem::current_path(home);
        std::filesystem::remove_all(name);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::filesystem::path home = std::filesystem::current_path();
    char name[20] = "/tmp/orvel_XXXXXX";
};

inline std::string content(const std::string& name)
{
    std::ifstream file(name);
    return {std::istreambuf_iterator<char>(file), {}};
}

// What an earlier program has left.
inline void leave(const std::string& name)
{
    using namespace std::filesystem;
    std::ofstream(name) << "left over";
    last_write_time(name, file_time_type::clock::now() - std::chrono::hours(1));
}

inline auto entries(const char* folder)
{
    using std::filesystem::directory_iterator;
    return std::distance(directory_iterator(folder), directory_iterator());
}

}  // namespace orvel_test
