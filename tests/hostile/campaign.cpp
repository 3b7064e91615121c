// tests/hostile/campaign.cpp - hostile calls of every routine, in processes that may die
//
//     hostile [seconds=S] [seed=N] [workers=W] [only=ROUTINE]
//                                 a campaign; 0 seconds are one round
//     hostile refusals            every request for storage refused, of all routines
//     hostile levels [seconds=S]  prints the routines that give the same bits on all instruction-set levels
//     hostile changing [...]      a campaign whose calls meet other levels all the time
//     hostile ROUTINE SEED        one call of it, as a campaign has named it
//
// Each call follows from its routine and one number. A worker that dies or hangs is replaced by one that goes
// on with the next call.
#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "isa/levels.h"
#include "tests/hostile/call.h"
#include "tests/hostile/draw.h"

namespace {

using namespace hostile;
using Clock = std::chrono::steady_clock;

constexpr int most_workers = 64, calls_of_a_ticket = 64;
constexpr double most_processor_seconds = 60;  // of one call, which takes microseconds

// A ticket is a routine and so many calls of it. What a worker is at stands where its parent can see it.
struct Worker {
    std::atomic<int64_t> ticket, call;
    std::atomic<uint64_t> seed;
    char crash[200];
    char fault[200];
    std::atomic<int> fault_count;
};
struct Shared {
    std::atomic<int64_t> next_ticket, calls;
    std::atomic<bool> is_over;
    std::atomic<int64_t> of_routine[1024];
    std::atomic<bool> differs[1024];  // between levels
    Worker workers[most_workers];
};
Shared* shared = nullptr;
Worker* me = nullptr;

struct Settings {
    double seconds = 0;
    uint64_t seed = 1;
    int workers = 2;
    std::vector<const Routine*> chosen;
    std::string program, folder;
} settings;

uint64_t seed_of(int64_t ticket, int64_t call)
{
    const auto rounds = static_cast<uint64_t>(ticket) / settings.chosen.size();
    const uint64_t bits = mixed(mixed(settings.seed + mixed(rounds)) +
                                static_cast<uint64_t>(ticket * calls_of_a_ticket + call));
    const auto count = static_cast<uint64_t>(level_count());
    return bits / 8 / count * count + rounds % count;  // one level to a round
}

const Routine& routine_of(int64_t ticket)
{
    return *settings.chosen[static_cast<std::size_t>(ticket) % settings.chosen.size()];
}

void on_signal(int signal, siginfo_t* info, void*)
{
    if (signal == SIGSEGV || signal == SIGBUS) leave_if_unreal(info->si_addr);
    describe_crash(me->crash, sizeof me->crash, signal, info->si_addr);
    _exit(99);
}

void handle_signals()
{
    static char room[1 << 16];
    const stack_t other{room, 0, sizeof room};
    sigaltstack(&other, nullptr);
    struct sigaction action {};
    action.sa_sigaction = on_signal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) sigaction(signal, &action, nullptr);
}

// Waits until the parent has read it.
void tell(const std::string& what)
{
    std::snprintf(me->fault, sizeof me->fault, "%s", what.c_str());
    me->fault_count = 1;
    while (me->fault_count != 0) usleep(1000);
}

[[noreturn]] void change_levels()
{
    for (int k = 0;; ++k) orvel::isa::use_level(orvel::isa::level_name(k % level_count()));
}

[[noreturn]] void work()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    handle_signals();
    set_up_process(settings.folder);
    if (levels == Levels::many) std::thread(change_levels).detach();
    for (;;) {
        if (me->call >= calls_of_a_ticket) {
            const int64_t ticket = shared->next_ticket++;
            const int64_t rounds = ticket / static_cast<int64_t>(settings.chosen.size());
            if (shared->is_over || (settings.seconds == 0 && rounds >= level_count())) _exit(0);
            me->ticket = ticket;
            me->call = 0;
        }
        const Routine& routine = routine_of(me->ticket);
        if (shared->differs[&routine - routines().data()]) me->call = calls_of_a_ticket;
        while (me->call < calls_of_a_ticket) {
            const int64_t call = me->call++;  // one that kills is not made again
            me->seed = seed_of(me->ticket, call);
            const Fault fault = make_call(routine, me->seed);
            if (fault.what.empty()) continue;
            if (levels != Levels::others) {
                tell(fault.what);
                continue;
            }
            shared->differs[&routine - routines().data()] = true;
            me->call = calls_of_a_ticket;
        }
        shared->calls += 2 * calls_of_a_ticket;
        shared->of_routine[&routine - routines().data()] += 2 * calls_of_a_ticket;
    }
}

class Campaign {
public:
    int run()
    {
        for (int k = 0; k < settings.workers; ++k) {
            shared->workers[k].call = calls_of_a_ticket;
            start(k);
        }
        while (!pids_.empty()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            for (int k = 0; k < settings.workers; ++k) look_at(k);
            look_for_ends();
            if (settings.seconds > 0 && since_start() > settings.seconds) shared->is_over = true;
            if (since_start() > shown_ + 5) show();
        }
        if (levels == Levels::others) return print_the_same();
        show();
        std::vector<int64_t> counts;
        for (const Routine* r : settings.chosen) counts.push_back(shared->of_routine[r - routines().data()]);
        std::sort(counts.begin(), counts.end());
        std::printf("calls of a routine: at least %ld, median %ld\n", counts.front(),
                    counts[counts.size() / 2]);
        return faults_ == 0 ? 0 : 1;
    }

private:
    struct Watch {
        int worker;
        uint64_t seed;
        double processor;
    };

    static double seconds_of(pid_t pid)
    {
        clockid_t clock;
        timespec t{};
        if (clock_getcpuclockid(pid, &clock) != 0 || clock_gettime(clock, &t) != 0) return 0;
        return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
    }
    double since_start() const { return std::chrono::duration<double>(Clock::now() - start_).count(); }

    void start(int k)
    {
        shared->workers[k].crash[0] = 0;
        std::fflush(nullptr);
        const pid_t pid = fork();
        if (pid == 0) {
            me = &shared->workers[k];
            work();
        }
        pids_[pid] = {k, 0, 0};
    }

    void report(int k, const std::string& what)
    {
        const Worker& w = shared->workers[k];
        const Routine& routine = routine_of(w.ticket);
        ++faults_;
        if (++kinds_[std::string(routine.name) + what.substr(0, 12)] <= 2)
            std::printf("FAULT %s: %s\n      again: %s %s %lu\n", routine.name, what.c_str(),
                        settings.program.c_str(), routine.name, w.seed.load());
        std::fflush(stdout);
    }

    void look_at(int k)
    {
        Worker& w = shared->workers[k];
        if (w.fault_count == 0) return;
        report(k, w.fault);
        w.fault_count = 0;
    }

    void look_for_ends()
    {
        int status = 0;
        for (pid_t pid; (pid = waitpid(-1, &status, WNOHANG)) > 0;) {
            const int k = pids_[pid].worker;
            pids_.erase(pid);
            look_at(k);
            if (status == 0) continue;
            const std::string crash = shared->workers[k].crash;
            report(k, !crash.empty() ? crash
                      : WIFSIGNALED(status)
                          ? "killed by signal " + std::to_string(WTERMSIG(status))
                          : "the process has ended with " + std::to_string(WEXITSTATUS(status)));
            start(k);
        }
        for (auto& [pid, watch] : pids_) {
            const uint64_t seed = shared->workers[watch.worker].seed;
            const double seconds = seconds_of(pid);
            if (seed != watch.seed) watch = {watch.worker, seed, seconds};
            if (seconds - watch.processor < most_processor_seconds) continue;
            std::snprintf(shared->workers[watch.worker].crash, 100, "does not end");
            kill(pid, SIGKILL);
        }
    }

    int print_the_same() const
    {
        for (const Routine* r : settings.chosen)
            if (!shared->differs[r - routines().data()]) std::printf("%s\n", r->name);
        return 0;
    }

    void show()
    {
        if (levels == Levels::others) return;
        shown_ = since_start();
        std::printf("%5.0f s: %ld calls of %zu routines at %d levels, %d faults\n", shown_,
                    shared->calls.load(), settings.chosen.size(), level_count(), faults_);
        std::fflush(stdout);
    }

    Clock::time_point start_ = Clock::now();
    std::map<pid_t, Watch> pids_;
    std::map<std::string, int> kinds_;
    double shown_ = 0;
    int faults_ = 0;
};

int one_call(const char* name, const char* seed)
{
    for (const Routine& routine : routines()) {
        if (std::strcmp(routine.name, name) != 0) continue;
        handle_signals();
        set_up_process(settings.folder);
        const Fault fault = make_call(routine, std::strtoull(seed, nullptr, 10), true);
        std::printf("%s\n", fault.what.empty() ? "no fault" : fault.what.c_str());
        return fault.what.empty() ? 0 : 1;
    }
    std::fprintf(stderr, "there is no routine %s\n", name);
    return 2;
}

bool take(const char* argument)
{
    const std::string text = argument;
    const std::string value = text.substr(text.find('=') + 1);
    if (text.starts_with("seconds="))
        settings.seconds = std::atof(value.c_str());
    else if (text.starts_with("seed="))
        settings.seed = std::strtoull(value.c_str(), nullptr, 10);
    else if (text.starts_with("workers="))
        settings.workers = std::clamp(std::atoi(value.c_str()), 1, most_workers);
    else if (text.starts_with("only="))
        settings.chosen.clear();
    else
        return false;
    for (const Routine& routine : routines())
        if (text.starts_with("only=") && value == routine.name) settings.chosen.push_back(&routine);
    return !settings.chosen.empty();
}

}  // namespace

int main(int argc, char** argv)
{
    void* const memory =
        mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    shared = new (memory) Shared();
    me = &shared->workers[0];
    settings.program = argv[0];
    settings.workers = static_cast<int>(std::thread::hardware_concurrency());
    for (const Routine& routine : routines()) settings.chosen.push_back(&routine);
    char folder[] = "/tmp/hostile.XXXXXX";
    if (mkdtemp(folder) == nullptr || chdir(folder) != 0) return 2;
    settings.folder = folder;
    int status = 2;
    const std::string first = argc > 1 ? argv[1] : "";
    if (first == "levels") levels = Levels::others;
    if (first == "changing") levels = Levels::many;
    if (levels == Levels::many) settings.workers = (settings.workers + 1) / 2;
    const bool has_word = levels != Levels::as_listed;
    if (argc == 2 && first == "refusals") {
        handle_signals();
        set_up_process(settings.folder);
        status = refuse_all(settings.seed);
    } else if (argc == 3 && !has_word && first.find('=') == first.npos) {
        status = one_call(argv[1], argv[2]);
    } else {
        for (int k = has_word ? 2 : 1; k < argc; ++k)
            if (!take(argv[k])) return std::fprintf(stderr, "what is %s?\n", argv[k]), 2;
        status = Campaign().run();
    }
    const std::string clean = "rm -rf " + settings.folder;
    return std::system(clean.c_str()) == 0 ? status : 2;
}
