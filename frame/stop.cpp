// frame/stop.cpp - ending the program: the host's handler first, then normal termination by one thread
#include "frame/stop.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <exception>

#include "frame/context.h"
#include "frame/host.h"
#include "frame/outcome.h"
#include "frame/print_lock.h"

namespace orvel::frame {

namespace {

std::atomic<pthread_t> stopper{};

// The thread that was stopping is not in the child.
[[gnu::constructor]] void survive_fork()
{
    pthread_atfork(nullptr, nullptr, [] {
        if (!pthread_equal(stopper, pthread_self())) stopper = pthread_t{};
    });
}

// A handler that ends its thread unwinds the stack by force, which does not count as an exception: the
// routines on the way are told by their levels. Foreign exceptions go the same way; after a return it does
// not matter.
class HandlerCall {
public:
    HandlerCall() = default;
    ~HandlerCall()
    {
        if (std::uncaught_exceptions() == before_) state().ending_level = state().errors->level;
    }
    HandlerCall(const HandlerCall&) = delete;
    HandlerCall& operator=(const HandlerCall&) = delete;

private:
    const int before_ = std::uncaught_exceptions();
};

}  // namespace

void stop(int32_t type, int32_t code)
{
    end_user_context(type, code);
    const StopPolicy policy = stop_policy();
    if (policy.handler != nullptr) {
        const HandlerCall call;
        policy.handler(policy.context, type, code);
    } else if (policy.text_handler != nullptr) {
        const LastMessage message = last_message();
        const HandlerCall call;
        policy.text_handler(policy.context, type, code, message.routine, message.text);
    }

    // Termination runs the program's own exit functions; none of them may have to wait for a print lock
    // that this thread would never give back. Messages need no flushing: they are written unbuffered.
    release_print_lock();
    pthread_t nobody{};
    if (stopper.compare_exchange_strong(nobody, pthread_self()) || pthread_equal(nobody, pthread_self()))
        std::exit(policy.status);
    for (;;) pause();
}

}  // namespace orvel::frame
