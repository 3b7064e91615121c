// frame/units.h - where the output for a unit number goes
#pragma once

#include "frame/message_text.h"
#include "frame/print_lock.h"

namespace orvel::frame {

// What the host program has buffered for a unit is written out, before the print lock is taken: the host may
// hold the lock of its stream while it calls the library.
class HostOutput {
public:
    explicit HostOutput(int32_t unit);
    ~HostOutput();
    HostOutput(const HostOutput&) = delete;
    HostOutput& operator=(const HostOutput&) = delete;

private:
    bool stream_is_locked_ = false;
};

// One output for a unit, whole lines, made and sent under the print lock. Nothing of it stays in a buffer.
class Page {
public:
    explicit Page(int32_t unit) : unit_(unit), host_(unit), text(lock_.page(), page_room) {}

    // To the writer bound to the unit, to standard output (6), standard error (0 and 5) or the file fort.N.
    void send() const;

private:
    const int32_t unit_;
    const Uncancelled uncancelled_;
    const HostOutput host_;
    const PrintLock lock_;

public:
    Text text;
};

}  // namespace orvel::frame
