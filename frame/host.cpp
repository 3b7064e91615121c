// frame/host.cpp - the host interface: writers, stop policy, defaults of new threads, level
#include "frame/host.h"

#include <pthread.h>

#include <algorithm>
#include <iterator>

#include "frame/export.h"
#include "frame/print_lock.h"
#include "frame/state.h"
#include "frame/switches.h"
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

extern "C" {

ORVEL_VISIBLE int32_t orvel_bind_unit(int32_t unit, orvel_writer writer, void* context)
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

ORVEL_VISIBLE void orvel_set_stop_handler(orvel_stop_handler handler, void* context)
{
    SettingsLock lock;
    settings.policy = {handler, nullptr, context, settings.policy.status};
}

ORVEL_VISIBLE void orvel_set_stop_text_handler(orvel_stop_text_handler handler, void* context)
{
    SettingsLock lock;
    settings.policy = {nullptr, handler, context, settings.policy.status};
}

ORVEL_VISIBLE void orvel_set_stop_status(int32_t status)
{
    SettingsLock lock;
    settings.policy.status = status;
}

ORVEL_VISIBLE int32_t orvel_set_thread_defaults(int32_t type, int32_t print, int32_t stop)
{
    if (type < 0 || type > terminal || !is_action(print) || !is_action(stop)) return 0;
    SettingsLock lock;
    set_classic_switches(type, print, stop, settings.defaults.print, settings.defaults.stop);
    return 1;
}

ORVEL_VISIBLE int32_t orvel_use_level(const char* name) { return isa::use_level(name) ? 1 : 0; }

ORVEL_VISIBLE const char* orvel_level(void) { return isa::level_name(isa::level()); }

ORVEL_VISIBLE const char* orvel_version(void) { return ORVEL_VERSION; }
}

}  // namespace orvel::frame
