// frame/stop.cpp - ending the program: the host's handler first, then normal termination by one thread
#include "frame/stop.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>

#include "frame/host.h"
#include "frame/print_lock.h"

namespace orvel::frame {

void stop(int32_t type, int32_t code)
{
    const StopPolicy policy = stop_policy();
    if (policy.handler != nullptr) policy.handler(policy.context, type, code);

    // Termination runs the program's own exit functions; none of them may have to wait for a print lock
    // that this thread would never give back. Messages need no flushing: they are written unbuffered.
    release_print_lock();
    static std::atomic<pthread_t> stopper{};
    pthread_t nobody{};
    if (stopper.compare_exchange_strong(nobody, pthread_self()) || pthread_equal(nobody, pthread_self()))
        std::exit(policy.status);
    for (;;) pause();
}

}  // namespace orvel::frame
