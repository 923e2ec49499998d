#include "platform/linux/TaskReceiver.h"

#include <QCoreApplication>
#include <QEvent>

namespace nettlecap {
namespace {

class TaskEvent final : public QEvent {
public:
    explicit TaskEvent(Task given) : QEvent(User), task(std::move(given)) {}

    Task task;
};

}  // namespace

void TaskReceiver::post(Task task) { QCoreApplication::postEvent(this, new TaskEvent(std::move(task))); }

// Nobody else sends it events of this kind.
void TaskReceiver::customEvent(QEvent* event) { static_cast<TaskEvent*>(event)->task(); }

}  // namespace nettlecap
