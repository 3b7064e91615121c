// frame/print_lock.h - the one process-wide lock: printed messages of two threads never mix
#pragma once

namespace orvel::frame {

// Holds the lock for a scope; the same thread may take it again.
class PrintLock {
public:
    PrintLock();
    ~PrintLock();
    PrintLock(const PrintLock&) = delete;
    PrintLock& operator=(const PrintLock&) = delete;
};

// Gives the lock up however often this thread has taken it: for a thread that ends the program or was brought
// here by a jump.
void release_print_lock();

}  // namespace orvel::frame
