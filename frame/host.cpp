// frame/host.cpp - the host interface: writers, stop policy, defaults of new threads, reset, level
#include "frame/host.h"

#include <pthread.h>

#include <algorithm>
#include <iterator>

#include "frame/export.h"
#include "frame/print_lock.h"
#include "frame/state.h"
#include "isa/levels.h"

namespace orvel::frame {

namespace {

struct Binding {
    int32_t unit;
    Writer writer;
};

struct Settings {
    Switches defaults;
    StopPolicy policy;
    Binding bindings[64];
};

constexpr Settings initial_settings = [] {
    Settings s{};
    std::copy(std::begin(initial_print), std::end(initial_print), s.defaults.print);
    std::copy(std::begin(initial_stop), std::end(initial_stop), s.defaults.stop);
    return s;
}();

constinit Settings settings = initial_settings;
pthread_mutex_t settings_mutex = PTHREAD_MUTEX_INITIALIZER;

// Nothing that could wait or call out happens while this is held, so it may also be taken across a fork.
class SettingsLock {
public:
    SettingsLock() { pthread_mutex_lock(&settings_mutex); }
    ~SettingsLock() { pthread_mutex_unlock(&settings_mutex); }
    SettingsLock(const SettingsLock&) = delete;
    SettingsLock& operator=(const SettingsLock&) = delete;
};

[[gnu::constructor]] void survive_fork()
{
    pthread_atfork([] { pthread_mutex_lock(&settings_mutex); }, [] { pthread_mutex_unlock(&settings_mutex); },
                   [] { pthread_mutex_unlock(&settings_mutex); });
}

Binding* find_binding(int32_t unit)
{
    for (Binding& b : settings.bindings)
        if (b.writer.write != nullptr && b.unit == unit) return &b;
    return nullptr;
}

}  // namespace

Switches thread_defaults()
{
    SettingsLock lock;
    return settings.defaults;
}

StopPolicy stop_policy()
{
    SettingsLock lock;
    return settings.policy;
}

Writer bound_writer(int32_t unit)
{
    SettingsLock lock;
    const Binding* b = find_binding(unit);
    return b != nullptr ? b->writer : Writer{};
}

int32_t bind_unit(int32_t unit, orvel_writer writer, void* context)
{
    bool replaced = false;
    {
        SettingsLock lock;
        Binding* b = find_binding(unit);
        replaced = b != nullptr && (b->writer.write != writer || b->writer.context != context);
        if (b == nullptr)
            b = std::ranges::find_if(settings.bindings,
                                     [](const Binding& x) { return x.writer.write == nullptr; });
        if (b == std::end(settings.bindings)) return writer == nullptr ? 1 : 0;
        *b = {unit, {writer, context}};
    }
    if (replaced) const PrintLock last_call_has_ended;
    return 1;
}

void set_stop_handler(orvel_stop_handler handler, void* context)
{
    SettingsLock lock;
    settings.policy.handler = handler;
    settings.policy.context = context;
}

void set_stop_status(int32_t status)
{
    SettingsLock lock;
    settings.policy.status = status;
}

int32_t set_thread_defaults(int32_t type, int32_t print, int32_t stop)
{
    if (type < 0 || type > terminal || print < -1 || print > 2 || stop < -1 || stop > 2) return 0;
    SettingsLock lock;
    for (int32_t t = note; t <= prompt_fatal; ++t) {
        const int32_t classic = t == prompt_warning ? warning : t == prompt_fatal ? fatal : t;
        if (type != 0 && type != classic) continue;
        apply_switch(settings.defaults.print[t - 1], print, initial_print[t - 1]);
        apply_switch(settings.defaults.stop[t - 1], stop, initial_stop[t - 1]);
    }
    return 1;
}

void reset()
{
    release_print_lock();
    State& s = state();
    orvel_ercom1& e = *s.errors;
    e.level = 1;
    e.msglen = 0;
    e.parlen = 1;
    e.post6 = e.post7 = 0;
    std::ranges::fill(e.ertype, -1);
    std::ranges::fill(e.ercode, -1);
    e.ertype[0] = e.ercode[0] = 0;
    std::ranges::fill(s.callers->user, 0);
    s.callers->user[0] = -1;
}

}  // namespace orvel::frame

extern "C" {

ORVEL_VISIBLE int32_t orvel_bind_unit(int32_t unit, orvel_writer writer, void* context)
{
    return orvel::frame::bind_unit(unit, writer, context);
}

ORVEL_VISIBLE void orvel_set_stop_handler(orvel_stop_handler handler, void* context)
{
    orvel::frame::set_stop_handler(handler, context);
}

ORVEL_VISIBLE void orvel_set_stop_status(int32_t status) { orvel::frame::set_stop_status(status); }

ORVEL_VISIBLE int32_t orvel_set_thread_defaults(int32_t type, int32_t print, int32_t stop)
{
    return orvel::frame::set_thread_defaults(type, print, stop);
}

ORVEL_VISIBLE void orvel_reset(void) { orvel::frame::reset(); }

ORVEL_VISIBLE int32_t orvel_use_level(const char* name) { return orvel::isa::use_level(name) ? 1 : 0; }

ORVEL_VISIBLE const char* orvel_level(void) { return orvel::isa::level_name(orvel::isa::level()); }
}
