// frame/units.cpp - streams and files of the unit numbers
//
// Text is written straight to the descriptor, after what the program itself has buffered for standard output
// in C or Fortran: nothing of the library's is ever left in a buffer that a fork could copy or an exit lose.
#include "frame/units.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <memory>
#include <mutex>
#include <thread>

#include "frame/host.h"

// Present when the host program is Fortran.
extern "C" void _gfortran_flush_i4(int32_t* unit) __attribute__((weak));

namespace orvel::frame {

namespace {

void write_all(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t n = write(descriptor, text.data(), text.size());
        if (n > 0) {
            text.remove_prefix(static_cast<std::size_t>(n));
        } else if (n < 0 && errno == EAGAIN) {
            pollfd ready{descriptor, POLLOUT, 0};
            poll(&ready, 1, -1);
        } else if (n == 0 || errno != EINTR) {
            return;  // output errors are not checked
        }
    }
}

// Fortran's buffer is flushed by a helper thread and not waited for longer than this: in PRINT *, F(X) the
// statement holds the lock of its unit while F runs, and a flush from this thread would never return.
constexpr std::chrono::milliseconds fortran_patience{50};

struct FortranFlush {
    std::mutex mutex;
    std::condition_variable changed;
    bool done = false;
};

std::atomic<bool> fortran_flush_pending;

void flush_fortran(int32_t unit)
{
    if (_gfortran_flush_i4 == nullptr || fortran_flush_pending.exchange(true)) return;
    try {
        const auto flush = std::make_shared<FortranFlush>();
        std::thread([flush, unit]() mutable {
            _gfortran_flush_i4(&unit);
            fortran_flush_pending = false;
            const std::lock_guard lock(flush->mutex);
            flush->done = true;
            flush->changed.notify_one();
        }).detach();
        std::unique_lock lock(flush->mutex);
        flush->changed.wait_for(lock, fortran_patience, [&] { return flush->done; });
    } catch (...) {  // no thread or no memory: the order of the two outputs is lost, the message is not
        fortran_flush_pending = false;
    }
}

void write_standard_output(std::string_view text)
{
    flush_fortran(6);
    std::fflush(stdout);
    const int descriptor = fileno(stdout);
    if (descriptor >= 0) {
        write_all(descriptor, text);
    } else {  // a stream without a descriptor, such as one in memory
        std::fwrite(text.data(), 1, text.size(), stdout);
        std::fflush(stdout);
    }
}

// Files opened so far. Beyond this many, a file is opened for each message and closed again.
struct UnitFile {
    int32_t unit;
    int descriptor;
};
UnitFile files[32];
int file_count = 0;

int open_unit(int32_t unit, int how)
{
    char name[20] = "fort.";
    *std::to_chars(name + 5, name + sizeof name - 1, unit).ptr = '\0';
    return open(name, O_WRONLY | O_CREAT | O_CLOEXEC | how, 0666);
}

void write_file(int32_t unit, std::string_view text)
{
    for (int k = 0; k < file_count; ++k)
        if (files[k].unit == unit) return write_all(files[k].descriptor, text);
    const bool kept = file_count < static_cast<int>(std::size(files));
    const int descriptor = open_unit(unit, kept ? O_TRUNC : O_APPEND);
    write_all(descriptor >= 0 ? descriptor : STDERR_FILENO, text);
    if (descriptor < 0) return;
    if (kept) {
        files[file_count] = {unit, descriptor};
        ++file_count;
    } else {
        close(descriptor);
    }
}

}  // namespace

void write_unit(int32_t unit, std::string_view text)
{
    const Writer writer = bound_writer(unit);
    if (writer.write != nullptr)
        writer.write(writer.context, unit, text.data(), text.size());
    else if (unit == 6)
        write_standard_output(text);
    else if (unit == 0 || unit == 5)  // standard input takes no text
        write_all(STDERR_FILENO, text);
    else
        write_file(unit, text);
}

}  // namespace orvel::frame
