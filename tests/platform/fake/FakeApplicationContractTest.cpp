#include "platform/contracts/ApplicationContract.h"
#include "platform/fake/FakeApplication.h"

namespace nettlecap {
namespace {

class FakeApplicationHarness final : public ApplicationHarness {
public:
    Application& application() override { return application_; }
    void reopen() override { application_.raise(OpenEvent::reopen); }
    bool endsItself() override {
        application_.terminate();
        return application_.terminations() == 1;
    }

private:
    FakeApplication application_;
};

INSTANTIATE_TEST_SUITE_P(Fake, ApplicationContract,
                         testing::Values([]() -> std::unique_ptr<ApplicationHarness> {
                             return std::make_unique<FakeApplicationHarness>();
                         }));

}  // namespace
}  // namespace nettlecap
