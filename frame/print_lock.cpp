// frame/print_lock.cpp - locks of printing, by depth; they survive a fork
//
// The threads of a parallel region that a writer opens have to be told from others, who must wait. OpenMP
// hands down few things from a thread to the regions and tasks that it starts; the number of the default
// device is one that nothing reads before a program moves work to a device. While a writer runs, its task has
// a number there that says how deep it is, and so have all threads that work for it.
#include "frame/print_lock.h"

#include <omp.h>
#include <pthread.h>

namespace orvel::frame {

namespace {

constexpr int first_mark = 1 << 30;  // above the number of every device

struct Place {
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    char page[page_room] = {};
};
constinit Place places[deepest_print + 1];

// What this thread has to give back, on a jump, too.
struct Holding {
    unsigned locked;  // one bit for each place
    int calls;        // of writers
    int mark;         // what was there before the first of them
    bool uncancelled;
    int cancel_state;  // and before it was made so
};
constinit thread_local Holding holding{};

bool holds(int depth) { return (holding.locked >> depth & 1) != 0; }

void lock(int depth)
{
    pthread_mutex_lock(&places[depth].mutex);
    holding.locked |= 1u << depth;
}

void unlock(int depth)
{
    holding.locked &= ~(1u << depth);
    pthread_mutex_unlock(&places[depth].mutex);
}

void allow_cancelling()
{
    if (holding.uncancelled) pthread_setcancelstate(holding.cancel_state, nullptr);
    holding.uncancelled = false;
}

// In the child only the forking thread lives on, and the threads that held the other locks are gone.
void renew_in_child()
{
    for (int depth = 0; depth <= deepest_print; ++depth) {
        pthread_mutex_init(&places[depth].mutex, nullptr);
        if (holds(depth)) pthread_mutex_lock(&places[depth].mutex);
    }
}

// A runtime of OpenMP may set itself up in its first call, and get ready for forks only then: a fork in the
// midst of it would leave the child locks that nobody gives back.
[[gnu::constructor]] void survive_fork()
{
    omp_get_default_device();
    pthread_atfork(nullptr, nullptr, renew_in_child);
}

}  // namespace

int print_depth()
{
    const int mark = omp_get_default_device();
    int depth = mark > first_mark && mark <= first_mark + deepest_print ? mark - first_mark : 0;
    while (depth < deepest_print && holds(depth)) ++depth;  // without a mark, or in a signal handler
    return depth;
}

Uncancelled::Uncancelled() : outermost_(!holding.uncancelled)
{
    if (!outermost_) return;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &holding.cancel_state);
    holding.uncancelled = true;
}

Uncancelled::~Uncancelled()
{
    if (outermost_) allow_cancelling();
}

PrintLock::PrintLock() : depth_(print_depth()) { lock(depth_); }

PrintLock::~PrintLock()
{
    if (holds(depth_)) unlock(depth_);
}

char* PrintLock::page() const { return places[depth_].page; }

WriterCall::WriterCall(const PrintLock& lock) : outer_mark_(omp_get_default_device())
{
    if (holding.calls++ == 0) holding.mark = outer_mark_;
    omp_set_default_device(first_mark + lock.depth() + 1);
}

WriterCall::~WriterCall()
{
    omp_set_default_device(outer_mark_);
    --holding.calls;
}

void unless_printing(void (*work)())
{
    if (pthread_mutex_trylock(&places[0].mutex) != 0) return;
    work();
    pthread_mutex_unlock(&places[0].mutex);
}

void release_print_lock()
{
    if (holding.calls > 0) omp_set_default_device(holding.mark);
    holding.calls = 0;
    for (int depth = deepest_print; depth >= 0; --depth)
        if (holds(depth)) unlock(depth);
    allow_cancelling();
}

}  // namespace orvel::frame
