#pragma once

#include "platform/Values.h"

#include <QObject>

namespace nettlecap {

/// Runs tasks in the main loop of the thread that made it, in the order given. What waits
/// when it is destroyed is dropped.
class TaskReceiver final : public QObject {
public:
    void post(Task task);  ///< from any thread

protected:
    void customEvent(QEvent* event) override;
};

}  // namespace nettlecap
