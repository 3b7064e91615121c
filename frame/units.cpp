// frame/units.cpp - streams and files of the unit numbers
//
// Text is written straight to the descriptor, after what the program itself has buffered for standard output
// in C or Fortran: nothing of the library's is ever left in a buffer that a fork could copy or an exit lose.
#include "frame/units.h"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>

#include "frame/files.h"
#include "frame/fortran.h"
#include "frame/host.h"

namespace orvel::frame {

namespace {

constexpr int32_t standard_output = 6;

bool is_standard_error(int32_t unit) { return unit == 0 || unit == 5; }  // standard input takes no text

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

void write_standard_output(std::string_view text)
{
    const int descriptor = fileno(stdout);
    if (descriptor >= 0) {
        write_all(descriptor, text);
    } else {  // a stream without a descriptor, such as one in memory
        std::fwrite(text.data(), 1, text.size(), stdout);
        std::fflush(stdout);
    }
}

// Files opened so far. Beyond this many, a file is opened for each message and closed again. The program may
// have closed a descriptor and got its number for a file of its own.
struct UnitFile {
    int32_t unit;
    int descriptor;
    dev_t device;
    ino_t inode;

    bool is_there() const
    {
        struct stat now {};
        return fstat(descriptor, &now) == 0 && now.st_dev == device && now.st_ino == inode;
    }
};
UnitFile files[32];
int file_count = 0;

// When the library is unloaded or the program ends, whose other threads may go on. Messages after that open
// their files again.
[[gnu::destructor]] void close_files()
{
    unless_printing([] {
        while (file_count > 0)
            if (const UnitFile& file = files[--file_count]; file.is_there()) close(file.descriptor);
    });
}

int open_unit(int32_t unit)
{
    char name[20] = "fort.";
    *std::to_chars(name + 5, name + sizeof name - 1, unit).ptr = '\0';
    return open_to_append(name);
}

void write_file(int32_t unit, std::string_view text)
{
    for (int k = 0; k < file_count; ++k)
        if (files[k].unit == unit && files[k].is_there()) return write_all(files[k].descriptor, text);
    UnitFile* const end =
        std::remove_if(files, files + file_count, [](const UnitFile& f) { return !f.is_there(); });
    file_count = static_cast<int>(end - files);
    const int descriptor = open_unit(unit);
    write_all(descriptor >= 0 ? descriptor : STDERR_FILENO, text);
    if (descriptor < 0) return;
    struct stat status {};
    if (file_count < static_cast<int>(std::size(files)) && fstat(descriptor, &status) == 0)
        files[file_count++] = {unit, descriptor, status.st_dev, status.st_ino};
    else
        close(descriptor);
}

}  // namespace

HostOutput::HostOutput(int32_t unit)
{
    if (is_standard_error(unit) || bound_writer(unit).write != nullptr) return;
    flush_fortran(unit);
    if (unit != standard_output) return;
    if (print_depth() == 0)
        flockfile(stdout);
    else if (ftrylockfile(stdout) != 0)  // inside a writer: who has it may be waiting for the print lock
        return;
    std::fflush(stdout);
    stream_is_locked_ = fileno(stdout) < 0;  // then the text goes through the stream
    if (!stream_is_locked_) funlockfile(stdout);
}

HostOutput::~HostOutput()
{
    if (stream_is_locked_) funlockfile(stdout);
}

void Page::send() const
{
    const Writer writer = bound_writer(unit_);
    const std::string_view output = text.view();
    if (writer.write != nullptr && lock_.depth() < deepest_print) {
        const WriterCall call(lock_);
        writer.write(writer.context, unit_, output.data(), output.size());
    } else if (writer.write != nullptr || is_standard_error(unit_)) {
        write_all(STDERR_FILENO, output);
    } else if (unit_ == standard_output) {
        write_standard_output(output);
    } else {
        write_file(unit_, output);
    }
}

}  // namespace orvel::frame
