#include "platform/fake/FakeTime.h"

#include <algorithm>

namespace nettlecap {
namespace {

std::chrono::nanoseconds wholeNanoseconds(Seconds time) {
    return std::chrono::round<std::chrono::nanoseconds>(std::max(time, Seconds::zero()));
}

}  // namespace

void FakeTime::advance(Seconds time) {
    const Nanoseconds until = uptime_ + wholeNanoseconds(time);
    while (!due_.empty() && due_.begin()->first <= until) {
        auto next = due_.extract(due_.begin());
        uptime_ = std::max(uptime_, next.key());
        next.mapped()();
    }
    uptime_ = std::max(uptime_, until);
}

void FakeTime::setNow(Date now) {
    bootedAt_.secondsSince2001 = now.secondsSince2001 - Seconds(uptime_).count();
}

void FakeTime::post(Task task) { due_.emplace(uptime_, std::move(task)); }

void FakeTime::after(Seconds delay, Task task) {
    due_.emplace(uptime_ + wholeNanoseconds(delay), std::move(task));
}

Subscription FakeTime::every(Seconds interval, Task task) {
    const Nanoseconds pause = std::max(wholeNanoseconds(interval), Nanoseconds(1));
    auto running = std::make_shared<Task>(std::move(task));
    repeatAt(uptime_ + pause, pause, running);
    return Subscription([running]() mutable { running.reset(); });
}

Date FakeTime::now() const { return {bootedAt_.secondsSince2001 + Seconds(uptime_).count()}; }

// The subscription alone owns the task; once it is gone the repetition finds nothing.
void FakeTime::repeatAt(Nanoseconds due, Nanoseconds interval, const std::shared_ptr<Task>& task) {
    due_.emplace(due, [this, due, interval, weak = std::weak_ptr(task)] {
        const auto alive = weak.lock();
        if (!alive) return;
        repeatAt(due + interval, interval, alive);
        (*alive)();
    });
}

}  // namespace nettlecap
