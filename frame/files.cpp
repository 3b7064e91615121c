// frame/files.cpp - opening files without waiting, and telling what an earlier program has left in them
#include "frame/files.h"

#include <elf.h>
#include <link.h>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <string_view>

namespace orvel::frame {

namespace {

// A descriptor below 3 would be taken for a standard stream that the program was started without.
int above_streams(int descriptor)
{
    if (descriptor < 0 || descriptor > STDERR_FILENO) return descriptor;
    const int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    close(descriptor);
    return moved;
}

bool takes_text(int descriptor, const struct stat& status)
{
    return S_ISREG(status.st_mode) ||
           (S_ISCHR(status.st_mode) && (status.st_rdev == makedev(1, 3) || isatty(descriptor) == 1));
}

// ---- the time at which the program began -----------------------------------------------------------------

constexpr int64_t second = 1'000'000'000;

int64_t nanoseconds(const timespec& t) { return t.tv_sec * second + t.tv_nsec; }

int64_t now(clockid_t clock)
{
    timespec t{};
    clock_gettime(clock, &t);
    return nanoseconds(t);
}

// What is linked to the program stands before the loader in the list of loaded objects, what is loaded later
// behind it.
bool loaded_with_the_program()
{
    struct Search {
        uintptr_t here, loader;
        bool found;
    } search{reinterpret_cast<uintptr_t>(&loaded_with_the_program), getauxval(AT_BASE), false};
    dl_iterate_phdr(
        [](dl_phdr_info* object, size_t, void* to) {
            auto& s = *static_cast<Search*>(to);
            if (object->dlpi_addr == s.loader) return 1;
            for (int k = 0; k < object->dlpi_phnum; ++k) {
                const auto& part = object->dlpi_phdr[k];
                const uintptr_t start = object->dlpi_addr + part.p_vaddr;
                if (part.p_type == PT_LOAD && s.here >= start && s.here - start < part.p_memsz)
                    s.found = true;
            }
            return 0;
        },
        &search);
    return search.found && search.loader != 0;
}

// In ticks of the kernel, rounded down; 0, which drops nothing, where it cannot be read.
int64_t start_of_the_process()
{
    char line[512];
    const int file = open("/proc/self/stat", O_RDONLY | O_CLOEXEC);
    if (file < 0) return 0;
    const ssize_t n = read(file, line, sizeof line);
    close(file);
    const std::string_view text{line, n > 0 ? static_cast<std::size_t>(n) : 0};
    std::size_t at = text.rfind(')');  // of the second value; the start is the 22nd
    for (int k = 2; k < 22 && at != text.npos; ++k) at = text.find(' ', at + 1);
    int64_t ticks = 0;
    const bool known =
        at != text.npos && std::from_chars(line + at + 1, line + text.size(), ticks).ec == std::errc{};
    return known ? now(CLOCK_REALTIME) - now(CLOCK_BOOTTIME) + ticks * (second / sysconf(_SC_CLK_TCK)) : 0;
}

int64_t program_began;

// Files get their times from the coarse clock.
[[gnu::constructor]] void note_begin()
{
    program_began = loaded_with_the_program() ? now(CLOCK_REALTIME_COARSE) : start_of_the_process();
}

// The clock may have been set back, or be another computer's: a file that the program has open is its own.
bool is_open_here(const struct stat& status, int except)
{
    constexpr int looked_at = 256;
    for (int descriptor = 0; descriptor < looked_at; ++descriptor) {
        struct stat other {};
        if (descriptor != except && fstat(descriptor, &other) == 0 && other.st_dev == status.st_dev &&
            other.st_ino == status.st_ino)
            return true;
    }
    return false;
}

bool is_left_over(int descriptor, const struct stat& status)
{
    return S_ISREG(status.st_mode) && status.st_size > 0 && nanoseconds(status.st_mtim) < program_began &&
           !is_open_here(status, descriptor);
}

}  // namespace

int open_to_read(const char* path)
{
    const int descriptor = above_streams(open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status {};
    if (descriptor < 0 || (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode))) return descriptor;
    close(descriptor);
    return -1;
}

int open_to_append(const char* path)
{
    const int descriptor =
        above_streams(open(path, O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666));
    if (descriptor < 0) return -1;
    struct stat status {};
    bool good = fstat(descriptor, &status) == 0 && takes_text(descriptor, status);
    if (good && is_left_over(descriptor, status)) good = ftruncate(descriptor, 0) == 0;
    if (good) return descriptor;
    close(descriptor);
    return -1;
}

}  // namespace orvel::frame
