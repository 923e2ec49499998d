#include "platform/linux/SystemClock.h"

#include <ctime>

namespace nettlecap {
namespace {

constexpr Seconds from1970To2001(978'307'200);

Seconds read(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace

Date SystemClock::now() const { return {(read(CLOCK_REALTIME) - from1970To2001).count()}; }

Uptime SystemClock::uptime() const { return read(CLOCK_MONOTONIC); }

}  // namespace nettlecap
