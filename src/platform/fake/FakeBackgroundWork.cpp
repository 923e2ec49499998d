#include "platform/fake/FakeBackgroundWork.h"

namespace nettlecap {

void FakeBackgroundWork::runNext() {
    if (waiting_.empty()) return;
    const auto job = std::move(waiting_.front());
    waiting_.pop_front();
    if (auto task = job()) scheduler_.post(std::move(task));
}

void FakeBackgroundWork::runAll() {
    while (!waiting_.empty()) runNext();
}

}  // namespace nettlecap
