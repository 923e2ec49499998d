#include "platform/linux/QtScheduler.h"

#include "platform/linux/TaskReceiver.h"

#include <QPointer>
#include <QTimer>
#include <algorithm>

namespace nettlecap {
namespace {

/// Belongs to the loop. Rounds up, so that nothing is early.
QTimer* makeTimer(QObject* loop, Seconds interval) {
    auto* timer = new QTimer(loop);
    timer->setTimerType(Qt::PreciseTimer);
    timer->setInterval(
        std::max(std::chrono::ceil<std::chrono::milliseconds>(interval), std::chrono::milliseconds(1)));
    return timer;
}

}  // namespace

QtScheduler::QtScheduler() : loop_(std::make_unique<TaskReceiver>()) {}
QtScheduler::~QtScheduler() = default;

void QtScheduler::post(Task task) { loop_->post(std::move(task)); }

void QtScheduler::after(Seconds delay, Task task) {
    if (delay <= Seconds::zero()) {
        post(std::move(task));
        return;
    }
    auto* timer = makeTimer(loop_.get(), delay);
    timer->setSingleShot(true);
    timer->callOnTimeout([timer, task = std::move(task)] {
        timer->deleteLater();
        task();
    });
    timer->start();
}

Subscription QtScheduler::every(Seconds interval, Task task) {
    auto* timer = makeTimer(loop_.get(), interval);
    auto running = std::make_shared<Task>(std::move(task));
    timer->callOnTimeout([weak = std::weak_ptr(running)] {
        if (const auto alive = weak.lock()) (*alive)();
    });
    timer->start();
    return Subscription([timer = QPointer(timer), running]() mutable {
        running.reset();
        if (timer) timer->deleteLater();  // it may be its own task that ends it
    });
}

}  // namespace nettlecap
