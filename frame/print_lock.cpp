// frame/print_lock.cpp - an OpenMP nestable lock, created at first use, that survives a fork
#include "frame/print_lock.h"

#include <omp.h>
#include <pthread.h>

#include <atomic>

#ifdef __SANITIZE_THREAD__
// The OpenMP runtime is not instrumented; tell the sanitizer what its lock orders.
extern "C" void __tsan_acquire(void*);
extern "C" void __tsan_release(void*);
#define ORVEL_LOCK_ACQUIRED(lock) __tsan_acquire(lock)
#define ORVEL_LOCK_RELEASED(lock) __tsan_release(lock)
#else
#define ORVEL_LOCK_ACQUIRED(lock)
#define ORVEL_LOCK_RELEASED(lock)
#endif

namespace orvel::frame {

namespace {

omp_nest_lock_t lock;
std::atomic<bool> created;
constinit thread_local int depth = 0;

void create()
{
    // A named section: a caller inside an unnamed one may come here.
#pragma omp critical(orvel_print_lock)
    if (!created.load(std::memory_order_relaxed)) {
        omp_init_nest_lock(&lock);
        created.store(true, std::memory_order_release);
    }
}

void create_once()
{
    if (!created.load(std::memory_order_acquire)) create();
}

// In the child only the forking thread lives on, and the thread that held the lock may be gone.
void renew_in_child()
{
    omp_init_nest_lock(&lock);
    for (int k = 0; k < depth; ++k) omp_set_nest_lock(&lock);
}

// Created before a fork at the latest, so that no child inherits a section that somebody was in.
[[gnu::constructor]] void survive_fork() { pthread_atfork(create_once, nullptr, renew_in_child); }

void unset()
{
    --depth;
    ORVEL_LOCK_RELEASED(&lock);
    omp_unset_nest_lock(&lock);
}

}  // namespace

PrintLock::PrintLock()
{
    create_once();
    omp_set_nest_lock(&lock);
    ORVEL_LOCK_ACQUIRED(&lock);
    ++depth;
}

PrintLock::~PrintLock()
{
    if (depth > 0) unset();
}

void release_print_lock()
{
    while (depth > 0) unset();
}

}  // namespace orvel::frame
