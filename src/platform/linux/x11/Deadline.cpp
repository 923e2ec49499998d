#include "platform/linux/x11/Deadline.h"

namespace nettlecap {

namespace {

// A timer may be early by a rounding: waiting again for less than this would be idle.
constexpr Seconds rounding(1e-6);

}  // namespace

void Deadline::set(Seconds fromNow) {
    due_ = clock_.uptime() + fromNow;
    if (!waking_ || *due_ < *waking_) wakeAt(*due_);
}

void Deadline::wakeAt(Uptime time) {
    waking_ = time;
    scheduler_.after(time - clock_.uptime(), guard_([this, generation = ++generation_] {
                         if (generation == generation_) wake();
                     }));
}

void Deadline::wake() {
    waking_.reset();
    if (!due_) return;
    if (clock_.uptime() + rounding < *due_) return wakeAt(*due_);
    due_.reset();
    const Task missed = missed_;  // which may destroy this
    missed();
}

}  // namespace nettlecap
