#include "platform/contracts/BundleInfoContract.h"
#include "platform/contracts/LoginItemContract.h"
#include "platform/contracts/SoftwareUpdaterContract.h"
#include "platform/fake/FakeBundleInfo.h"
#include "platform/fake/FakeLoginItem.h"
#include "platform/fake/FakeSoftwareUpdater.h"

#include <algorithm>

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

class FakeBundleInfoHarness final : public BundleInfoHarness {
public:
    const BundleInfo& bundle() override { return bundle_; }
    void setFlag(const std::string& key, bool isOn) override { bundle_.setFlag(key, isOn); }

private:
    FakeBundleInfo bundle_;
};

INSTANTIATE_TEST_SUITE_P(Fake, BundleInfoContract,
                         testing::Values([]() -> std::unique_ptr<BundleInfoHarness> {
                             return std::make_unique<FakeBundleInfoHarness>();
                         }));

class FakeSoftwareUpdaterHarness final : public SoftwareUpdaterHarness {
public:
    SoftwareUpdater& updater() override { return *updater_; }
    void waitForCheck() override {}  // it is over at once
    int answers() override {
        const auto& happenings = updaters_.made().front()->happenings;
        return static_cast<int>(std::count(happenings.begin(), happenings.end(), "checked for the user"));
    }

private:
    FakeSoftwareUpdaters updaters_;
    std::unique_ptr<SoftwareUpdater> updater_ = updaters_.maker()();
};

INSTANTIATE_TEST_SUITE_P(Fake, SoftwareUpdaterContract,
                         testing::Values([]() -> std::unique_ptr<SoftwareUpdaterHarness> {
                             return std::make_unique<FakeSoftwareUpdaterHarness>();
                         }));

}  // namespace
}  // namespace nettlecap
