#include "platform/linux/QtBackgroundWork.h"

#include "platform/linux/TaskReceiver.h"

#include <QThreadPool>

namespace nettlecap {
namespace {

// A conversion under way does not keep waiting whoever wants a form of what is on the pasteboard.
constexpr int threadCount = 2;

}  // namespace

QtBackgroundWork::QtBackgroundWork()
    : mainThread_(std::make_unique<TaskReceiver>()), threads_(std::make_unique<QThreadPool>()) {
    threads_->setMaxThreadCount(threadCount);
}

QtBackgroundWork::~QtBackgroundWork() {
    threads_->clear();
    threads_->waitForDone();
}

void QtBackgroundWork::run(std::function<Task()> job) {
    threads_->start([job = std::move(job), mainThread = mainThread_.get()] {
        if (Task task = job()) mainThread->post(std::move(task));
    });
}

}  // namespace nettlecap
