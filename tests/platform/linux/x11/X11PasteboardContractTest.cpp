#include "platform/contracts/PasteboardContract.h"
#include "platform/linux/x11/PasteboardTargets.h"
#include "platform/linux/x11/X11World.h"

namespace nettlecap {

namespace {

class X11Harness final : public PasteboardHarness {
public:
    X11Harness() {
        auto& observer = world_.add<test::TestRequestor>();
        EXPECT_TRUE(world_.waitFor([&] { return observer.ownerOf("CLIPBOARD") == XCB_NONE; }));
        pasteboard_ = std::move(*X11Pasteboard::open(world_.ports()));
    }

    Pasteboard& pasteboard() override { return *pasteboard_; }

    void copyElsewhere(const Offer& offer) override {
        owner_ = &world_.add<test::TestOwner>();
        for (const auto& [type, bytes] : offer) {
            const std::string target(pasteboardTargets::servedAs(type).front().name);
            if (bytes)
                owner_->offer(target, std::string(bytes->view()));
            else
                owner_->refuse(target);
        }
        awaitChange([this] { owner_->own(); });
    }

    void clearElsewhere() override {
        awaitChange([this] { owner_->release(); });
    }

private:
    void awaitChange(const Task& change) {
        const auto before = pasteboard_->changeCount();
        change();
        EXPECT_TRUE(world_.settle([&] { return pasteboard_->changeCount() > before; }));
    }

    test::X11World world_;
    std::unique_ptr<X11Pasteboard> pasteboard_;
    test::TestOwner* owner_ = nullptr;
};

std::unique_ptr<PasteboardHarness> x11Pasteboard() { return std::make_unique<X11Harness>(); }

}  // namespace

INSTANTIATE_TEST_SUITE_P(X11, PasteboardContract, testing::Values(&x11Pasteboard));

}  // namespace nettlecap
