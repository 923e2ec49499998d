#include "platform/contracts/PopoverContract.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeTime.h"
#include "platform/fake/FakeWindows.h"
#include "ui/Waiting.h"
#include "ui/qml/QuickPopover.h"

#include <QCoreApplication>

namespace nettlecap {
namespace {

/// The popover of an item that nobody knows the place of, and another window.
class QuickPopoverHarness final : public PopoverHarness {
public:
    QuickPopoverHarness() { other_.resize(50, 50); }
    ~QuickPopoverHarness() override {
        popover_.setContent(nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    Popover& popover() override { return popover_; }
    std::unique_ptr<HostedView> makeContent(Task onEnd) override {
        auto view = std::make_unique<QObject>();
        QObject::connect(view.get(), &QObject::destroyed, std::move(onEnd));
        return std::make_unique<QuickHostedView>(std::make_unique<QQuickItem>(), std::move(view));
    }
    bool hasKeyboard() override { return popover_.isActive(); }
    void goElsewhere() override {
        screens_.movePointer({20, 20});
        other_.show();
        other_.requestActivate();
        EXPECT_TRUE(runUntil([this] { return other_.isActive(); }));
        screens_.movePointer(item);
        other_.hide();
    }
    bool runUntil(const std::function<bool()>& condition) override { return waitUntil(condition); }

private:
    static constexpr Point item{960, 540};

    FakeNativeWindows windows_;
    FakeScreens screens_;
    FakeTime time_;
    FakeEventMonitors events_;
    QuickPopover popover_{{.windows = windows_, .screens = screens_, .scheduler = time_, .events = events_},
                          [] { return QRect(); }};
    QWindow other_;
};

INSTANTIATE_TEST_SUITE_P(Quick, PopoverContract, testing::Values([]() -> std::unique_ptr<PopoverHarness> {
                             return std::make_unique<QuickPopoverHarness>();
                         }));

}  // namespace
}  // namespace nettlecap
