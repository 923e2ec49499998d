#include "platform/linux/QtApplication.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QTimer>
#include <gtest/gtest.h>
#include <memory>

namespace nettlecap {
namespace {

class QtApplication final : public testing::Environment {
public:
    void SetUp() override { application_ = std::make_unique<QGuiApplication>(count_, arguments_); }
    void TearDown() override { application_.reset(); }

private:
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    int count_ = 1;
    std::unique_ptr<QGuiApplication> application_;
};

[[maybe_unused]] const auto* const environment = testing::AddGlobalTestEnvironment(new QtApplication);

}  // namespace

bool runMainLoopUntil(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(30'000);
    bool held = condition();
    QEventLoop loop;
    QTimer look;
    look.callOnTimeout([&] {
        held = held || condition();
        if (held || deadline.hasExpired()) loop.quit();
    });
    look.start(1);
    if (!held) loop.exec();
    return held;
}

}  // namespace nettlecap
