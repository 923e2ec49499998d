#include "platform/contracts/PopoverContract.h"
#include "platform/contracts/StatusItemContract.h"
#include "platform/fake/FakeStatusItem.h"

namespace nettlecap {
namespace {

class FakeStatusItemHarness final : public StatusItemHarness {
public:
    StatusItem& item() override { return item_; }
    void click(StatusItemClick button) override { item_.click(button); }
    bool isMenuOpen() override { return item_.isMenuOpen(); }
    void choose(const std::string& title) override { item_.choose(title); }
    void pressCommand(char key) override { item_.pressCommand(std::string(1, key)); }
    void leaveMenu() override { item_.closeMenu(); }
    bool runUntil(const std::function<bool()>& condition) override { return condition(); }

private:
    FakeStatusItem item_;
};

class FakePopoverHarness final : public PopoverHarness {
public:
    Popover& popover() override { return popover_; }
    std::unique_ptr<HostedView> makeContent(Task onEnd) override {
        return std::make_unique<Content>(std::move(onEnd));
    }
    bool hasKeyboard() override { return popover_.isShown(); }
    void goElsewhere() override { popover_.goElsewhere(); }
    bool runUntil(const std::function<bool()>& condition) override { return condition(); }

private:
    class Content final : public HostedView {
    public:
        explicit Content(Task onEnd) : onEnd_(std::move(onEnd)) {}
        ~Content() override { onEnd_(); }
        double fittingHeight(double) override { return 560; }

    private:
        Task onEnd_;
    };

    FakePopover popover_;
};

INSTANTIATE_TEST_SUITE_P(Fake, StatusItemContract,
                         testing::Values([]() -> std::unique_ptr<StatusItemHarness> {
                             return std::make_unique<FakeStatusItemHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Fake, PopoverContract, testing::Values([]() -> std::unique_ptr<PopoverHarness> {
                             return std::make_unique<FakePopoverHarness>();
                         }));

}  // namespace
}  // namespace nettlecap
