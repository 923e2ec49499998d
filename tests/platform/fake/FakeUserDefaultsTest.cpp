#include "platform/fake/FakeUserDefaults.h"

#include "platform/contracts/UserDefaultsContract.h"

namespace nettlecap {
namespace {

class FakeUserDefaultsHarness final : public UserDefaultsHarness {
public:
    UserDefaults& defaults() override { return defaults_; }
    void restart() override {}  // what is in memory stays
    void whileWritesFail(const Task& task) override {
        defaults_.setRefusesWrites(true);
        task();
        defaults_.setRefusesWrites(false);
    }

private:
    FakeUserDefaults defaults_;
};

INSTANTIATE_TEST_SUITE_P(Fake, UserDefaultsContract,
                         testing::Values([]() -> std::unique_ptr<UserDefaultsHarness> {
                             return std::make_unique<FakeUserDefaultsHarness>();
                         }));

}  // namespace
}  // namespace nettlecap
