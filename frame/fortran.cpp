// frame/fortran.cpp - flushing the units of a Fortran host program
//
// A statement holds the lock of its unit while it runs, and its items may call the library: in PRINT *,
// GAMMA(X) a flush of unit 6 from the same thread would never return. The run-time tells nobody who holds a
// lock, but while a thread is in a formatted statement its locale is "C". In a program of one thread that
// answers the question. In all other cases a helper thread flushes, and nobody waits long for one that does
// not get the lock.
#include "frame/fortran.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <locale.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <ctime>
#include <string_view>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define ORVEL_SINGLE_THREADED (__libc_single_threaded != 0)
#else
#define ORVEL_SINGLE_THREADED false
#endif

// Present when the host program is Fortran.
extern "C" void _gfortran_flush_i4(int32_t* unit) __attribute__((weak));

namespace orvel::frame {

namespace {

// ---- without a thread ------------------------------------------------------------------------------------

// What the compiler passes for WRITE (TEXT, *) without items: the members that it sets, and the room that the
// run-time uses of the object.
struct WriteStatement {
    int32_t flags = 0x4080;  // list-directed, into a character variable
    int32_t unit = -1;
    const char* file = "";
    int32_t line = 0;
    char between[48] = {};
    const void* descriptor = nullptr;
    char before_text[32] = {};
    char* text = nullptr;
    std::size_t length = 0;
    char rest[896] = {};
};
static_assert(sizeof(void*) != 8 ||
              (offsetof(WriteStatement, descriptor) == 72 && offsetof(WriteStatement, text) == 112));

bool locale_is_c() { return uselocale(locale_t{}) == newlocale(LC_ALL_MASK, "C", locale_t{}); }

// Whether this run-time marks its statements: it is asked once, by a statement that writes nowhere.
bool statements_are_marked()
{
    using Call = void (*)(WriteStatement*);
    const auto begin = reinterpret_cast<Call>(dlvsym(RTLD_DEFAULT, "_gfortran_st_write", "GFORTRAN_8"));
    const auto end = reinterpret_cast<Call>(dlvsym(RTLD_DEFAULT, "_gfortran_st_write_done", "GFORTRAN_8"));
    if (begin == nullptr || end == nullptr || sizeof(void*) != 8) return false;
    static char text[8];
    static WriteStatement statement;
    statement = {};
    statement.text = text;
    statement.length = sizeof text;
    begin(&statement);
    const bool marked = locale_is_c();
    end(&statement);
    return marked && !locale_is_c();
}

bool lock_may_be_lost = false;  // in the child of a program of several threads

// Only for unit 6: it is formatted. Statements of unformatted units leave the locale alone.
bool nobody_holds(int32_t unit)
{
    if (unit != 6 || !ORVEL_SINGLE_THREADED || lock_may_be_lost || locale_is_c()) return false;
    static const bool marked = statements_are_marked();
    return marked;
}

// ---- with a thread ---------------------------------------------------------------------------------------

constexpr long patience_ns = 50'000'000;

enum class Stage { idle, created, running };

struct Helper {
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    pthread_cond_t changed = PTHREAD_COND_INITIALIZER;  // by the monotonic clock, see prepare()
    Stage stage = Stage::idle;
    int32_t unit = 0;
    long thread = 0;
    timespec deadline = {};
};
constinit Helper helper;

timespec after(long ns)
{
    timespec t{};
    clock_gettime(CLOCK_MONOTONIC, &t);
    t.tv_nsec += ns;
    t.tv_sec += t.tv_nsec / 1'000'000'000;
    t.tv_nsec %= 1'000'000'000;
    return t;
}

void enter(Stage stage)
{
    helper.stage = stage;
    pthread_cond_broadcast(&helper.changed);
}

void* flush(void*)
{
    pthread_mutex_lock(&helper.mutex);
    int32_t unit = helper.unit;
    helper.thread = syscall(SYS_gettid);
    helper.deadline = after(patience_ns);
    enter(Stage::running);
    pthread_mutex_unlock(&helper.mutex);
    _gfortran_flush_i4(&unit);
    pthread_mutex_lock(&helper.mutex);
    enter(Stage::idle);
    pthread_mutex_unlock(&helper.mutex);
    return nullptr;
}

// A helper that could run, but has not been given a processor, is not stuck.
bool helper_sleeps()
{
    char name[64] = "/proc/self/task/", line[512];
    std::strcpy(std::to_chars(name + 16, name + 48, helper.thread).ptr, "/stat");
    const int file = open(name, O_RDONLY | O_CLOEXEC);
    if (file < 0) return true;
    const ssize_t n = read(file, line, sizeof line);
    close(file);
    const std::string_view text{line, n > 0 ? static_cast<std::size_t>(n) : 0};
    return !text.substr(text.rfind(')') + 1).starts_with(" R");  // the letter after the name of the program
}

// Waits for the flush under way: until it has begun, and then as long as there is hope. Called with the
// mutex.
bool flush_has_ended()
{
    while (helper.stage != Stage::idle) {
        if (helper.stage == Stage::created)
            pthread_cond_wait(&helper.changed, &helper.mutex);
        else if (pthread_cond_timedwait(&helper.changed, &helper.mutex, &helper.deadline) == ETIMEDOUT &&
                 helper.stage == Stage::running) {
            if (helper_sleeps()) return false;
            helper.deadline = after(patience_ns / 10);
        }
    }
    return true;
}

// The code that a helper returns to must stay where it is, even when the library is unloaded. Nothing is held
// meanwhile: the loader has a lock of its own, and a constructor may print under it.
void stay_loaded()
{
    static std::atomic<bool> done = false;
    if (done.exchange(true)) return;
    Dl_info here{};
    if (dladdr(reinterpret_cast<void*>(&flush), &here) != 0)
        dlopen(here.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
}

// Handlers of the host's signals are not for this thread.
bool start_helper()
{
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    pthread_t thread{};
    const bool started = pthread_create(&thread, nullptr, flush, nullptr) == 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    if (started) pthread_detach(thread);
    return started;
}

void flush_by_helper(int32_t unit)
{
    stay_loaded();
    pthread_mutex_lock(&helper.mutex);
    if (flush_has_ended()) {
        helper.unit = unit;
        helper.stage = Stage::created;
        if (start_helper())
            flush_has_ended();
        else
            enter(Stage::idle);  // the order of the two outputs is lost, the message is not
    }
    pthread_mutex_unlock(&helper.mutex);
}

void make_helper()
{
    pthread_condattr_t monotonic;
    pthread_condattr_init(&monotonic);
    pthread_condattr_setclock(&monotonic, CLOCK_MONOTONIC);
    pthread_mutex_init(&helper.mutex, nullptr);
    pthread_cond_init(&helper.changed, &monotonic);
    pthread_condattr_destroy(&monotonic);
    helper.stage = Stage::idle;
}

bool alone_at_fork = true;

[[gnu::constructor]] void prepare()
{
    make_helper();
    pthread_atfork([] { alone_at_fork = ORVEL_SINGLE_THREADED; }, nullptr,
                   [] {
                       make_helper();
                       lock_may_be_lost = lock_may_be_lost || !alone_at_fork;
                   });
}

}  // namespace

void flush_fortran(int32_t unit)
{
    if (_gfortran_flush_i4 == nullptr) return;
    if (nobody_holds(unit))
        _gfortran_flush_i4(&unit);
    else
        flush_by_helper(unit);
}

}  // namespace orvel::frame
