#include "platform/contracts/LoginItemContract.h"
#include "platform/fake/FakeLoginItem.h"

namespace nettlecap {
namespace {

class FakeLoginItemHarness final : public LoginItemHarness {
public:
    LoginItem& loginItem() override { return item_; }
    void restart() override {}
    void forbid() override { item_.setStatus(LoginItemStatus::requiresApproval); }
    void allow() override { item_.setStatus(LoginItemStatus::enabled); }
    void removeProgram() override {
        item_.setStatus(LoginItemStatus::notFound);
        item_.failRegistration("No such file or directory");
    }
    void whileChangesFail(const Task& task) override {
        item_.failRegistration("No space left on device");
        item_.failUnregistration("Permission denied");
        task();
        item_.failRegistration(std::nullopt);
        item_.failUnregistration(std::nullopt);
    }

private:
    FakeLoginItem item_;
};

INSTANTIATE_TEST_SUITE_P(Fake, LoginItemContract, testing::Values([]() -> std::unique_ptr<LoginItemHarness> {
                             return std::make_unique<FakeLoginItemHarness>();
                         }));

}  // namespace
}  // namespace nettlecap
