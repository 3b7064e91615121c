// frame/print_lock.h - messages of two threads never mix: one process-wide lock, and one for each writer
// below a writer
#pragma once

#include <cstddef>

namespace orvel::frame {

// Room for the longest output: 1024 characters broken by 512 line ends take 8 KiB, a traceback of 50 levels 4
// KiB.
inline constexpr std::size_t page_room = 12 * 1024;

// A writer runs under the lock and may print, itself or from the threads of a parallel region that it opens.
// What it prints so is one deeper: it goes under a lock of its own depth, and its page is another one. At the
// deepest, nothing is given to writers any more.
inline constexpr int deepest_print = 7;

// Keeps the thread from being cancelled for a scope.
class Uncancelled {
public:
    Uncancelled();
    ~Uncancelled();
    Uncancelled(const Uncancelled&) = delete;
    Uncancelled& operator=(const Uncancelled&) = delete;

private:
    bool outermost_;
};

// Holds the lock of this thread's depth for a scope.
class PrintLock {
public:
    PrintLock();
    ~PrintLock();
    PrintLock(const PrintLock&) = delete;
    PrintLock& operator=(const PrintLock&) = delete;

    int depth() const { return depth_; }
    char* page() const;  // of page_room characters

private:
    const int depth_;
};

// Brackets the call of a writer by the holder of a lock.
class WriterCall {
public:
    explicit WriterCall(const PrintLock& lock);
    ~WriterCall();
    WriterCall(const WriterCall&) = delete;
    WriterCall& operator=(const WriterCall&) = delete;

private:
    const int outer_mark_;
};

// Does the work under the lock if it is free.
void unless_printing(void (*work)());

// How many calls of writers this thread works for.
int print_depth();

// Gives up all locks of this thread: for a thread that ends the program or was brought here by a jump.
void release_print_lock();

}  // namespace orvel::frame
