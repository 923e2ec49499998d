#include "app/AppModelFixture.h"

namespace nettlecap {
namespace {

class ItemDeliveryTargetTest : public AppModelFixture {
protected:
    std::string inFront() const {
        const auto application = system.workspace.frontmostApplication();
        return application ? *application->localizedName : "nothing";
    }
};

TEST_F(ItemDeliveryTargetTest, PastesIntoTheApplicationThatWasInFrontAtTheStart) {
    system.workspace.setFrontmost(notes);
    startWith({"um"});
    system.workspace.activate(system.workspace.current());

    model->copy(entry(0), true);

    EXPECT_EQ(system.workspace.frontmostApplication(), notes);
}

TEST_F(ItemDeliveryTargetTest, PastesIntoTheApplicationThatCameToTheFrontLast) {
    system.workspace.setFrontmost(notes);
    startWith({"um"});
    system.workspace.activate(mail);
    system.workspace.activate(system.workspace.current());

    model->copy(entry(0), true);

    EXPECT_EQ(system.workspace.frontmostApplication(), mail);
}

TEST_F(ItemDeliveryTargetTest, NeverPastesIntoItself) {
    system.workspace.setFrontmost(system.workspace.current());
    startWith({"um"});
    int activations = 0;
    const auto subscription =
        system.workspace.onActivation([&](const RunningApplication&) { ++activations; });

    model->copy(entry(0), true);
    wait();

    EXPECT_EQ(activations, 0);
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(ItemDeliveryTargetTest, KnowsItselfByItsProcessAlone) {
    const RunningApplication anotherWindow{.processIdentifier = 4242, .localizedName = "Ajustes"};
    system.workspace.setFrontmost(notes);
    startWith({"um"});
    system.workspace.activate(anotherWindow);

    model->copy(entry(0), true);

    EXPECT_EQ(inFront(), "Notas");
}

TEST_F(ItemDeliveryTargetTest, PastesIntoAnApplicationWithoutAKnownProcess) {
    const RunningApplication remote{.localizedName = "Remoto", .handle = 90};
    startWith({"um"});
    system.workspace.activate(remote);
    system.workspace.activate(system.workspace.current());

    model->copy(entry(0), true);

    EXPECT_EQ(inFront(), "Remoto");
}

TEST_F(ItemDeliveryTargetTest, TypesIntoWhateverIsInFrontWhenTheApplicationHasQuit) {
    system.workspace.setFrontmost(notes);
    startWith({"um"});
    system.workspace.activate(mail);
    system.workspace.setFrontmost(notes);
    system.workspace.terminate(mail);

    model->copy(entry(0), true);
    wait();

    EXPECT_EQ(inFront(), "Notas");
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(ItemDeliveryTargetTest, TypesIntoWhateverIsInFrontWhenNoApplicationIsKnown) {
    startWith({"um"});

    model->copy(entry(0), true);
    wait();

    EXPECT_EQ(inFront(), "nothing");
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(ItemDeliveryTargetTest, FollowsTheApplicationsFromTheStartOn) {
    system.workspace.activate(mail);
    system.workspace.setFrontmost(std::nullopt);
    startWith({"um"});

    model->copy(entry(0), true);

    EXPECT_EQ(inFront(), "nothing");
}

TEST_F(ItemDeliveryTargetTest, LooksForTheApplicationInFrontAtTheFirstStartOnly) {
    system.workspace.setFrontmost(notes);
    startWith({"um"});
    system.workspace.setFrontmost(mail);

    model->start();
    model->copy(entry(0), true);

    EXPECT_EQ(inFront(), "Notas");
}

}  // namespace
}  // namespace nettlecap
