#include "platform/contracts/PasteboardContract.h"
#include "platform/fake/FakePasteboard.h"

namespace nettlecap {

namespace {

class FakePasteboardHarness final : public PasteboardHarness {
public:
    Pasteboard& pasteboard() override { return pasteboard_; }
    void copyElsewhere(const Offer& offer) override { pasteboard_.copyFromOutside(offer); }
    void clearElsewhere() override { pasteboard_.dropOwnership(); }

private:
    FakePasteboard pasteboard_;
};

std::unique_ptr<PasteboardHarness> fakePasteboard() { return std::make_unique<FakePasteboardHarness>(); }

}  // namespace

INSTANTIATE_TEST_SUITE_P(Fake, PasteboardContract, testing::Values(&fakePasteboard));

}  // namespace nettlecap
